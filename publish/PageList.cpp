#include "publish/PageList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <memory>

#include "core/Numbers.h"
#include "core/WholeFile.h"

namespace publish {
namespace {

/// Its first line.
constexpr std::string_view kHead = "Quorvel web page 1";
constexpr std::size_t kMaxBytes = std::size_t{4} << 20U;
constexpr std::size_t kPiece = std::size_t{1} << 20U;
constexpr int kHexadecimal = 16;

std::string_view takeUntil(std::string_view& text, char end) {
    const std::string_view part = text.substr(0, text.find(end));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

Mark readMark(std::string_view text) {
    return core::parseNumber<Mark>(text, kHexadecimal).value_or(0);
}

std::string markText(Mark mark) {
    std::array<char, 16> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), mark, kHexadecimal).ptr;
    return {text.data(), end};
}

} // namespace

std::vector<PageFile> readPageList(const std::string& path) {
    const std::optional<std::string> text = core::readWholeFile(path, kMaxBytes);
    std::string_view rest = text ? std::string_view(*text) : std::string_view();
    std::vector<PageFile> list;
    if (takeUntil(rest, '\n') == kHead) {
        while (!rest.empty()) {
            std::string_view line = takeUntil(rest, '\n');
            const std::string name(takeUntil(line, '\t'));
            const Mark source = readMark(takeUntil(line, '\t'));
            list.push_back({name, source, readMark(line)});
        }
    }
    return list;
}

std::string pageListText(std::span<const PageFile> list) {
    std::string text = std::string(kHead) + "\n";
    for (const PageFile& file : list) {
        text += file.name;
        if (file.source != 0) {
            text += "\t" + markText(file.source) + "\t" + markText(file.contents);
        }
        text += "\n";
    }
    return text;
}

// http://www.isthe.com/chongo/tech/comp/fnv/: FNV-1a
Mark markOf(std::string_view bytes, Mark before) {
    constexpr Mark kBegin = 0xCBF29CE484222325;
    constexpr Mark kFactor = 0x100000001B3;
    Mark mark = before == 0 ? kBegin : before;
    for (const char byte : bytes) {
        mark = (mark ^ static_cast<unsigned char>(byte)) * kFactor;
    }
    return mark == 0 ? kBegin : mark;
}

std::optional<Mark> markOfFile(platform::FileSystem& files, const std::string& path, Mark before,
                               const std::function<bool(std::string_view)>& onBytes) {
    int error = 0;
    const auto stream = files.open(path, platform::OpenMode::read, error);
    if (!stream) {
        return std::nullopt;
    }
    std::string piece(kPiece, '\0');
    Mark mark = markOf({}, before);
    while (const std::size_t count = stream->read(piece.data(), piece.size())) {
        const std::string_view bytes(piece.data(), count);
        mark = markOf(bytes, mark);
        if (onBytes && !onBytes(bytes)) {
            return std::nullopt;
        }
    }
    return stream->lastError() == 0 ? std::optional(mark) : std::nullopt;
}

} // namespace publish
