// Parts of a path, the current directory and listings. Both "/" and "\" are separators; a path that
// contains "\" gets "\" as its separator, any other "/". Paths are never truncated.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace core {

/// Name without folder and extension; the extension starts at the last dot of the name.
[[nodiscard]] std::string fileTitle(const std::string& path);
/// Name plus extension.
[[nodiscard]] std::string fileName(const std::string& path);
/// Drive plus folder, ending in the separator; empty if there is none.
[[nodiscard]] std::string folderOf(const std::string& path);
/// folderOf + fileTitle: the base of a video's zone files.
[[nodiscard]] std::string withoutExtension(const std::string& path);
/// Whether Windows takes a file of that name for a device, whatever stands behind the first dot:
/// "CON", "com1.txt".
[[nodiscard]] bool isDeviceName(std::string_view name);
/// `folder` with a separator appended unless it already ends in one.
[[nodiscard]] std::string withSeparator(const std::string& folder);

/// Ends in a separator; empty if unknown.
[[nodiscard]] std::string currentDirectory();
/// Clears `names`, then lists the files that match `pattern` ("folder/*.ini"). False if the folder
/// cannot be read. "*.*" and "*" match every name; case is ignored.
bool listFiles(const std::string& pattern, std::vector<std::string>& names);
/// Clears `names`, then lists the folders inside `folder`, without "." and "..".
bool listFolders(const std::string& folder, std::vector<std::string>& names);

/// Creates the folders of `path`, up to its last separator, where they are missing. Failures show
/// when a file is made in them. Any thread.
void createFolders(platform::FileSystem& files, const std::string& path);

/// `name` if there is something of that name in the current directory; else the same in `folder`,
/// unless that is empty.
[[nodiscard]] std::string hereOrIn(const std::string& folder, const std::string& name);

[[nodiscard]] bool isFile(const std::string& path);
[[nodiscard]] bool isFolder(const std::string& path);

} // namespace core
