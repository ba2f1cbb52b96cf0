// The default skin in windows of every size and in every language, with the system's own fonts:
// nothing lies outside or over something else, and no text is cut.
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "core/Texts.h"
#include "tests/skin/CutTexts.h"
#include "tests/skin/SkinWindow.h"
#include "tests/support/PseudoTexts.h"
#include "tests/support/TempFolder.h"
#include "toolkit/controls/CLabelUI.h"

namespace {

using platform::Rect;
using platform::Size;
using toolkit::CControlUI;
using Controls = std::vector<CControlUI*>;

/// In layout pixels. The last one is a screen of 3840 x 2160 at 200 %.
constexpr Size kSizes[] = {{1239, 711}, {1240, 712}, {1279, 720}, {1280, 856},
                           {1366, 728}, {1600, 900}, {1920, 1080}};

/// Neighbours may share theirs.
constexpr int kBorder = 1;

std::string describe(const CControlUI& control) {
    const Rect& pos = control.GetPos();
    return core::storedText(control.GetClass()) + " " + core::storedText(control.GetName()) +
           " \"" + core::storedText(control.GetText()) + "\" at " + std::to_string(pos.left) + "," +
           std::to_string(pos.top) + " " + std::to_string(pos.width()) + "x" +
           std::to_string(pos.height());
}

/// What is shown and does something or says something, without the parts that it has itself.
void collectShown(CControlUI& control, Controls& found) {
    for (int i = 0; i < control.childCount(); ++i) {
        CControlUI& child = *control.childAt(i);
        if (!child.isShown()) {
            continue;
        }
        EXPECT_EQ(child.GetPos().intersected(control.GetPos()), child.GetPos()) << describe(child);
        if (child.takesMouse() && (child.isInteractive() || !child.GetText().empty())) {
            found.push_back(&child);
        }
        if (!child.isInteractive()) {
            collectShown(child, found);
        }
    }
}

void collectTexts(CControlUI& control, std::vector<toolkit::CLabelUI*>& found) {
    for (int i = 0; i < control.childCount(); ++i) {
        CControlUI& child = *control.childAt(i);
        if (!child.isShown() && child.GetName() == u"PaneLeft") {
            continue; // not in a window of this size
        }
        if (auto* text = dynamic_cast<toolkit::CLabelUI*>(&child)) {
            found.push_back(text);
        }
        collectTexts(child, found);
    }
}

/// While it lives, windows are made in a language.
class Language {
public:
    explicit Language(const std::string& name) {
        core::setTexts(support::textsIn(name, SKIN_FOLDER "../Translations.ini"));
    }
    ~Language() { core::setTexts(nullptr); }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;
};

constexpr const char* kPseudo = "Pseudo";
/// Widths that translators keep to, which a language made by rule cannot: of the cards, the tools,
/// the labels before fields, and of sentences that fill a line.
bool hasFixedWidth(const CControlUI& control) {
    constexpr int kWidestLabel = 160;
    constexpr std::size_t kSentence = 48;
    constexpr std::u16string_view kNames[] = {
        u"ButtonAddBranch",      u"CheckFirst",         u"ButtonLeadsHere",
        u"ButtonAddVideo",       u"ButtonEditZones",    u"ButtonImportVideo",
        u"LabelZonesHint",       u"ButtonAddAction",    u"ButtonRemoveAction",
        u"OptionMovePoint",      u"OptionAddPoint",     u"OptionDeletePoint",
        u"OptionAddMultiPoint",  u"OptionToggleActive", u"OptionProgressChanges",
        u"ButtonEditBranchZones"};
    return (control.GetClass() == u"Label" &&
            (control.GetPos().width() <= kWidestLabel || control.GetText().size() > kSentence)) ||
           std::find(std::begin(kNames), std::end(kNames), control.GetName()) != std::end(kNames);
}

/// Whether the program sizes it: the range bar, and what a narrow pane leaves out.
bool isPlacedByCode(const CControlUI& control) {
    return control.GetPos().width() == 0 ||
           (control.GetParent() != nullptr && control.GetParent()->GetName() == u"PanelRange");
}

class SkinSizes : public testing::TestWithParam<std::tuple<const char*, const char*>> {
protected:
    void expectRoom() {
        CControlUI& root = *m_driver.manager().GetRoot();
        Controls shown;
        collectShown(root, shown);
        EXPECT_FALSE(shown.empty());
        for (std::size_t i = 0; i < shown.size(); ++i) {
            for (std::size_t j = i + 1; j < shown.size(); ++j) {
                const Rect both = shown[i]->GetPos().intersected(shown[j]->GetPos());
                EXPECT_TRUE(both.width() <= kBorder || both.height() <= kBorder)
                    << describe(*shown[i]) << " and " << describe(*shown[j]);
            }
        }
    }

    /// Of buttons that are shown at other times, too.
    void expectWholeTexts() {
        std::vector<toolkit::CLabelUI*> texts;
        collectTexts(*m_driver.manager().GetRoot(), texts);
        for (toolkit::CLabelUI* text : texts) {
            const bool isWithoutName = !text->IsVisible() && text->GetName().empty();
            if (isWithoutName || (m_isPseudo && hasFixedWidth(*text))) {
                continue;
            }
            const Controls hidden = show(*text);
            if (!isPlacedByCode(*text)) {
                EXPECT_EQ(test::cutText(*text), u"") << describe(*text);
            }
            for (CControlUI* control : hidden) {
                control->SetVisible(false);
            }
        }
        m_driver.manager().UpdateLayout();
    }

    /// With all around it; what was hidden before.
    [[nodiscard]] Controls show(CControlUI& control) const {
        Controls hidden;
        for (CControlUI* part = &control; part != nullptr; part = part->GetParent()) {
            if (!part->isShown()) {
                hidden.push_back(part);
                part->SetVisible(true);
            }
        }
        m_driver.manager().UpdateLayout();
        return hidden;
    }

    support::TempFolder m_folder;
    Language m_language{std::get<1>(GetParam())};
    bool m_isPseudo = std::get<1>(GetParam()) == std::string_view(kPseudo);
    test::SkinWindow m_window{std::string(std::get<0>(GetParam())) + ".xml"};
    test::WindowDriver m_driver{m_window};
};

TEST_P(SkinSizes, HaveRoomForEverything) {
    const Size least = m_window.leastSize();
    const Size own = m_driver.manager().GetWindowSize();
    std::vector<Size> sizes{own};
    if (least != Size{}) {
        sizes.push_back(least);
        for (const Size size : kSizes) {
            if (size.width >= least.width && size.height >= least.height) {
                sizes.push_back(size);
            }
        }
    }
    for (const Size size : sizes) {
        SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
        test::resizeTo(m_window, size);
        expectRoom();
        expectWholeTexts();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, SkinSizes,
    testing::Combine(testing::Values("Confirmation", "EarlierVersions", "OpenScene", "Keys",
                                     "Settings", "NewScene", "Publish", "ImportVideo", "BranchList",
                                     "ZoneEdit", "ZoneEditSmall"),
                     testing::Values("English", "French", "German", "Spanish", "Dutch", kPseudo)),
    [](const auto& one) { return std::string(std::get<0>(one.param)) + std::get<1>(one.param); });

} // namespace
