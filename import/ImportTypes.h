// What an import is asked for and what becomes of it, as values that windows and tools show.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/Texts.h"
#include "platform/Geometry.h"

namespace imports {

enum class Quality { small, standard, high };

struct ImportSettings {
    Quality quality = Quality::standard;
    bool keepsSound = true;
};

struct QualityFacts {
    core::Text name;      ///< "Standard"
    platform::Size box;   ///< no picture is larger
    int theoraQuality;    ///< 0 to 10
    int megabytesAMinute; ///< of ordinary material
};
[[nodiscard]] const QualityFacts& factsOf(Quality quality);

/// What a file is, as its author sees it.
struct SourceFacts {
    double seconds = -1;    ///< -1 = unknown
    platform::Size frame{}; ///< upright, with square pixels
    bool hasSound = false;
};

enum class ImportState { waiting, converting, done, cancelled, failed };

enum class Failure {
    none,
    noPicture,    ///< "there is no picture in it."
    unreadable,   ///< "the file cannot be read."
    cut,          ///< "its end is missing or damaged."; importReadable() takes what is there
    vanished,     ///< "the file is not there any more."
    diskFull,     ///< "the disk is full."
    notWritable,  ///< "the scene's folder cannot be written."
    nameTaken,    ///< 'a video "{0}" is in the scene already.'; keepBoth() takes another name
    stopped,      ///< "the converter stopped ({0})."; `details` is its last line
    stuck,        ///< "the converter made no progress."
    tooLarge,     ///< "the result would be too large."
    noConverter,  ///< "the converter is not installed."
    framesDiffer, ///< "its zones would not fit: the numbers of frames differ."
    zonesFailed,  ///< "its zones cannot be converted."
    noMemory,     ///< "there is not enough memory."
};

struct ImportFailure {
    Failure kind = Failure::none;
    int code = 0;          ///< what a converter that stopped returned
    std::string name{};    ///< that is taken, without extension
    std::string details{}; ///< technical, for "Details"; one line, may be empty
};

/// The same, filled in.
[[nodiscard]] std::string failureText(const ImportFailure& failure);
/// One plain word for tools: "no-picture".
[[nodiscard]] const char* failureWord(Failure failure);

/// Of a finished file.
struct ImportedClip {
    std::string name; ///< in the folder, with extension
    std::uint64_t bytes = 0;
    bool hasSound = false;
    int frameCount = 0;
    double framesPerSecond = 0;
    platform::Size frame{};
};

enum class ImportKind {
    file,   ///< from anywhere
    remake, ///< a clip of the folder, with its zones
};

/// One row of the list.
struct ImportItem {
    int id = 0; ///< never used again
    ImportKind kind = ImportKind::file;
    std::string source; ///< UTF-8 path
    ImportState state = ImportState::waiting;
    std::optional<SourceFacts> facts{}; ///< once the file has been looked at
    int percent = 0;                    ///< 0 to 100, while converting
    double secondsLeft = -1;            ///< while converting; -1 = not known yet
    ImportFailure failure{};            ///< when failed
    ImportedClip clip{};                ///< when done
};

/// Whether it waits or converts.
[[nodiscard]] constexpr bool isUnderWay(ImportState state) {
    return state == ImportState::waiting || state == ImportState::converting;
}

} // namespace imports
