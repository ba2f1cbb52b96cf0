// Writes a file so that a crash at any moment leaves either the old or the new contents intact: a
// temporary file next to it is written, flushed to the disk and then renamed over it.
//
//   SafeSave save;
//   if (!save.open(path, "wt")) return false;      // the destination cannot be written
//   bool good = writeEverything(save.file());
//   good = good && save.prepare() && save.commit();
//
// Without commit the destination is unchanged and the temporary file is removed. If a step failed,
// the reason goes to stderr unless it is to be silent. Any thread, one at a time.
#pragma once

#include <optional>
#include <string>

#include "core/File.h"
#include "core/FileError.h"
#include "platform/FileSystem.h"

namespace core {

class SafeSave {
public:
    enum class Failures { toStandardError, silent };
    explicit SafeSave(Failures failures = Failures::toStandardError)
        : m_isSilent(failures == Failures::silent) {}
    ~SafeSave();
    SafeSave(const SafeSave&) = delete;
    SafeSave& operator=(const SafeSave&) = delete;

    /// False if the destination, or the target of a symbolic link, exists and is not writable, or
    /// if the temporary file cannot be created. `mode` as for File::open, "wb" or "wt".
    [[nodiscard]] bool open(const std::string& path, const std::string& mode);
    [[nodiscard]] File& file() { return m_file; }
    /// Flushes the temporary file to the disk and closes it.
    [[nodiscard]] bool prepare();
    /// Replaces the destination, keeping its access rights, and its owner if the system permits.
    /// Only after a successful prepare. Also false if another program has started to save the same
    /// file in the meantime, because the temporary file is then not ours.
    [[nodiscard]] bool commit();
    /// Why the first step or write that failed did so; empty if none has.
    [[nodiscard]] FileError failure() const;

private:
    bool fail(int error);
    void removeTemporary();

    File m_file;
    std::string m_destination;
    std::string m_temporary;
    FileError m_failure;
    std::optional<platform::FileInfo> m_written; ///< the temporary file as we closed it
    bool m_isSilent;
    bool m_prepared = false;
    bool m_temporaryExists = false;
};

} // namespace core
