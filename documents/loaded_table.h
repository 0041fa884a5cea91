// The table of a file being opened or appended: found where it stands in the file's text
// and written into the grid as the grid takes text, without a copy of the whole text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace titron::entry {
class Grid;
}

namespace titron::documents {

// Where the table stands in a file's text: behind its last blank line (blank lines at the
// very end don't count), or the whole text when it has none.
struct TableSpan {
    std::size_t start = 0;
    std::size_t end = 0;
};
TableSpan findTable(std::string_view text);

// How the table's first line (up to its first CR LF) lays out every row: two commas in
// it make commas the separators, else Tabs (a run of Tabs counts once); three separators
// in it make four columns, four make five (the Row column first).
struct TableForm {
    bool commaSeparated = false;
    int columns = 3;
};
TableForm readTableForm(std::string_view table);

// Whether the table starts with a heading line: one whose leading value, up to the first
// CR, is 0. With commasAsSeparators, the line is read as the grid gets it, its commas
// turned into separators.
bool startsWithHeadingLine(std::string_view table, bool commasAsSeparators);

// The table's lines: one more than its line ends behind the first character. Each CR is
// a line end, and so is a LF without a CR before it, as in the grid's clip writing.
std::int64_t countTableLines(std::string_view table);

// A slice of the table holds at least this much of it, then runs on to the end of its line.
inline constexpr std::size_t kTableSliceBytes = std::size_t{1} << 20;

// Writes the table into the grid from the cell (col, row) on, as one clip of the whole
// table would be written with its runs of Tabs closed up to one Tab and its commas turned
// into separators as form says (or into blanks). It goes a slice of whole lines at a
// time, so that the file's text is never held twice.
void writeTable(entry::Grid& grid, std::string_view table, TableForm form, int col, int row,
                std::size_t sliceBytes = kTableSliceBytes);

} // namespace titron::documents
