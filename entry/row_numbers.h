#pragma once

#include <cstdint>

namespace titron::entry {

class Grid;

// The most rows that can be numbered: the row counter is a signed 16-bit number.
inline constexpr int kMaxNumberedRows = INT16_MAX;

// Writes the numbers 1 to the row limit into column 0. The row counter is a signed 16-bit
// number, so a row limit above 32,767 fails with Failure 6 before anything is written.
void numberRows(Grid& grid);

} // namespace titron::entry
