// Pieces of a path, the current directory and listings. Both "/" and "\" separate; a path that
// holds a "\" gets "\" as its separator, any other "/". Paths are never cut.
#pragma once

#include <string>
#include <vector>

namespace core {

/// Name without folder and extension; the extension starts at the last dot of the name.
[[nodiscard]] std::string fileTitle(const std::string& path);
/// Name plus extension.
[[nodiscard]] std::string fileName(const std::string& path);
/// Drive plus folder, ending in the separator; empty when there is none.
[[nodiscard]] std::string folderOf(const std::string& path);
/// folderOf + fileTitle: the base of a video's zone files.
[[nodiscard]] std::string withoutExtension(const std::string& path);
/// `folder` with its separator appended unless it ends in one.
[[nodiscard]] std::string withSeparator(const std::string& folder);

/// Ends in a separator; empty when the system cannot tell it.
[[nodiscard]] std::string currentDirectory();
/// Empties `names`, then lists what `pattern` ("folder/*.ini") matches and is no folder. False when
/// the folder cannot be read. "*.*" and "*" match every name; case does not matter.
bool listFiles(const std::string& pattern, std::vector<std::string>& names);
/// Empties `names`, then lists the folders inside `folder`, without "." and "..".
bool listFolders(const std::string& folder, std::vector<std::string>& names);

[[nodiscard]] bool isFile(const std::string& path);
[[nodiscard]] bool isFolder(const std::string& path);

} // namespace core
