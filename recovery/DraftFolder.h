// One draft on the disk, in a folder of its own that this program has locked. A kill at any moment
// leaves the last complete writing. One thread at a time.
//
//   Drafts/+fire_+drill/1/Lock             locked while a program works on the draft
//   Drafts/+fire_+drill/1/Draft.txt        DraftInfo; replaced last, it decides what counts
//   Drafts/+fire_+drill/1/17-Scene.xml     the content of writing 17
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/File.h"
#include "core/FileError.h"
#include "platform/FileSystem.h"
#include "recovery/DraftInfo.h"

namespace recovery {

/// A file of a draft. Immutable, so that another thread can write it.
struct DraftFile {
    std::string ending; ///< of its name
    std::function<bool(core::File&)> write;
};
using DraftContent = std::vector<DraftFile>;

class DraftFolder {
public:
    /// A new folder in `sceneFolder`, which ends in a separator and is created if missing. Empty,
    /// with the reason, if that fails.
    [[nodiscard]] static std::unique_ptr<DraftFolder> claim(const std::string& sceneFolder,
                                                            core::FileError& failure);
    /// Takes over a folder, whose path ends in a separator. Empty if a running program has it, if
    /// its name is not a number, or if it holds no draft that can be used; `problem` then says why,
    /// unless it was empty anyway and is removed.
    [[nodiscard]] static std::unique_ptr<DraftFolder> open(const std::string& path,
                                                           std::string& problem);
    /// Leaves a draft for later; a folder without one is removed.
    ~DraftFolder();
    DraftFolder(const DraftFolder&) = delete;
    DraftFolder& operator=(const DraftFolder&) = delete;

    [[nodiscard]] const DraftInfo& info() const { return m_info; }
    /// Replaces the draft. After a failure the previous writing still counts.
    [[nodiscard]] core::FileError write(DraftInfo info, const DraftContent& content);
    /// Removes the draft.
    void clear();
    /// False once somebody has removed the lock.
    [[nodiscard]] bool isOurs() const { return m_lock->isIntact(); }

    /// For claim() and open(), which lock the folder first.
    DraftFolder(std::string path, std::unique_ptr<platform::FileLock> lock);

private:
    [[nodiscard]] core::FileError writeFile(const std::string& name, const DraftFile& file);
    [[nodiscard]] std::string read();
    void removeOtherWritings();

    std::string m_path; ///< ends in a separator
    std::unique_ptr<platform::FileLock> m_lock;
    DraftInfo m_info;         ///< of the writing that counts, whose number is 0 for none
    bool m_isForeign = false; ///< holds what is no draft of ours
};

/// The names of a draft's files in its folder.
[[nodiscard]] std::vector<std::string> draftFileNames(const DraftInfo& info);
/// What they begin with.
[[nodiscard]] std::string draftFilePrefix(std::uint32_t number);
/// The endings of the content of a scene, and of a video's zones.
inline constexpr const char* kDraftScene = "Scene.xml";
inline constexpr const char* kDraftZones = "Zones";
inline constexpr const char* kDraftZoneList = "Zones-ZoneInfo.xml";
inline constexpr const char* kDraftZoneShapes = "Zones-ZoneInfo.bin";

} // namespace recovery
