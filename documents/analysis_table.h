#pragma once

#include <string>

namespace titron::entry {
class Grid;
}

namespace titron::documents {

// Appends the assay table as it stands in reports and analysis files to out: the heading
// row and every data row, columns Row to Comments, with the cells lined up on tab stops
// eight characters apart (doubled Tabs, then closed where a cell is 8 characters or
// longer). Every row ends in CR LF. The table is measured first, so that out grows once
// and a table of tens of thousands of rows is never held twice. Addresses the grid's
// block to read it.
void appendLayoutTable(entry::Grid& grid, std::string& out);

} // namespace titron::documents
