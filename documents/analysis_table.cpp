#include "documents/analysis_table.h"

#include <algorithm>

#include "entry/grid.h"
#include "vocabulary/text_routines.h"

namespace titron::documents {

namespace {
constexpr int kLastTableColumn = 4; // Comments
constexpr std::string_view kCellBreak = "\t\t";
} // namespace

void appendLayoutTable(entry::Grid& grid, std::string& out) {
    const int lastRow = grid.dataRowCount();
    grid.addressBlock(0, 0, kLastTableColumn, lastRow);

    // The grid's own block text, every Tab in it doubled: between the cells and any a
    // cell holds.
    std::size_t size = 0;
    for (int r = 0; r <= lastRow; ++r) {
        for (int c = 0; c <= kLastTableColumn; ++c) {
            const std::string_view cell = grid.storedText(c, r);
            size +=
                cell.size() + static_cast<std::size_t>(std::count(cell.begin(), cell.end(), '\t'));
            size += kCellBreak.size(); // the break behind it, or CR LF
        }
    }
    const std::size_t from = out.size();
    // And room for the line end that a file puts behind the table.
    out.reserve(from + size + 2);
    for (int r = 0; r <= lastRow; ++r) {
        for (int c = 0; c <= kLastTableColumn; ++c) {
            if (c > 0) {
                out += kCellBreak;
            }
            for (const char ch : grid.storedText(c, r)) {
                out += ch;
                if (ch == '\t') {
                    out += '\t';
                }
            }
        }
        out += "\r\n";
    }
    vocabulary::closeTabs(out, from);
}

} // namespace titron::documents
