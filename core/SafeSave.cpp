#include "core/SafeSave.h"

#include <cstddef>
#include <exception>

#include "core/Paths.h"
#include "core/Reason.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "core/Texts.h"

namespace core {
namespace {

/// The destination's extension distinguishes the two files of a pair. The rest of its name is not
/// used, because it may already be as long as the system allows.
std::string temporaryFor(const std::string& destination) {
    const std::string name = fileName(destination);
    const std::size_t dot = name.rfind('.');
    const std::string extension = dot == std::string::npos ? std::string() : name.substr(dot);
    return folderOf(destination) + ".quorvel-saving" + extension;
}

/// Compares the size as well: a new file may get the identity of one that was removed.
bool isAsWritten(const std::optional<platform::FileInfo>& written,
                 const std::optional<platform::FileInfo>& now) {
    return written && now && written->volume == now->volume && written->file == now->file &&
           written->size == now->size;
}

} // namespace

SafeSave::~SafeSave() {
    try {
        const FileError error = failure();
        if (!error.empty() && !m_isSilent) {
            writeStandardError("Not saved: " + error.text());
        }
        removeTemporary();
    } catch (const std::exception&) {
        writeStandardError("Not saved: out of memory");
    }
}

bool SafeSave::open(const std::string& path, const std::string& mode) {
    removeTemporary();
    platform::FileSystem& files = *services().fileSystem;
    m_failure = {};
    m_prepared = false;
    m_destination = path;
    int error = 0;
    const std::string end = files.resolveLink(path);
    if (end.empty()) {
        m_failure = {path, reason("too many symbolic links"_tr)};
        return false;
    }
    m_destination = end;
    m_temporary = temporaryFor(m_destination);
    if (files.info(m_destination) &&
        !files.open(m_destination, platform::OpenMode::writeInPlace, error)) {
        return fail(error);
    }
    // A leftover of a killed program, or a link to somewhere else: never write through it.
    files.removeFile(m_temporary, error);
    if (!m_file.open(m_temporary, mode)) {
        return fail(m_file.lastError());
    }
    m_temporaryExists = true;
    return true;
}

bool SafeSave::prepare() {
    const bool written = m_file.lastError() == 0 && m_file.sync();
    const bool closed = m_file.close();
    m_prepared = written && closed;
    m_written = services().fileSystem->info(m_temporary);
    return m_prepared || fail(m_file.lastError());
}

bool SafeSave::commit() {
    if (!m_prepared) {
        return false;
    }
    m_prepared = false;
    platform::FileSystem& files = *services().fileSystem;
    if (!isAsWritten(m_written, files.info(m_temporary))) {
        m_temporaryExists = false; // no longer ours to remove
        m_failure = {m_destination, reason("another program is saving it"_tr)};
        return false;
    }
    files.copyAccess(m_destination, m_temporary);
    int error = 0;
    if (!files.replaceFile(m_temporary, m_destination, error)) {
        return fail(error);
    }
    m_temporaryExists = false;
    const std::string folder = folderOf(m_destination);
    if (!files.syncFolder(folder.empty() ? "." : folder) && !m_isSilent) {
        writeStandardError("Saved, but a power failure may bring the old file back: " +
                           m_destination);
    }
    return true;
}

FileError SafeSave::failure() const {
    if (!m_failure.empty() || m_file.lastError() == 0) {
        return m_failure;
    }
    return {m_destination, services().fileSystem->errorText(m_file.lastError())};
}

bool SafeSave::fail(int error) {
    if (m_failure.empty()) {
        m_failure = {m_destination, error == 0 ? reason("cannot be written"_tr)
                                               : services().fileSystem->errorText(error)};
    }
    return false;
}

void SafeSave::removeTemporary() {
    m_file.close();
    int error = 0;
    if (m_temporaryExists) {
        services().fileSystem->removeFile(m_temporary, error);
    }
    m_temporaryExists = false;
}

} // namespace core
