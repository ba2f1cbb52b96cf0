// Where a page is published: a new folder is written aside, beside the one it is for, and takes its
// place once it is whole. Whatever happens, the place holds the old folder or the new one, and
// nothing that is not ours is ever removed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"
#include "publish/PageList.h"

namespace publish {

/// Lists the folder's files, one a line below a first line that says what this is. By it a folder
/// is known as ours.
inline constexpr std::string_view kListName = "published.txt";

enum class PublishFailure {
    none,
    notEmpty,        ///< "the folder is not empty."
    noSpace,         ///< "no space left."
    noVideo,         ///< "no branch has a video."
    notSaved,        ///< "the scene could not be saved."
    sceneUnreadable, ///< "the scene cannot be read."
    notWritable,     ///< "the folder cannot be written."
    inUse,           ///< "the folder is in use by another program."
    busy,            ///< "it is being published already."
    noConverter,     ///< "the converter is not installed."
    notConverted,    ///< a video, a colon and a reason
    noMemory,        ///< "there is not enough memory."
};

class PublishFolder {
public:
    /// `path` is absolute; `files` outlive the object. A link is followed.
    PublishFolder(platform::FileSystem& files, const std::string& path);
    /// Removes what was written aside and has not taken its place.
    ~PublishFolder();
    PublishFolder(const PublishFolder&) = delete;
    PublishFolder& operator=(const PublishFolder&) = delete;

    /// Makes the folder aside, empty, if the place is free, holds an empty folder, or one that was
    /// published and holds nothing else.
    [[nodiscard]] PublishFailure begin();
    /// The path aside of a file of the folder; it counts as one of the folder's from now on.
    [[nodiscard]] std::string add(const std::string& name);
    /// Takes a file out again that was not made after all.
    void forget(const std::string& name);
    /// Says what a clip was made from, so that reuse() finds it again.
    void setSource(const std::string& name, Mark source);
    /// Adds a clip as the page that is replaced has it, made from the same. False, and nothing
    /// was added: it has none, or one that has changed since, or it was cancelled.
    [[nodiscard]] bool reuse(const std::string& name, Mark source,
                             const std::function<bool()>& isCancelled);
    /// Writes a file of the folder.
    [[nodiscard]] PublishFailure write(const std::string& name, std::string_view text);
    /// Puts the folder in its place, with all files on the disk.
    [[nodiscard]] PublishFailure commit();

    /// Where it is in the end, without a final separator.
    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] std::size_t fileCount() const { return m_list.size(); }
    /// Of all files together, once they are in place.
    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }
    /// What the system said last about a failure; may be empty.
    [[nodiscard]] const std::string& details() const { return m_details; }

private:
    [[nodiscard]] bool mayReplace() const;
    [[nodiscard]] bool holdsOnly(const std::vector<PageFile>& list,
                                 const std::string& folder) const;
    [[nodiscard]] std::string asideOf(const std::string& name) const;
    [[nodiscard]] std::optional<Mark> copy(const std::string& from, const std::string& to,
                                           const std::function<bool()>& isCancelled);
    [[nodiscard]] PublishFailure sync();
    [[nodiscard]] PublishFailure swap();
    void removeOurs(const std::string& folder) const;
    PublishFailure failed(PublishFailure failure, int error);

    platform::FileSystem& m_files;
    std::string m_path;
    std::unique_ptr<platform::FileLock> m_lock;
    std::vector<PageFile> m_list;
    std::vector<PageFile> m_former; ///< of the page that is replaced
    std::uint64_t m_bytes = 0;
    std::string m_details;
    bool m_isBegun = false;
};

} // namespace publish
