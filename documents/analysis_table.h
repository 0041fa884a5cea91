#pragma once

#include <string>

namespace titron::entry {
class Grid;
}

namespace titron::documents {

// The assay table as it stands in reports and analysis files: the heading row and every
// data row, columns Row to Comments, with the cells lined up on tab stops eight characters
// apart (doubled Tabs, then closed where a cell is 8 characters or longer). Every row ends
// in CR LF. Addresses the grid's block to read it.
std::string layoutTable(entry::Grid& grid);

} // namespace titron::documents
