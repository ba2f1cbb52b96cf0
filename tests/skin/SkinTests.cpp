// The default skin in real windows: the Tab key goes in reading order, and every state of a control
// shows in its picture.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream> // IWYU pragma: keep
#include <iterator>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "core/Texts.h"
#include "tests/skin/SkinWindow.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/ConfirmationCommands.h"
#include "ui/commands/EarlierVersionsCommands.h"
#include "ui/commands/ImportCommands.h"
#include "ui/commands/KeysCommands.h"
#include "ui/commands/PublishCommands.h"
#include "ui/commands/SettingsCommands.h"
#include "ui/commands/StartCommands.h"
#include "ui/commands/ZoneEditorCommands.h"

namespace {

using platform::Bitmap;
using platform::Rect;
using test::resizeTo;
using test::SkinWindow;

constexpr std::uint32_t kAccent = 0xFF1D63AD;
constexpr std::uint32_t kDarkAccent = 0xFF124274;

/// Pixels of `rect` that differ, and are then of one of the colours, of any when none are given.
int changes(const Bitmap& before, const Bitmap& after, const Rect& rect,
            const std::set<std::uint32_t>& colors = {}) {
    int count = 0;
    for (int y = std::max(rect.top, 0); y < std::min(rect.bottom, after.size().height); ++y) {
        for (int x = std::max(rect.left, 0); x < std::min(rect.right, after.size().width); ++x) {
            const bool counts = colors.empty() || colors.contains(after.at(x, y));
            count += counts && before.at(x, y) != after.at(x, y) ? 1 : 0;
        }
    }
    return count;
}

struct Layout {
    std::string name;
    std::string tabOrder; ///< names, as a reader goes
    std::span<const ui::Command> commands{};
};

/// What has no room beside the others at a layout's own size, or stands in their place at times.
constexpr std::u16string_view kElsewhere[] = {
    u"PaneLeft",           u"PaneMissing", u"PanePublished",     u"ButtonPublishCancel",
    u"ButtonPublishAgain", u"PaneZones",   u"ButtonMatchPoints", u"ButtonNewZone",
    u"EditRangeFrom",      u"EditRangeTo", u"PanelRange",        u"PanelFollow"};

class SkinLook : public testing::TestWithParam<Layout> {
protected:
    SkinLook() {
        collect(*m_driver.manager().GetRoot());
        // Nothing there shows the pointer: a corner of the caption.
        m_driver.hover(platform::Point{3, 3});
        m_rest = m_driver.picture();
    }
    /// How much of the control looks another way than at rest.
    int changesOf(const toolkit::CControlUI& control) {
        return changes(m_rest, m_driver.picture(), control.GetPos());
    }

    SkinWindow m_window{GetParam().name + ".xml"};
    test::WindowDriver m_driver{m_window};
    Bitmap m_rest;
    /// What takes the keyboard, but for lists.
    std::vector<toolkit::CControlUI*> m_controls;

private:
    void collect(toolkit::CControlUI& control) {
        for (int i = 0; i < control.childCount(); ++i) {
            toolkit::CControlUI& child = *control.childAt(i);
            if (std::find(std::begin(kElsewhere), std::end(kElsewhere), child.GetName()) !=
                std::end(kElsewhere)) {
                continue;
            }
            if (child.isFocusable() && child.GetClass() != u"List") {
                m_controls.push_back(&child);
                child.SetEnabled(true);
                for (toolkit::CControlUI* shown = &child; shown; shown = shown->GetParent()) {
                    shown->SetVisible(true);
                }
            }
            collect(child);
        }
    }
};

TEST_P(SkinLook, TabGoesInReadingOrderAndTheKeyboardIsSeen) {
    std::istringstream wanted(GetParam().tabOrder);
    for (std::string name; wanted >> name;) {
        SCOPED_TRACE(name);
        m_driver.press(platform::Key::tab);
        ASSERT_EQ(core::storedText(m_driver.focusName()), name);
        const Rect& pos = m_driver.manager().GetFocus()->GetPos();
        const Rect around{pos.left - 3, pos.top - 3, pos.right + 3, pos.bottom + 3};
        // A ring round the smallest of them, the 18 pixel box, has about 170 pixels.
        EXPECT_GT(changes(m_rest, m_driver.picture(), around, {kAccent, kDarkAccent}), 60);
    }
    m_driver.press(platform::Key::tab);
    EXPECT_TRUE(GetParam().tabOrder.starts_with(core::storedText(m_driver.focusName())));
}

TEST_P(SkinLook, EveryStateOfAControlHasItsPicture) {
    for (toolkit::CControlUI* control : m_controls) {
        SCOPED_TRACE(core::storedText(control->GetName()));
        const auto* edit = toolkit::controlCast<toolkit::CEditUI>(control);
        if (edit != nullptr && edit->IsReadOnly()) {
            continue;
        }
        control->SetEnabled(false);
        EXPECT_GT(changesOf(*control), 20) << "disabled";
        control->SetEnabled(true);
        EXPECT_EQ(changesOf(*control), 0);
        auto* option = toolkit::controlCast<toolkit::COptionUI>(control);
        const bool isChosen = option != nullptr && option->IsSelected();
        if (option != nullptr) {
            option->Selected(!isChosen);
            EXPECT_GT(changesOf(*control), 60) << "checked";
            option->Selected(isChosen);
        }
        if (!isChosen || option->GetGroup().empty()) { // else nothing would happen
            m_driver.hover(test::WindowDriver::middleOf(*control));
            EXPECT_GT(changesOf(*control), 10) << "below the pointer";
            m_driver.hover(platform::Point{3, 3});
        }
    }
}

/// The key that a tool tip names at its end; empty when it names none.
std::u16string keyIn(std::u16string_view toolTip) {
    std::u16string key;
    if (toolTip.ends_with(u")")) {
        for (const char16_t sign : toolTip.substr(toolTip.rfind(u'(') + 1)) {
            key += sign == u' ' || sign == u')' ? u"" : std::u16string(1, sign);
        }
    }
    return key;
}

TEST_P(SkinLook, ButtonsSayWhatTheirCommandsSay) {
    std::set<std::u16string> keys; // a button may run what a key of another command does
    for (const ui::Command& command : GetParam().commands) {
        for (const ui::KeyChord& chord : command.keys) {
            keys.insert(ui::keyText(chord));
        }
    }
    std::set<std::u16string> seen;
    for (const ui::Command& command : GetParam().commands) {
        SCOPED_TRACE(std::string(command.id));
        EXPECT_FALSE(command.text.empty());
        EXPECT_TRUE(seen.insert(core::displayText(std::string(command.id))).second);
        for (const ui::KeyChord& chord : command.keys) {
            const std::u16string key = ui::keyText(chord);
            EXPECT_TRUE(key.empty() || seen.insert(key).second) << core::storedText(key);
        }
        const std::u16string named = keyIn(core::tr(command.toolTip));
        EXPECT_TRUE(named.empty() || keys.contains(named)) << core::storedText(named);
        if (!command.control.empty()) {
            EXPECT_EQ(m_driver.get(command.control).GetToolTip(), ui::toolTipOf(command));
            seen.insert(std::u16string(command.control));
        }
    }
    for (const toolkit::CControlUI* control : m_controls) {
        EXPECT_TRUE(control->GetClass() != u"Button" || seen.contains(control->GetName()))
            << core::storedText(control->GetName()) << " runs no command";
    }
}

/// What a name as "Window.xml@1600x900" ends in; empty when it does not.
platform::Size sizeIn(const std::string& name) {
    platform::Size size;
    char sign = 0;
    std::istringstream text(name.substr(std::min(name.find('@'), name.size() - 1) + 1));
    return text >> size.width >> sign >> size.height ? size : platform::Size{};
}

// A name as "BranchList.xml@1600x900": the places in a window of that size, with all its panes;
// behind a blank the page of the left pane that is shown, if that is not the first.
TEST(SkinPlaces, AreTheDesignsInWindowsOfEverySize) {
    std::ifstream table(LAYOUT_TABLE);
    std::unique_ptr<SkinWindow> window;
    std::string shown;
    std::string line;
    for (std::getline(table, line); std::getline(table, line);) { // below the heading
        std::istringstream cells(line);
        std::string name;
        std::string control;
        platform::Point at;
        platform::Size size;
        std::getline(std::getline(cells, name, '\t'), control, '\t');
        cells >> at.x >> at.y >> size.width >> size.height;
        if (std::exchange(shown, name) != name) {
            window = std::make_unique<SkinWindow>(name.substr(0, name.find('@')));
            resizeTo(*window, sizeIn(name));
            if (const std::size_t page = name.find(' '); page != std::string::npos) {
                const test::WindowDriver driver(*window);
                driver.get(u"PageMap").SetVisible(false);
                driver.get(core::displayText(name.substr(page + 1))).SetVisible(true);
                driver.manager().UpdateLayout();
            }
        }
        const Rect place =
            control.empty() ? window->GetPaintManager().GetRoot()->GetPos()
                            : test::WindowDriver(*window).get(core::displayText(control)).GetPos();
        EXPECT_EQ(place, Rect::at(at.x, at.y, size.width, size.height)) << name << " " << control;
    }
    EXPECT_EQ(shown, "BranchList.xml@1600x900 PagePreview");
}

const std::string kZoneEditOrder =
    "ComboZoom CheckAllZones CheckOnion CheckLoupe CheckPanel "
    "ButtonUndo ButtonRedo ButtonMenu ButtonSave ButtonMinimize ButtonMaximize ButtonClose "
    "ButtonNoticeUndo ButtonOnlyThisFrame ButtonOnAllFrames ButtonRestoreDraft "
    "ButtonCloseNotice ButtonPlayVideo CheckAutoFill ButtonTimelineFit "
    "OptionMovePoint OptionAddPoint "
    "OptionAddMultiPoint OptionDeletePoint "
    "ComboZone ButtonAddZone ButtonRemoveZone EditZone OptionToggleActive OptionProgressChanges "
    "ButtonPrevious10 ButtonPrevious EditCurrentFrame ButtonNext ButtonNext10";
const Layout kLayouts[] = {
    {"Confirmation", "ButtonYes ButtonNo", ui::kConfirmationCommands},
    {"EarlierVersions",
     "ListVersions OptionVersionMap OptionVersionActions ListDifferences ButtonRestoreVersion "
     "ButtonVersionsClose",
     ui::kEarlierVersionsCommands},
    {"OpenScene",
     "ButtonRestoreDraft ButtonDropDraft EditDuplicateName ButtonMakeDuplicate ButtonDropDuplicate "
     "EditFindScene SceneList ListScenes ButtonNewScene ButtonMenu ButtonLoadScene "
     "ButtonExit",
     ui::kOpenSceneCommands},
    {"Keys", "EditFindKey ButtonKeysCopy ButtonManual ButtonKeysClose", ui::kKeysCommands},
    {"Settings",
     "ComboLanguage ComboSkin ComboScale EditConverter ButtonFindConverter "
     "EditScenesFolder ButtonScenesFolder CheckKeepDrafts CheckKeepBackups ButtonSettingsClose",
     ui::kSettingsCommands},
    {"Publish",
     "EditPublishFolder ButtonPublishFolder EditPublishTitle ComboPublishLanguage "
     "CheckPublishHints "
     "CheckPublishKeys CheckPublishReport ButtonPublishShow ButtonPublish ButtonPublishClose",
     ui::kPublishCommands},
    {"ImportVideo",
     "ButtonImportAdd ListImports ComboQuality CheckKeepSound ButtonImportStop ButtonImportClose",
     ui::kImportCommands},
    {"NewScene",
     "EditSceneName OptionTemplateEmpty OptionTemplateLinear OptionTemplateQuiz EditTemplateCount "
     "ButtonCreate ButtonBack",
     ui::kNewSceneCommands},
    {"BranchList",
     "ButtonUndo ButtonRedo ButtonPlay ButtonPlayHere ButtonCheck CheckMap ButtonMenu ButtonSave "
     "ButtonMinimize "
     "ButtonMaximize "
     "ButtonExit "
     "SplitterColumn ComboBranchName ButtonAddBranch "
     "EditBranchName "
     "CheckFirst ButtonBranchUp ButtonBranchDown ButtonDuplicateBranch ButtonRemoveBranch "
     "ButtonLeadsHere LabelLeadsHere ComboVideoName ButtonAddVideo ButtonEditBranchZones "
     "ButtonEditZones ButtonImportVideo "
     "ButtonActionUp ButtonActionDown ButtonDuplicateAction ButtonAddAction "
     "ButtonRemoveAction BranchList ButtonNoticeUndo ButtonRetarget ButtonFix ButtonFixOther "
     "ButtonShowImport ButtonConvertIt ButtonCloseNotice "
     "ButtonTourLeave ButtonTourBack ButtonTourNext",
     ui::kBranchEditorCommands},
    {"ZoneEdit", kZoneEditOrder, ui::kZoneEditorCommands},
    {"ZoneEditSmall", kZoneEditOrder, ui::kZoneEditorCommands},
};
INSTANTIATE_TEST_SUITE_P(Layouts, SkinLook, testing::ValuesIn(kLayouts),
                         [](const auto& layout) { return layout.param.name; });

} // namespace
