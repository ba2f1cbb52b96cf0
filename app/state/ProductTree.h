// The folders of a product tree, which an installation or a user of a shared one has.
#pragma once

namespace app_state {

/// What a tree is called where the product names it itself.
inline constexpr const char* kProductTree = "Quorvel";
/// In the tree: the program's working directory.
inline constexpr const char* kTreeWorkingFolder = "Programs/Quorvel";

} // namespace app_state
