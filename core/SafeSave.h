// Writes a file so that a crash at any moment leaves the old or the new contents whole: a temporary
// beside it is written and brought to the disk, then takes its place in one step.
//
//   SafeSave save;
//   if (!save.open(path, "wt")) return false;      // the destination cannot be written
//   bool good = writeEverything(save.file());
//   good = good && save.prepare() && save.commit();
//
// Without commit the destination stays as it was and the temporary is removed; when a step failed,
// the reason goes to stderr. UI thread only.
#pragma once

#include <optional>
#include <string>

#include "core/File.h"
#include "core/FileError.h"
#include "platform/FileSystem.h"

namespace core {

class SafeSave {
public:
    SafeSave() = default;
    ~SafeSave();
    SafeSave(const SafeSave&) = delete;
    SafeSave& operator=(const SafeSave&) = delete;

    /// False when the destination, or a symbolic link's end, exists and may not be written, or the
    /// temporary cannot be made. `mode` as for File::open, "wb" or "wt".
    [[nodiscard]] bool open(const std::string& path, const std::string& mode);
    [[nodiscard]] File& file() { return m_file; }
    /// Flushes the temporary to the disk and closes it.
    [[nodiscard]] bool prepare();
    /// Replaces the destination, keeping its access rights, and its owner as far as the system
    /// lets us. After a successful prepare only. False as well when another program has begun to
    /// save the same file meanwhile: its temporary is not ours to put in place.
    [[nodiscard]] bool commit();
    /// Why the first step that failed did so, a write included; empty when none has.
    [[nodiscard]] FileError failure() const;

private:
    bool fail(int error);
    void removeTemporary();

    File m_file;
    std::string m_destination;
    std::string m_temporary;
    FileError m_failure;
    std::optional<platform::FileInfo> m_written; ///< the temporary, as we closed it
    bool m_prepared = false;
    bool m_temporaryExists = false;
};

} // namespace core
