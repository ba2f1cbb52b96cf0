// The skin as the toolkit reads it, on the real window system: places, texts that fit, images that
// decode, and the order of the Tab key.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/skin/LayoutTable.h"
#include "tests/support/gui/TestGui.h"
#include "toolkit/CDialogBuilder.h"
#include "toolkit/CLabelUI.h"
#include "toolkit/CListContainerElementUI.h"
#include "toolkit/CListUI.h"
#include "toolkit/CPaintManagerUI.h"
#include "toolkit/CTextUI.h"
#include "toolkit/IDialogBuilderCallback.h"
#include "toolkit/ImageDecoder.h"
#include "toolkit/Skin.h"

namespace {

/// Stands in for the video control, which is no part of the toolkit.
class PlainVideo final : public toolkit::IDialogBuilderCallback {
public:
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override {
        return className == u"Video" ? std::make_unique<toolkit::CControlUI>() : nullptr;
    }
};

/// A window's controls without a native window.
class LoadedLayout {
public:
    explicit LoadedLayout(const std::string& file) : manager(test::gui()) {
        const auto skin = toolkit::Skin::open(SKIN_FOLDER);
        const auto bytes = skin->read(file);
        if (!bytes || !m_builder.Load(*bytes)) {
            return;
        }
        PlainVideo video;
        manager.SetSkin(skin);
        manager.SetWindowSize(m_builder.windowSize());
        isLoaded = m_builder.Build(manager, &video);
        manager.UpdateLayout();
    }

    [[nodiscard]] platform::Size size() const { return m_builder.windowSize(); }
    [[nodiscard]] const std::vector<std::string>& remarks() const { return m_builder.remarks(); }

    toolkit::CPaintManagerUI manager;
    bool isLoaded = false;

private:
    toolkit::CDialogBuilder m_builder;
};

const char* const kLayouts[] = {"Confirmation.xml", "OpenScene.xml", "NewScene.xml",
                                "BranchList.xml",   "ZoneEdit.xml",  "ZoneEditSmall.xml"};

/// Calls `visit` with every control below `control`.
template <class Visit>
void forEachBelow(toolkit::CControlUI& control, const Visit& visit) {
    for (int i = 0; i < control.childCount(); ++i) {
        visit(*control.childAt(i));
        forEachBelow(*control.childAt(i), visit);
    }
}

TEST(SkinLayout, EveryNamedControlStandsWhereTheTableSays) {
    const auto table = test::readLayoutTable();
    ASSERT_EQ(table.size(), std::size(kLayouts));
    for (const auto& [file, rows] : table) {
        SCOPED_TRACE(file);
        const LoadedLayout layout(file);
        ASSERT_TRUE(layout.isLoaded);
        EXPECT_EQ(layout.remarks(), std::vector<std::string>{});
        for (const test::TableRow& row : rows) {
            SCOPED_TRACE(core::storedText(row.control));
            if (row.control.empty()) {
                EXPECT_EQ(layout.size(), row.place.size());
                continue;
            }
            const toolkit::CControlUI* control = layout.manager.FindControl(row.control);
            ASSERT_NE(control, nullptr);
            EXPECT_EQ(control->GetPos(), row.place);
            EXPECT_EQ(control->GetText(), row.text);
            EXPECT_EQ(control->GetToolTip(), row.toolTip);
        }
    }
}

TEST(SkinLayout, NoTextIsCutByItsBox) {
    for (const char* file : kLayouts) {
        SCOPED_TRACE(file);
        const LoadedLayout layout(file);
        ASSERT_TRUE(layout.isLoaded);
        forEachBelow(*layout.manager.GetRoot(), [](toolkit::CControlUI& control) {
            // Without a tool tip of its own, a text offers itself where its box cuts it.
            if (dynamic_cast<const toolkit::CLabelUI*>(&control) != nullptr) {
                control.SetToolTip(u"");
                EXPECT_EQ(control.toolTipAt(control.GetPos().topLeft()), u"");
            }
        });
    }
}

TEST(SkinLayout, TheToolkitReadsEveryImage) {
    int count = 0;
    const auto skin = toolkit::Skin::open(SKIN_FOLDER);
    for (const auto& entry : std::filesystem::directory_iterator(SKIN_FOLDER)) {
        if (entry.path().extension() != ".png") {
            continue;
        }
        const auto bytes = skin->read(entry.path().filename().string());
        ASSERT_TRUE(bytes);
        EXPECT_TRUE(toolkit::decodeImage(*bytes)) << entry.path();
        ++count;
    }
    EXPECT_GT(count, 100);
}

TEST(SkinLayout, TabGoesInReadingOrder) {
    using Names = std::vector<std::u16string>;
    const std::pair<const char*, Names> cases[] = {
        {"Confirmation.xml", {u"ButtonYes", u"ButtonNo"}},
        {"OpenScene.xml", {u"SceneList", u"ButtonNewScene", u"ButtonLoadScene", u"ButtonExit"}},
        {"NewScene.xml", {u"EditSceneName", u"ButtonCreate", u"ButtonBack"}},
        {"BranchList.xml",
         {u"ButtonSave", u"ButtonExit", u"ComboBranchName", u"ButtonAddBranch", u"EditBranchName",
          u"CheckFirst", u"ComboVideoName", u"ButtonAddVideo", u"ButtonEditZones",
          u"ButtonAddAction", u"ButtonRemoveAction", u"BranchList"}},
        {"ZoneEdit.xml",
         {u"ButtonSave", u"ButtonClose", u"OptionMovePoint", u"OptionAddPoint",
          u"OptionAddMultiPoint", u"OptionDeletePoint", u"ComboZone", u"ButtonAddZone",
          u"ButtonRemoveZone", u"EditZone", u"OptionToggleActive", u"OptionProgressChanges",
          u"ButtonPrevious10", u"ButtonPrevious", u"EditCurrentFrame", u"ButtonNext",
          u"ButtonNext10"}},
    };
    for (const auto& [file, wanted] : cases) {
        SCOPED_TRACE(file);
        LoadedLayout layout(file);
        ASSERT_TRUE(layout.isLoaded);
        Names found;
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            ASSERT_TRUE(layout.manager.focusKeeper().move(false));
            found.push_back(layout.manager.GetFocus()->GetName());
        }
        EXPECT_EQ(found, wanted);
        ASSERT_TRUE(layout.manager.focusKeeper().move(false));
        EXPECT_EQ(layout.manager.GetFocus()->GetName(), wanted.front());
    }
}

TEST(SkinLayout, RowsThatTheProgramMakesAreSetIn) {
    LoadedLayout layout("OpenScene.xml");
    ASSERT_TRUE(layout.isLoaded);
    auto* list = toolkit::FindControl<toolkit::CListUI>(layout.manager, u"SceneList");
    ASSERT_NE(list, nullptr);
    auto* row = list->AddNew<toolkit::CListContainerElementUI>();
    auto* text = row->AddNew<toolkit::CTextUI>();
    layout.manager.NeedUpdate();
    layout.manager.UpdateLayout();
    // The list's edge is one pixel wide.
    EXPECT_EQ(row->GetPos(), platform::Rect::at(17, 77, 526, 16));
    EXPECT_EQ(text->GetPos(), platform::Rect::at(25, 77, 510, 16));
}

} // namespace
