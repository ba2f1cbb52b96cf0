// A file in the making, which is removed at the end of its guard unless it was kept. Any thread,
// one at a time.
#pragma once

#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace core {

class UnfinishedFile {
public:
    /// Nothing is removed before make() or watch(). `files` outlives the object.
    UnfinishedFile(platform::FileSystem& files, std::string path);
    /// Streams on the file must be closed by now: not every system removes an open file.
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// Makes it, new: a link that lies there is removed, not followed. Empty, with the system's
    /// `error`, if that fails.
    [[nodiscard]] std::unique_ptr<platform::FileStream> make(int& error);
    /// Somebody else makes it.
    void watch() { m_isWatched = true; }
    /// It is finished, or has been renamed.
    void keep() { m_isWatched = false; }
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    platform::FileSystem& m_files;
    const std::string m_path;
    bool m_isWatched = false;
};

} // namespace core
