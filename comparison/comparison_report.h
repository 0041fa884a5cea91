// The comparison as a report of 120 columns: four head lines, the comparison row, a rule,
// then every other row with its tests, each under a rule. Made from the grid's texts alone.
#pragma once

#include <string>

namespace titron::entry {
class Grid;
}

namespace titron::comparison {

// The report against the active cell's row, every line ended by CR LF.
std::string buildReport(entry::Grid& grid);

// The fields of a data line: the file cell as it fits 15 characters ("~" and its last 14
// when longer), the name likewise ("~" between its first 11 and last 3).
std::string fileField(const std::string& cell);
std::string nameField(const std::string& cell);

} // namespace titron::comparison
