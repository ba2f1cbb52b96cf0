#include "tests/skin/LayoutTable.h"

#include <fstream>
#include <sstream>

#include "core/Text.h"

namespace test {

std::map<std::string, std::vector<TableRow>> readLayoutTable() {
    std::map<std::string, std::vector<TableRow>> table;
    std::ifstream stream(LAYOUT_TABLE);
    for (std::string line; std::getline(stream, line);) {
        std::istringstream cells(line);
        const auto text = [&cells] {
            std::string cell;
            std::getline(cells, cell, '\t');
            return core::narrowToWide(cell);
        };
        const auto number = [&text] { return core::convertStringToInt(text()); };
        const std::string file = core::storedText(text());
        if (!file.starts_with('#')) {
            TableRow row{text(), {}, {}, {}};
            const platform::Point at{number(), number()};
            const platform::Size size{number(), number()};
            row.place = platform::Rect::at(at.x, at.y, size.width, size.height);
            row.text = text();
            row.toolTip = text();
            table[file].push_back(std::move(row));
        }
    }
    return table;
}

} // namespace test
