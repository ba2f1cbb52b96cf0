#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileSystem.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/posix/SystemPath.h"

namespace platform {
namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using UniqueFolder = std::unique_ptr<DIR, FolderCloser>;

bool isFolder(DIR* parent, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type == DT_DIR;
    }
    struct stat status {};
    return ::fstatat(::dirfd(parent), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

unsigned char upper(char c) {
    const bool small = c >= 'a' && c <= 'z';
    return static_cast<unsigned char>(small ? c - 'a' + 'A' : c);
}

/// Upper case, as the other system's volumes compare: "_" stands after the letters.
bool namePrecedes(const FolderEntry& a, const FolderEntry& b) {
    const std::string& x = a.name;
    const std::string& y = b.name;
    const auto less = [](char c, char d) { return upper(c) < upper(d); };
    if (std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), less)) {
        return true;
    }
    if (std::lexicographical_compare(y.begin(), y.end(), x.begin(), x.end(), less)) {
        return false;
    }
    return x < y; // the same but for case: still one fixed order
}

} // namespace

bool PosixFileSystem::list(const std::string& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    const UniqueFolder open(::opendir(systemFolder(folder).c_str()));
    if (!open) {
        return false;
    }
    errno = 0;
    while (const dirent* entry = ::readdir(open.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") {
            entries.push_back({std::move(name), isFolder(open.get(), *entry)});
        }
        errno = 0;
    }
    const bool complete = errno == 0;
    std::sort(entries.begin(), entries.end(), namePrecedes);
    return complete;
}

bool PosixFileSystem::syncFolder(const std::string& folder) {
    const UniqueFolder open(::opendir(systemFolder(folder).c_str()));
    if (!open) {
        return false;
    }
    // A file system that cannot bring a folder to the disk has nothing to wait for.
    return ::fsync(::dirfd(open.get())) == 0 || errno == EINVAL || errno == ENOSYS;
}

} // namespace platform
