#include "import/ImportTypes.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace imports {
namespace {

constexpr std::array kQualities{
    QualityFacts{"Small", {640, 352}, 7, 4},
    QualityFacts{"Standard", {1280, 720}, 8, 12},
    QualityFacts{"High", {1920, 1072}, 8, 26},
};

struct FailureFacts {
    Failure failure;
    const char* word;
    const char* pattern;
};

constexpr std::array kFailures{
    FailureFacts{Failure::none, "", ""},
    FailureFacts{Failure::noPicture, "no-picture", "there is no picture in it."},
    FailureFacts{Failure::unreadable, "unreadable", "the file cannot be read."},
    FailureFacts{Failure::cut, "cut", "its end is missing or damaged."},
    FailureFacts{Failure::vanished, "vanished", "the file is not there any more."},
    FailureFacts{Failure::diskFull, "disk-full", "the disk is full."},
    FailureFacts{Failure::notWritable, "not-writable", "the scene's folder cannot be written."},
    FailureFacts{Failure::nameTaken, "name-taken", "a video \"%s\" is in the scene already."},
    FailureFacts{Failure::stopped, "stopped", "the converter stopped (%d)."},
    FailureFacts{Failure::stuck, "stuck", "the converter made no progress."},
    FailureFacts{Failure::tooLarge, "too-large", "the result would be too large."},
    FailureFacts{Failure::noConverter, "no-converter", "the converter is not installed."},
    FailureFacts{Failure::framesDiffer, "frames-differ",
                 "its zones would not fit: the numbers of frames differ."},
    FailureFacts{Failure::zonesFailed, "zones-failed", "its zones cannot be converted."},
    FailureFacts{Failure::noMemory, "no-memory", "there is not enough memory."},
};

const FailureFacts& factsOf(Failure failure) {
    for (const FailureFacts& facts : kFailures) {
        if (facts.failure == failure) {
            return facts;
        }
    }
    return kFailures.front();
}

void replaceIn(std::string& text, std::string_view mark, const std::string& value) {
    const std::size_t at = text.find(mark);
    if (at != std::string::npos) {
        text.replace(at, mark.size(), value);
    }
}

} // namespace

const QualityFacts& factsOf(Quality quality) {
    return kQualities.at(static_cast<std::size_t>(quality));
}

const char* failurePattern(Failure failure) {
    return factsOf(failure).pattern;
}

const char* failureWord(Failure failure) {
    return factsOf(failure).word;
}

std::string failureText(const ImportFailure& failure) {
    std::string text = failurePattern(failure.kind);
    replaceIn(text, "%d", std::to_string(failure.code));
    replaceIn(text, "%s", failure.name);
    return text;
}

} // namespace imports
