// The comparison of saved analyses, row against row: each row holds an analysis's log
// proportion (natural log) and its standard error; every other row is tested against the
// comparison row by the difference of the logs, the ratio of the proportions with its 95%
// interval, and the 1- and 2-tailed p-values that the ratio is 1.
#pragma once

namespace titron::entry {
class Grid;
}

namespace titron::comparison {

// The columns of the comparison grid.
namespace column {
inline constexpr int File = 1;
inline constexpr int Name = 2;
inline constexpr int LogProportion = 3;
inline constexpr int StandardError = 4;
inline constexpr int Difference = 5;
inline constexpr int Ratio = 6;
inline constexpr int Interval = 7;
inline constexpr int OneTailed = 8;
inline constexpr int TwoTailed = 9;
} // namespace column
inline constexpr int kCompareColumns = 9;

// Fills columns 5 to 9 of every data row against the comparison row, from the texts of
// columns 3 and 4 as the grid shows them (5 and 4 decimals). A row that doesn't qualify
// (the comparison row itself, a log proportion of 0 on either side, both standard errors
// 0) gets empty cells. Leaves redraw on.
void compareRows(entry::Grid& grid, int row);

} // namespace titron::comparison
