// The branch editor on a scene that a test makes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Services.h"
#include "tests/support/FixedClock.h"
#include "tests/support/windows/EditorTest.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/BranchList.h"

namespace test {

using Texts = std::vector<std::u16string>;

class BranchEditorTest : public WindowTest<ui::BranchList> {
protected:
    /// The scene "Fire" with these branches; `videos` are theirs, as far as there are any.
    void makeScene(const std::vector<std::string>& ids,
                   const std::vector<std::string>& videos = {}) {
        scene().newScene("Fire");
        for (std::size_t i = 0; i < ids.size(); ++i) {
            scene().AddBranch();
            scene().renameBranch(static_cast<int>(i), ids[i]);
            scene().setBranchFilename(static_cast<int>(i), i < videos.size() ? videos[i] : "");
        }
    }
    static void writeZones(const std::string& video, const std::vector<std::string>& names) {
        std::string text = "<ZoneInfo>";
        for (const std::string& name : names) {
            text += "<Zone><Name>" + name + "</Name></Zone>";
        }
        support::writeBytes("Scenes/Fire/" + video + "-ZoneInfo.xml", text + "</ZoneInfo>");
    }
    scene::Action& addAction(int type, const std::string& parameter = {},
                             const std::string& target = {}, int branch = 0) {
        const auto action = scene::Action::create();
        action->SetType(type);
        action->SetParameter(parameter);
        action->SetBranchID(target);
        scene().addAction(branch, action);
        return *action;
    }
    toolkit::CComboUI& combo(std::u16string_view name) {
        return m_driver->get<toolkit::CComboUI>(name);
    }
    /// In a row of the action list.
    toolkit::CComboUI& combo(int row, std::u16string_view name) {
        return inRow<toolkit::CComboUI>(*m_driver, u"BranchList", row, name);
    }
    toolkit::COptionUI& immediate(int row) {
        return inRow<toolkit::COptionUI>(*m_driver, u"BranchList", row, u"CheckImmediate");
    }
    toolkit::CListUI& actions() { return m_driver->get<toolkit::CListUI>(u"BranchList"); }
    bool isEnabled(std::u16string_view name) { return m_driver->get(name).IsEnabled(); }

    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
};

} // namespace test
