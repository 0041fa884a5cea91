#include "entry/row_numbers.h"

#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "entry/grid.h"
#include "vocabulary/failure.h"

namespace titron::entry {

void numberRows(Grid& grid) {
    if (grid.rowLimit() > kMaxNumberedRows) {
        throw vocabulary::Failure(vocabulary::failure::Overflow);
    }
    grid.setCol(0);
    char digits[8];
    for (int row = 1; row <= grid.rowLimit(); ++row) {
        const std::string_view number(digits, std::to_chars(digits, std::end(digits), row).ptr);
        // A row that shows its number already is left alone: renumbering after a load
        // rewrites only the rows that the file's own Row column changed.
        grid.setRow(row);
        if (!grid.cellHolds(0, row, number)) {
            grid.setText(number);
        }
    }
}

} // namespace titron::entry
