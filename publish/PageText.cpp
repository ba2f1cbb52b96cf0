#include "publish/PageText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "core/Text.h"
#include "publish/PageFiles.h"

namespace publish {
namespace {

constexpr std::array kLanguages{Language{"en", "English"}, Language{"fr", "Français"},
                                Language{"de", "Deutsch"}, Language{"es", "Español"},
                                Language{"nl", "Nederlands"}};
/// The two characters beyond ASCII that end a line in some scripts.
constexpr std::string_view kLineSeparator = "\u2028";
constexpr std::string_view kParagraphSeparator = "\u2029";

bool mustEscape(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F || c == '"' || c == '\'' || c == '\\' || c == '<' ||
           c == '>' || c == '&';
}

/// Hands `text` on, with `escape` in place of each character that may not stand in a file.
template <class Escape>
std::string escaped(std::string_view text, const Escape& escape) {
    const std::string valid = core::validUtf8(text);
    std::string result;
    for (std::size_t i = 0; i < valid.size(); ++i) {
        const std::string_view rest = std::string_view(valid).substr(i);
        if (rest.starts_with(kLineSeparator) || rest.starts_with(kParagraphSeparator)) {
            result += escape(rest.starts_with(kLineSeparator) ? 0x2028 : 0x2029);
            i += kLineSeparator.size() - 1;
        } else if (mustEscape(rest.front())) {
            result += escape(static_cast<unsigned char>(rest.front()));
        } else {
            result += rest.front();
        }
    }
    return result;
}

std::string numberText(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::isfinite(value) ? std::string(text.data(), end) : "0";
}

const char* boolText(bool value) {
    return value ? "true" : "false";
}

const char* whenText(player::Action::When when) {
    using When = player::Action::When;
    switch (when) {
    case When::keyPressed:
        return "Keypress";
    case When::zoneClicked:
        return "Zone";
    case When::byChance:
        return "Random";
    case When::clipEnds:
        break;
    }
    return "Default";
}

std::string clipText(const PageClip& clip) {
    return "{\"video\":" + scriptText(clip.video) + ",\"file\":" + scriptText(clip.file) +
           ",\"zones\":" + scriptText(clip.zones) +
           ",\"frames\":" + std::to_string(clip.frameCount) +
           ",\"fps\":" + numberText(clip.framesPerSecond) +
           ",\"width\":" + std::to_string(clip.frame.width) +
           ",\"height\":" + std::to_string(clip.frame.height) + "}";
}

std::string actionText(const player::Action& action) {
    return std::string("\n{\"when\":\"") + whenText(action.when) +
           "\",\"parameter\":" + scriptText(action.parameter) +
           ",\"target\":" + scriptText(action.target) +
           ",\"immediate\":" + boolText(action.isImmediate) + "}";
}

std::string branchText(const player::Branch& branch) {
    std::string text = "{\"name\":" + scriptText(branch.name) +
                       ",\"video\":" + scriptText(branch.video) + ",\"actions\":[";
    for (const player::Action& action : branch.actions) {
        text += (&action == branch.actions.data() ? "" : ",") + actionText(action);
    }
    return text + "]}";
}

std::string shapeText(const player::ZoneShape& shape) {
    std::string text = "[" + std::to_string(shape.firstFrame) + (shape.isActive ? ",1,[" : ",0,[");
    for (const platform::Point& point : shape.points) {
        text += (&point == shape.points.data() ? "" : ",") + std::to_string(point.x) + "," +
                std::to_string(point.y);
    }
    return text + "]]";
}

void replace(std::string& text, std::string_view mark, const std::string& value) {
    if (const std::size_t at = text.find(mark); at != std::string::npos) {
        text.replace(at, mark.size(), value);
    }
}

} // namespace

std::span<const Language> languages() {
    return kLanguages;
}

const Language* findLanguage(std::string_view word) {
    const std::u16string wanted = core::foldCase(core::displayText(word));
    const auto* const found =
        std::find_if(kLanguages.begin(), kLanguages.end(), [&](const Language& language) {
            return wanted == core::displayText(language.code) ||
                   wanted == core::foldCase(core::displayText(language.name));
        });
    return found == kLanguages.end() ? nullptr : found;
}

std::string scriptText(std::string_view text) {
    const auto escape = [](unsigned code) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        std::string result = "\\u";
        for (unsigned shift = 16; shift > 0;) {
            shift -= 4;
            result += kDigits[(code >> shift) & 0xFU];
        }
        return result;
    };
    return '"' + escaped(text, escape) + '"';
}

std::string htmlText(std::string_view text) {
    return escaped(text, [](unsigned code) {
        const bool isControl = code < 0x20 || code == 0x7F; // not allowed there, in any form
        return isControl ? std::string(" ") : "&#" + std::to_string(code) + ";";
    });
}

std::string indexPage(const PageContent& content) {
    // From the last to the first, as what goes in is not looked into again.
    std::string page(files::kIndex);
    replace(page, "@ICON@",
            content.still.empty()
                ? std::string()
                : "<link rel=\"icon\" href=\"" + htmlText(content.still) + "\">\n");
    replace(page, "@TITLE@", htmlText(content.options.title));
    replace(page, "@LANGUAGE@", htmlText(content.options.language));
    return page;
}

std::string sceneScript(const PageContent& content) {
    const PageOptions& options = content.options;
    std::string text = "quorvelScene({\"version\":1,\"title\":" + scriptText(options.title) +
                       ",\"language\":" + scriptText(options.language) +
                       ",\"outlines\":" + boolText(options.hasOutlines) +
                       ",\"keys\":" + boolText(options.hasKeys) +
                       ",\"report\":" + boolText(options.hasReport) +
                       ",\"still\":" + scriptText(content.still) +
                       ",\"first\":" + scriptText(content.story.first) + ",\"clips\":[";
    for (const PageClip& clip : content.clips) {
        text += (&clip == content.clips.data() ? "\n" : ",\n") + clipText(clip);
    }
    text += "],\"branches\":[";
    for (const player::Branch& branch : content.story.branches) {
        text += (&branch == content.story.branches.data() ? "\n" : ",\n") + branchText(branch);
    }
    return text + "]});\n";
}

std::string zonesScript(std::size_t clip, const std::vector<player::ZoneTrack>& zones) {
    std::string text = "quorvelZones(" + std::to_string(clip) + ",[";
    for (const player::ZoneTrack& zone : zones) {
        text += (&zone == zones.data() ? "\n[" : ",\n[") + scriptText(zone.name) + ",[";
        for (const player::ZoneShape& shape : zone.shapes) {
            text += (&shape == zone.shapes.data() ? "\n" : ",\n") + shapeText(shape);
        }
        text += "]]";
    }
    return text + "]);\n";
}

std::string_view playerScript() {
    return files::kScript;
}

std::string_view playerStyle() {
    return files::kStyle;
}

} // namespace publish
