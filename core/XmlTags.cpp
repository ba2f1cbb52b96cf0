#include "core/XmlTags.h"

#include <algorithm>
#include <utility>

namespace core {
namespace {

/// Drops all up to the end of `what`.
void skipBehind(std::string_view& text, std::string_view what) {
    const std::size_t at = text.find(what);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + what.size());
}

/// Whether it was a comment or the like, which has no attributes.
bool skipMarkUp(std::string_view& text) {
    static constexpr std::pair<std::string_view, std::string_view> kMarkUp[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<!", ">"}, {"<?", "?>"}};
    for (const auto& [begin, end] : kMarkUp) {
        if (text.starts_with(begin)) {
            text.remove_prefix(begin.size());
            skipBehind(text, end);
            return true;
        }
    }
    return false;
}

/// Drops a tag; how many attributes it has.
std::size_t skipTag(std::string_view& text) {
    std::size_t attributes = 0;
    while (true) {
        text.remove_prefix(std::min(text.find_first_of("\"'>"), text.size()));
        if (text.empty() || text.front() == '>') {
            return attributes;
        }
        ++attributes;
        const char quote = text.front();
        text.remove_prefix(1);
        skipBehind(text, {&quote, 1});
    }
}

} // namespace

bool areTagsModest(std::string_view xml) {
    while (true) {
        xml.remove_prefix(std::min(xml.find('<'), xml.size()));
        if (xml.empty()) {
            return true;
        }
        if (!skipMarkUp(xml) && skipTag(xml) > kMaxTagAttributes) {
            return false;
        }
    }
}

} // namespace core
