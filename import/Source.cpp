#include "import/Source.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <functional>
#include <map>
#include <system_error>
#include <utility>

namespace imports {
namespace {

using platform::Size;

constexpr std::size_t kMaxStreams = 100;
constexpr std::int64_t kMaxSide = 65535;
constexpr double kMaxSeconds = 1e9;

/// From the start of `text`; what follows the number is ignored.
std::optional<std::int64_t> readInteger(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> readNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isUsable = error == std::errc() && std::abs(value) < kMaxSeconds;
    return isUsable ? std::optional(value) : std::nullopt;
}

double readSeconds(std::string_view text) {
    const std::optional<double> value = readNumber(text);
    return value && *value > 0 ? *value : -1;
}

/// "00:01:05.250000000"
double readClock(std::string_view text) {
    double seconds = 0;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(':', start), text.size());
        const std::optional<double> part = readNumber(text.substr(start, end - start));
        if (!part || *part < 0) {
            return -1;
        }
        seconds = seconds * 60 + *part;
        start = end + 1;
    }
    return seconds > 0 && seconds < kMaxSeconds ? seconds : -1;
}

/// "30000/1001", "4:3"
Ratio readRatio(std::string_view text, char separator) {
    const std::size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        return {};
    }
    const Ratio ratio{readInteger(text.substr(0, at)).value_or(0),
                      readInteger(text.substr(at + 1)).value_or(0)};
    return ratio.isKnown() ? ratio : Ratio{};
}

/// The part before the first `separator`, which `text` loses with it.
std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

using Entries = std::map<std::string, std::string, std::less<>>;

Entries readEntries(std::string_view text) {
    Entries entries;
    while (!text.empty()) {
        std::string_view line = takePart(text, '\n');
        const std::string_view name = takePart(line, '=');
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.size() >= 2 && line.front() == '"' && line.back() == '"') {
            line = line.substr(1, line.size() - 2);
        }
        entries.emplace(name, line);
    }
    return entries;
}

/// The entries of one stream.
class Stream {
public:
    Stream(const Entries& entries, std::size_t number)
        : m_entries(entries), m_start("streams.stream." + std::to_string(number) + ".") {}

    [[nodiscard]] std::string_view text(std::string_view name) const {
        const auto found = m_entries.find(m_start + std::string(name));
        return found == m_entries.end() ? std::string_view() : found->second;
    }
    /// Without what stands for "unknown".
    [[nodiscard]] std::string word(std::string_view name) const {
        const std::string_view value = text(name);
        return value == "unknown" || value == "N/A" || value == "reserved" ? ""
                                                                           : std::string(value);
    }
    [[nodiscard]] std::int64_t number(std::string_view name) const {
        return readInteger(text(name)).value_or(0);
    }
    [[nodiscard]] bool isOf(std::string_view type) const {
        const std::string codec = word("codec_name");
        return text("codec_type") == type && !codec.empty() && codec != "none";
    }

private:
    const Entries& m_entries;
    const std::string m_start;
};

/// The converter turns a picture by any angle, but its sides change with quarters alone.
int readTurn(const Stream& stream) {
    std::optional<double> degrees;
    for (int i = 0; i < 4 && !degrees; ++i) {
        degrees =
            readNumber(stream.text("side_data_list.side_data." + std::to_string(i) + ".rotation"));
    }
    const double turns = degrees.value_or(0) / 90;
    const bool isQuarter = std::abs(turns - std::round(turns)) * 90 <= 1;
    const int quarters = isQuarter ? static_cast<int>(std::lround(turns) % 4) : 0;
    return (quarters + 4) % 4 * 90;
}

/// A file with several streams of a kind prefers one of them; a single picture is a cover, whatever
/// else its file says.
int rankOf(const Stream& stream) {
    const bool isStill = stream.number("nb_frames") == 1;
    return (isStill ? 0 : 2) + (stream.number("disposition.default") != 0 ? 1 : 0);
}

VideoStream readVideo(const Stream& stream) {
    VideoStream video;
    video.index = static_cast<int>(stream.number("index"));
    video.codec = stream.word("codec_name");
    video.coded = {static_cast<int>(stream.number("width")),
                   static_cast<int>(stream.number("height"))};
    const Ratio shape = readRatio(stream.text("sample_aspect_ratio"), ':');
    // Beyond this it is a mistake of the file rather than a picture.
    if (shape.isKnown() && shape.value() > 0.1 && shape.value() < 10) {
        video.pixelShape = shape;
    }
    video.turn = readTurn(stream);
    video.averageRate = readRatio(stream.text("avg_frame_rate"), '/');
    video.baseRate = readRatio(stream.text("r_frame_rate"), '/');
    if (video.hasExactRate()) {
        video.averageRate = video.baseRate;
    }
    video.start = readNumber(stream.text("start_time"));
    video.seconds = readSeconds(stream.text("duration"));
    if (video.seconds < 0) {
        video.seconds = readClock(stream.text("tags.DURATION"));
    }
    video.range = stream.word("color_range");
    video.matrix = stream.word("color_space");
    video.transfer = stream.word("color_transfer");
    video.primaries = stream.word("color_primaries");
    video.fieldOrder = stream.word("field_order");
    return video;
}

bool isPicture(const Stream& stream) {
    const std::int64_t width = stream.number("width");
    const std::int64_t height = stream.number("height");
    return stream.isOf("video") && stream.number("disposition.attached_pic") == 0 &&
           stream.number("disposition.timed_thumbnails") == 0 && width > 0 && width <= kMaxSide &&
           height > 0 && height <= kMaxSide;
}

} // namespace

Source readSource(std::string_view text) {
    const Entries entries = readEntries(text);
    Source source;
    int pictureRank = -1;
    int soundRank = -1;
    for (std::size_t number = 0; number < kMaxStreams; ++number) {
        const Stream stream(entries, number);
        const int rank = rankOf(stream);
        if (isPicture(stream) && rank > pictureRank) {
            source.video = readVideo(stream);
            pictureRank = rank;
        } else if (stream.isOf("audio") && stream.number("channels") > 0 && rank > soundRank) {
            source.sound = SoundStream{static_cast<int>(stream.number("index")),
                                       static_cast<int>(stream.number("channels")),
                                       stream.word("channel_layout")};
            soundRank = rank;
        }
    }
    const auto entry = [&](std::string_view name) {
        const auto found = entries.find(name);
        return found == entries.end() ? std::string() : found->second;
    };
    source.format = entry("format.format_name");
    source.start = readNumber(entry("format.start_time"));
    source.seconds = readSeconds(entry("format.duration"));
    return source;
}

Size uprightSize(const VideoStream& video) {
    const double width = video.coded.width * video.pixelShape.value();
    Size size{std::max(1, static_cast<int>(std::lround(width))), std::max(1, video.coded.height)};
    if (video.turn % 180 != 0) {
        std::swap(size.width, size.height);
    }
    return size;
}

double pictureDelay(const Source& source) {
    const std::optional<double> start = source.video->start;
    return start && source.start ? std::max(0.0, *start - *source.start) : 0;
}

SourceFacts factsOf(const Source& source) {
    const VideoStream& video = *source.video;
    return {video.seconds > 0 ? video.seconds : source.seconds, uprightSize(video),
            source.sound.has_value()};
}

void PacketTimes::take(std::string_view line) {
    const std::optional<double> time = readNumber(takePart(line, ','));
    const double duration = std::max(0.0, readSeconds(takePart(line, ',')));
    const std::string_view flags = takePart(line, ',');
    if (!time || flags.find('D') != std::string_view::npos) { // "D": not to be shown
        return;
    }
    if (m_count == 0 || *time < m_first) {
        m_first = *time;
    }
    if (m_count == 0 || *time >= m_last) {
        m_last = *time;
        m_lastDuration = duration;
    }
    ++m_count;
}

double PacketTimes::seconds() const {
    if (m_count == 0) {
        return -1;
    }
    const double span = m_last - m_first;
    const double between = m_count > 1 ? span / static_cast<double>(m_count - 1) : 0;
    // The duration of a last packet is a guess in some formats.
    const double last = m_lastDuration > 0 && (between <= 0 || m_lastDuration < 4 * between)
                            ? m_lastDuration
                            : between;
    return span + last > 0 ? span + last : -1;
}

Ratio PacketTimes::rate(const Ratio& stated) const {
    const double length = seconds();
    constexpr double kPrecision = 0.004; // many formats count milliseconds
    if (stated.isKnown() &&
        std::abs(static_cast<double>(m_count) / stated.value() - length) < kPrecision) {
        return stated;
    }
    const double perSecond = length > 0 ? static_cast<double>(m_count) / length : 0;
    constexpr std::int64_t kParts = 1000;
    const Ratio ratio{std::llround(std::min(perSecond, 1e6) * kParts), kParts};
    return ratio.isKnown() ? ratio : Ratio{};
}

} // namespace imports
