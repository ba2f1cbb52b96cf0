#include "tests/skin/LayoutTable.h"

#include <fstream>

#include "core/Text.h"

namespace test {

namespace {

std::vector<std::string> fields(const std::string& line) {
    std::vector<std::string> found;
    std::size_t start = 0;
    while (start <= line.size()) {
        const std::size_t end = std::min(line.find('\t', start), line.size());
        found.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    return found;
}

} // namespace

std::map<std::string, std::vector<TableRow>> readLayoutTable() {
    std::map<std::string, std::vector<TableRow>> table;
    std::ifstream stream(LAYOUT_TABLE);
    for (std::string line; std::getline(stream, line);) {
        const std::vector<std::string> cells = fields(line);
        if (line.starts_with('#') || cells.size() != 8) {
            continue;
        }
        const auto number = [&cells](std::size_t i) { return core::convertStringToInt(cells[i]); };
        table[cells[0]].push_back({core::narrowToWide(cells[1]),
                                   platform::Rect::at(number(2), number(3), number(4), number(5)),
                                   core::narrowToWide(cells[6]), core::narrowToWide(cells[7])});
    }
    return table;
}

} // namespace test
