// Any bytes as what the converter and its probe print: whatever they say, the clip that is planned
// has a size, a rate and a place in its frame, and nothing printed gets into the arguments as a
// notation of its own.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "import/ConverterRun.h"
#include "import/Plan.h"
#include "import/Source.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;
using platform::Size;

bool isIn(Size inner, platform::Point at, Size outer) {
    return inner.width >= 1 && inner.height >= 1 && at.x >= 0 && at.y >= 0 &&
           at.x + inner.width <= outer.width && at.y + inner.height <= outer.height;
}

void requireUsable(const imports::Plan& plan, Size box) {
    const imports::Framing& framing = plan.framing;
    require(framing.frame.width % 16 == 0 && framing.frame.height % 16 == 0);
    require(framing.frame.width <= box.width && framing.frame.height <= box.height);
    require(isIn(framing.cropped, framing.crop, framing.scaled));
    require(isIn(framing.cropped, framing.inFrame, framing.frame));
    require(plan.rate.isKnown());
    constexpr std::string_view kSigns = "abcdefghijklmnopqrstuvwxyzPTSB0123456789_=:,/+-|.";
    for (const std::string& filters : {plan.videoFilters, plan.soundFilters}) {
        require(filters.find_first_not_of(kSigns) == std::string::npos);
        require(filters.size() < 1000);
    }
}

void probe(std::string_view text) {
    const imports::Source source = imports::readSource(text);
    if (!source.video) {
        return;
    }
    require(imports::pictureDelay(source) >= 0);
    require(imports::factsOf(source).frame.width >= 1);
    (void)imports::needsPacketTimes(source);
    for (const imports::Quality quality :
         {imports::Quality::small, imports::Quality::standard, imports::Quality::high}) {
        const Size box = imports::factsOf(quality).box;
        const imports::Plan plan = imports::planFor(source, {quality, true});
        requireUsable(plan, box);
        require(plan.rate.value() <= 60 && plan.rate.value() > 0.09);
        requireUsable(imports::planFor(source, {quality, true}, imports::RateChoice::asIs), box);
    }
}

std::vector<std::string> linesOf(std::string_view text, std::size_t pieces) {
    std::vector<std::string> found;
    imports::Lines lines;
    for (; !text.empty(); text.remove_prefix(std::min(pieces, text.size()))) {
        lines.take(text.substr(0, pieces),
                   [&found](std::string_view line) { found.emplace_back(line); });
    }
    return found;
}

void run(const std::string& text) {
    const std::vector<std::string> lines = linesOf(text, text.size());
    require(lines == linesOf(text, 7));
    imports::PacketTimes times;
    imports::ConverterProgress progress;
    for (const std::string& line : lines) {
        times.take(line);
        const imports::ConverterProgress before = progress;
        require(progress.take(line) ==
                (progress.frames + progress.microseconds > before.frames + before.microseconds ||
                 progress.bytes > before.bytes));
    }
    require(times.seconds() == -1 || times.seconds() > 0);
    const imports::Ratio rate = times.rate({25, 1});
    require(rate.isKnown() || rate.top == 0);
    imports::RunResult result;
    result.messages = text;
    for (const char sign : result.lastMessage()) {
        require(static_cast<unsigned char>(sign) >= ' ');
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    probe(text);
    run(text);
    return 0;
}
