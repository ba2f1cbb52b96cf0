// Files and folders. Paths are UTF-8; both "/" and "\" separate, and a back end that knows only one
// of them maps the other at the moment of the call. No operation throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// An open file; the destructor closes it. Bytes only: no text mode.
class FileStream {
public:
    virtual ~FileStream() = default;
    /// Bytes read: fewer than `count` at the end of the file, where lastError() stays 0, or on an
    /// error, which lastError() reports.
    [[nodiscard]] virtual std::size_t read(void* buffer, std::size_t count) = 0;
    /// Bytes taken; fewer than `count` on an error.
    [[nodiscard]] virtual std::size_t write(const void* buffer, std::size_t count) = 0;
    /// Absolute position in bytes from the start.
    [[nodiscard]] virtual bool seek(std::int64_t position) = 0;
    /// -1 when unknown.
    [[nodiscard]] virtual std::int64_t tell() const = 0;
    /// -1 when unknown; leaves the position alone.
    [[nodiscard]] virtual std::int64_t size() const = 0;
    /// Brings everything written to the disk itself.
    [[nodiscard]] virtual bool sync() = 0;
    /// Flushes and closes; false when something was lost. Later calls fail.
    [[nodiscard]] virtual bool close() = 0;
    /// The system's code of the first call that failed; 0 when none has.
    [[nodiscard]] virtual int lastError() const = 0;
};

enum class OpenMode {
    read,
    write,       ///< creates or empties
    writeInPlace ///< an existing file, contents kept: shows whether it may be written
};

struct FileInfo {
    bool isFolder = false;
    std::uint64_t size = 0;
    std::uint64_t volume = 0; ///< with `file`: the identity of the file, whatever path led to it
    std::uint64_t file = 0;
    std::int64_t modified = 0;            ///< when the contents last changed, as Clock::now()
    std::int32_t modifiedNanoseconds = 0; ///< since then, as finely as the disk tells
};

/// A file locked for one owner, until this object or the program ends, in whatever way.
class FileLock {
public:
    virtual ~FileLock() = default;
    /// False once somebody has removed the file: others may lock a new one then.
    [[nodiscard]] virtual bool isIntact() const = 0;
    /// Removes the file and unlocks it.
    virtual void remove() = 0;
};

struct FolderEntry {
    std::string name;
    bool isFolder = false; ///< symbolic links are followed
};

/// `error` receives the system's code where a parameter asks for it; 0 means none. Any thread.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    [[nodiscard]] virtual std::unique_ptr<FileStream> open(const std::string& path, OpenMode mode,
                                                           int& error) = 0;
    /// Empty when there is nothing at `path`. Symbolic links are followed.
    [[nodiscard]] virtual std::optional<FileInfo> info(const std::string& path) = 0;
    /// One level; an existing folder is a failure.
    virtual bool createFolder(const std::string& path, int& error) = 0;
    /// Of an empty folder alone.
    virtual bool removeFolder(const std::string& path, int& error) = 0;
    virtual bool removeFile(const std::string& path, int& error) = 0;
    /// Locks the file at `path`, which is created if missing; never waits. Empty, with `error` 0,
    /// if somebody has locked it, in this program or another.
    [[nodiscard]] virtual std::unique_ptr<FileLock> lockFile(const std::string& path,
                                                             int& error) = 0;
    /// Replaces `to` if it is a file, in one step.
    virtual bool replaceFile(const std::string& from, const std::string& to, int& error) = 0;
    /// Makes `to` a second name of the file `from` (a hard link). Fails when `from` is anything but
    /// a plain file, when `to` exists, and on volumes where a file has one name only.
    virtual bool linkFile(const std::string& from, const std::string& to, int& error) = 0;
    /// Gives `to` the access rights of `from`, and its owner and group as far as this user may;
    /// nothing happens where a system has none.
    virtual void copyAccess(const std::string& from, const std::string& to) = 0;
    /// Brings the folder's own entries to the disk.
    virtual bool syncFolder(const std::string& folder) = 0;
    /// All entries but "." and "..", in the system's order: by name without case. False when the
    /// folder cannot be read.
    [[nodiscard]] virtual bool list(const std::string& folder,
                                    std::vector<FolderEntry>& entries) = 0;
    /// Absolute, without a final separator (unless it is a root); empty when unknown.
    [[nodiscard]] virtual std::string currentFolder() = 0;
    virtual bool setCurrentFolder(const std::string& folder) = 0;
    /// Absolute form of `path`, by text alone: need not exist. Empty on failure, and on systems
    /// with such a limit when longer than 259 characters.
    [[nodiscard]] virtual std::string fullPath(const std::string& path) = 0;
    /// The file, existing or not, that a chain of symbolic links ends at; `path` itself when it is
    /// none; empty when the chain never ends.
    [[nodiscard]] virtual std::string resolveLink(const std::string& path) = 0;
    /// The system's words for an error code, UTF-8, without a line end.
    [[nodiscard]] virtual std::string errorText(int error) = 0;
};

/// The system's own files; one object, never destroyed.
FileSystem& nativeFileSystem();

} // namespace platform
