#include "import/ImportTypes.h"

#include <array>
#include <cstddef>

#include "core/Texts.h"

namespace imports {
namespace {

constexpr std::array kQualities{
    QualityFacts{"Quality.Small|Small"_tr, {640, 352}, 7, 4},
    QualityFacts{"Quality.Standard|Standard"_tr, {1280, 720}, 8, 12},
    QualityFacts{"Quality.High|High"_tr, {1920, 1072}, 8, 26},
};

struct FailureFacts {
    Failure failure;
    const char* word;
    core::Text text; ///< "{0}" is the code or the name
};

constexpr std::array kFailures{
    FailureFacts{Failure::none, "", {}},
    FailureFacts{Failure::noPicture, "no-picture", "there is no picture in it."_tr},
    FailureFacts{Failure::unreadable, "unreadable", "the file cannot be read."_tr},
    FailureFacts{Failure::cut, "cut", "its end is missing or damaged."_tr},
    FailureFacts{Failure::vanished, "vanished", "the file is not there any more."_tr},
    FailureFacts{Failure::diskFull, "disk-full", "the disk is full."_tr},
    FailureFacts{Failure::notWritable, "not-writable", "the scene's folder cannot be written."_tr},
    FailureFacts{Failure::nameTaken, "name-taken", "a video \"{0}\" is in the scene already."_tr},
    FailureFacts{Failure::stopped, "stopped", "the converter stopped ({0})."_tr},
    FailureFacts{Failure::stuck, "stuck", "the converter made no progress."_tr},
    FailureFacts{Failure::tooLarge, "too-large", "the result would be too large."_tr},
    FailureFacts{Failure::noConverter, "no-converter",
                 "ConverterMissing|the converter is not installed."_tr},
    FailureFacts{Failure::framesDiffer, "frames-differ",
                 "its zones would not fit: the numbers of frames differ."_tr},
    FailureFacts{Failure::zonesFailed, "zones-failed", "its zones cannot be converted."_tr},
    FailureFacts{Failure::noMemory, "no-memory", "there is not enough memory."_tr},
};

const FailureFacts& factsOf(Failure failure) {
    for (const FailureFacts& facts : kFailures) {
        if (facts.failure == failure) {
            return facts;
        }
    }
    return kFailures.front();
}

} // namespace

const QualityFacts& factsOf(Quality quality) {
    return kQualities.at(static_cast<std::size_t>(quality));
}

const char* failureWord(Failure failure) {
    return factsOf(failure).word;
}

std::string failureText(const ImportFailure& failure) {
    const std::string part =
        failure.kind == Failure::stopped ? std::to_string(failure.code) : failure.name;
    return core::trStored(factsOf(failure.kind).text, {part});
}

} // namespace imports
