#include "entry/row_numbers.h"

#include <cstdint>
#include <string>

#include "entry/grid.h"
#include "vocabulary/failure.h"

namespace titron::entry {

void numberRows(Grid& grid) {
    if (grid.rowLimit() > kMaxNumberedRows) {
        throw vocabulary::Failure(vocabulary::failure::Overflow);
    }
    grid.setCol(0);
    for (int row = 1; row <= grid.rowLimit(); ++row) {
        grid.setRow(row);
        grid.setText(std::to_string(row));
    }
}

} // namespace titron::entry
