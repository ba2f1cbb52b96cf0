// The values of attributes and the names that kinds know.
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/support/TempFolder.h"
#include "toolkit/controls/CButtonUI.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/layout/ControlFactory.h"

using namespace toolkit;
using platform::Rect;

TEST(AttributeText, ReadsNumbers) {
    const std::pair<std::u16string_view, int> cases[] = {
        {u"0", 0},  {u" 12 ", 12},     {u"-7", -7},
        {u"+7", 7}, {u"99999", 32767}, {u"-99999999999999999999", -32767}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(parseInt(text), value) << core::storedText(text);
    }
    for (const auto* text : {u"", u"-", u"1x", u"1 2", u"\uFF11"}) {
        EXPECT_EQ(parseInt(text), std::nullopt) << core::storedText(text);
    }
}

TEST(AttributeText, ReadsColours) {
    EXPECT_EQ(parseColor(u"#FFC1E3FF"), 0xFFC1E3FF);
    EXPECT_EQ(parseColor(u"0xFFe9f5ff"), 0xFFE9F5FF);
    EXPECT_EQ(parseColor(u"#1C2733"), 0xFF1C2733);
    EXPECT_EQ(parseColor(u"00000000"), 0U);
    for (const auto* text : {u"#FFF", u"red", u"#GGGGGG", u"", u"#123456789"}) {
        EXPECT_EQ(parseColor(text), std::nullopt) << core::storedText(text);
    }
}

TEST(AttributeText, ReadsRectanglesOfExactlyFourNumbers) {
    EXPECT_EQ(parseRect(u"1, 2 ,3,-4"), (Rect{1, 2, 3, -4}));
    EXPECT_EQ(parsePlace(u"10,20,30,40"), (Rect{10, 20, 40, 60}));
    for (const auto* text : {u"1,2,3", u"1,2,3,4,5", u"1,2,,4", u"", u"a,b,c,d"}) {
        EXPECT_EQ(parseRect(text), std::nullopt);
    }
    EXPECT_EQ(parseSize(u"0,120"), (platform::Size{0, 120}));
    EXPECT_EQ(parseSize(u"120"), std::nullopt);
    EXPECT_EQ(parseBool(u"true"), true);
    EXPECT_EQ(parseBool(u"True"), std::nullopt);
}

TEST(Controls, AreWhatTheirKindSaysAndKeepAnAttributeWhoseValueIsNone) {
    const auto option = createControl(u"Option");
    EXPECT_EQ(option->GetInterface(u"Button"), controlCast<CButtonUI>(option.get()));
    EXPECT_NE(option->GetInterface(u"Control"), nullptr);
    EXPECT_EQ(option->GetInterface(u"option"), nullptr);
    EXPECT_EQ(option->GetInterface(u"List"), nullptr);
    EXPECT_TRUE(option->SetAttribute(u"width", u"80"));
    EXPECT_TRUE(option->SetAttribute(u"width", u"wide"));
    EXPECT_EQ(option->GetFixedWidth(), 80);
    EXPECT_FALSE(option->SetAttribute(u"Width", u"1"));
    EXPECT_EQ(createControl(u"button"), nullptr);
}

namespace {

using Names = std::set<std::string>;

/// The first group of each match.
Names matches(const std::string& text, const std::regex& pattern) {
    Names names;
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
        names.insert((*at)[1]);
    }
    return names;
}

/// The tables of the skin document: for each element its attributes.
std::map<std::string, Names> documentedAttributes() {
    std::istringstream document(
        support::readBytes(std::string(QUORVEL_SOURCE_DIR) + "/docs/skin.md"));
    std::map<std::string, Names> attributes;
    Names elements;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("## ")) {
            elements = matches(line, std::regex("(\\w+)"));
        } else if (line.starts_with("| `")) {
            const std::string cell = line.substr(0, line.find('|', 1));
            for (const std::string& element : elements) {
                attributes[element].merge(matches(cell, std::regex("`([a-z]+)`")));
            }
        }
    }
    return attributes;
}

} // namespace

TEST(SkinDocument, NamesForEveryElementTheAttributesThatItsKindKnowsAndNoOthers) {
    auto documented = documentedAttributes();
    Names all; // what the toolkit's sources hold in tables or compare with
    const std::regex coded(R"re((?:\{|[=!]= )u"([a-z]+)")re");
    for (const auto& file : std::filesystem::recursive_directory_iterator(
             std::string(QUORVEL_SOURCE_DIR) + "/toolkit")) {
        if (file.is_regular_file()) {
            all.merge(matches(support::readBytes(file.path().string()), coded));
        }
    }
    for (const auto& [element, names] : documented) {
        all.insert(names.begin(), names.end());
    }
    int elements = 0;
    for (auto [element, known] : documented) {
        if (Names{"Window", "Font", "Default", "ToolTip", "Menu", "Video", "KeyTable", "PaneHead",
                  "SceneMap", "TourPanel", "TourPointer", "VideoPreview", "PreviewSlider",
                  "Overview", "Loupe", "Timeline", "Values"}
                .contains(element)) {
            continue;
        }
        SCOPED_TRACE(element);
        const auto control = createControl(core::displayText(element));
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(core::storedText(control->GetClass()), element);
        ++elements;
        known.insert(documented["Control"].begin(), documented["Control"].end());
        for (const std::string& name : all) {
            EXPECT_EQ(control->SetAttribute(core::displayText(name), u""), known.contains(name))
                << name;
        }
    }
    EXPECT_EQ(elements, 18);
}
