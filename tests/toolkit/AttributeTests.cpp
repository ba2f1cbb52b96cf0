// The values of attributes and the names that kinds know.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "toolkit/AttributeText.h"
#include "toolkit/CButtonUI.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CEditUI.h"
#include "toolkit/CHorizontalLayoutUI.h"
#include "toolkit/CListContainerElementUI.h"
#include "toolkit/CListUI.h"
#include "toolkit/COptionUI.h"
#include "toolkit/CTextUI.h"
#include "toolkit/ControlFactory.h"

using namespace toolkit;
using platform::Rect;

TEST(AttributeText, ReadsNumbers) {
    const std::pair<std::u16string_view, std::optional<int>> cases[] = {
        {u"0", 0},
        {u" 12 ", 12},
        {u"-7", -7},
        {u"+7", 7},
        {u"99999", 32767},
        {u"-99999999999999999999", -32767},
        {u"", std::nullopt},
        {u"-", std::nullopt},
        {u"1x", std::nullopt},
        {u"1 2", std::nullopt},
        {u"\uFF11", std::nullopt},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(parseInt(text), value) << core::storedText(text);
    }
}

TEST(AttributeText, ReadsColours) {
    const std::pair<std::u16string_view, std::optional<platform::Color>> cases[] = {
        {u"#FFC1E3FF", 0xFFC1E3FF}, {u"0xFFe9f5ff", 0xFFE9F5FF}, {u"#1C2733", 0xFF1C2733},
        {u"00000000", 0U},          {u"#FFF", std::nullopt},     {u"red", std::nullopt},
        {u"#GGGGGG", std::nullopt}, {u"", std::nullopt},         {u"#123456789", std::nullopt},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(parseColor(text), value) << core::storedText(text);
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

TEST(Controls, AreWhatTheirKindSaysAndNothingElse) {
    COptionUI option;
    EXPECT_EQ(option.GetInterface(u"Option"), static_cast<COptionUI*>(&option));
    EXPECT_EQ(option.GetInterface(u"Button"), static_cast<CButtonUI*>(&option));
    EXPECT_EQ(option.GetInterface(u"Control"), static_cast<CControlUI*>(&option));
    EXPECT_EQ(option.GetInterface(u"option"), nullptr);
    EXPECT_EQ(option.GetInterface(u"List"), nullptr);
    CTextUI text;
    EXPECT_NE(text.GetInterface(u"Label"), nullptr);
    EXPECT_EQ(controlCast<CButtonUI>(&text), nullptr);
    EXPECT_EQ(controlCast<CButtonUI>(nullptr), nullptr);
}

TEST(Controls, KeepAnAttributeWhoseValueIsNone) {
    CButtonUI button;
    EXPECT_TRUE(button.SetAttribute(u"width", u"80"));
    EXPECT_TRUE(button.SetAttribute(u"font", u"2"));
    EXPECT_TRUE(button.SetAttribute(u"font", u"large"));
    EXPECT_EQ(button.GetFont(), 2);
    EXPECT_EQ(button.GetFixedWidth(), 80);
    EXPECT_FALSE(button.SetAttribute(u"Width", u"1"));
    EXPECT_FALSE(button.SetAttribute(u"", u""));
}

namespace {

/// The tables of the skin document: for each element its attributes.
std::map<std::string, std::set<std::string>> documentedAttributes() {
    std::ifstream file(std::string(QUORVEL_SOURCE_DIR) + "/docs/skin.md");
    std::map<std::string, std::set<std::string>> attributes;
    std::vector<std::string> elements;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("## ")) {
            elements.clear();
            std::istringstream names(line.substr(3));
            for (std::string name; std::getline(names >> std::ws, name, ',');) {
                if (name.find(' ') == std::string::npos) { // else a chapter, not an element
                    elements.push_back(name);
                }
            }
        }
        if (!line.starts_with("| `")) {
            continue;
        }
        const std::string cell = line.substr(2, line.find('|', 1) - 2);
        for (std::size_t at = cell.find('`'); at != std::string::npos;) {
            const std::size_t end = cell.find('`', at + 1);
            for (const std::string& element : elements) {
                attributes[element].insert(cell.substr(at + 1, end - at - 1));
            }
            at = cell.find('`', end + 1);
        }
    }
    return attributes;
}

/// The attribute names that the toolkit's sources hold, by file name: those of their tables, and
/// those that they compare with.
std::map<std::string, std::set<std::string>> codedAttributes() {
    static const std::regex kName(R"re((?:\{|[=!]= )u"([a-z]+)")re");
    std::map<std::string, std::set<std::string>> attributes;
    const std::string folder = std::string(QUORVEL_SOURCE_DIR) + "/toolkit";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".cpp") {
            continue;
        }
        std::ifstream file(entry.path());
        const std::string text(std::istreambuf_iterator<char>(file), {});
        for (std::sregex_iterator at(text.begin(), text.end(), kName), end; at != end; ++at) {
            attributes[entry.path().filename().string()].insert((*at)[1]);
        }
    }
    return attributes;
}

std::set<std::string> united(std::set<std::string> names, const std::set<std::string>& more) {
    names.insert(more.begin(), more.end());
    return names;
}

} // namespace

TEST(SkinDocument, NamesForEveryElementTheAttributesThatItsKindKnowsAndNoOthers) {
    auto documented = documentedAttributes();
    std::set<std::string> all;
    for (const auto& [file, names] : codedAttributes()) {
        all = united(all, names);
    }
    for (const auto& [element, names] : documented) {
        all = united(all, names);
    }
    const std::set<std::string> notControls{"Window",  "Font",  "Default",
                                            "ToolTip", "Video", "Values"};
    int elements = 0;
    for (const auto& [element, names] : documented) {
        if (notControls.contains(element)) {
            continue;
        }
        SCOPED_TRACE(element);
        const auto control = createControl(core::displayText(element));
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(core::storedText(control->GetClass()), element);
        ++elements;
        const std::set<std::string> known = united(names, documented["Control"]);
        for (const std::string& name : all) {
            EXPECT_EQ(control->SetAttribute(core::displayText(name), u""), known.contains(name))
                << name;
        }
    }
    EXPECT_EQ(elements, 15);
    EXPECT_EQ(createControl(u"button"), nullptr);
}

TEST(SkinDocument, NamesTheAttributesOfWhatIsNoControl) {
    auto documented = documentedAttributes();
    auto coded = codedAttributes();
    EXPECT_EQ(united(documented["ToolTip"], {}), coded["ToolTipWindow.cpp"]);
    std::set<std::string> window = documented["Window"];
    window.erase("focusedimage"); // of every control
    EXPECT_EQ(united(documented["Font"], window), coded["CDialogBuilder.cpp"]);
}
