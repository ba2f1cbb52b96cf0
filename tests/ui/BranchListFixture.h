// The branch editor on a scene that a test makes.
#pragma once

#include <string>
#include <vector>

#include "core/Services.h"
#include "tests/support/FixedClock.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"

namespace test {

class BranchEditorTest : public WindowTest<ui::BranchList> {
protected:
    void makeScene(const std::vector<std::string>& ids) {
        scene().newScene("Fire drill");
        for (std::size_t i = 0; i < ids.size(); ++i) {
            scene().AddBranch();
            scene().renameBranch(static_cast<int>(i), ids[i]);
        }
    }
    void addAction(int branch, int type, const std::string& parameter, const std::string& target) {
        const auto action = scene::Action::create();
        action->SetType(type);
        action->SetParameter(parameter);
        action->SetBranchID(target);
        scene().addAction(branch, action);
    }
    toolkit::CComboUI& branches() { return m_driver->get<toolkit::CComboUI>(u"ComboBranchName"); }

    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
};

} // namespace test
