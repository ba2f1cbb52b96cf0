// The layout table of tests/data/skin: where every named control of a window stands.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace test {

struct TableRow {
    std::u16string control; ///< empty: the window itself
    platform::Rect place;
    std::u16string text;
    std::u16string toolTip;
};

/// The rows by layout file, in the table's order; empty when the table cannot be read.
[[nodiscard]] std::map<std::string, std::vector<TableRow>> readLayoutTable();

} // namespace test
