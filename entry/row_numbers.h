#pragma once

namespace titron::entry {

class Grid;

// Writes the numbers 1 to the row limit into column 0. The row counter is a signed 16-bit
// number, so a row limit above 32,767 fails with Failure 6 before anything is written.
void numberRows(Grid& grid);

} // namespace titron::entry
