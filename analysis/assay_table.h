// The assay table as the analysis reads it: one row per dose with the dose, the tests that
// responded and the tests done. Rows stay in table order; equal doses are not merged.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace titron::analysis {

// Columns of the table, as numbered in the grid.
inline constexpr int kDoseColumn = 1;
inline constexpr int kResponsesColumn = 2;
inline constexpr int kTestedColumn = 3;
inline constexpr int kCommentsColumn = 4;

struct AssayRow {
    double dose = 0.0;      // amount of material per test, > 0 after the checks
    double responses = 0.0; // tests that responded, whole, 0 or more
    double tested = 0.0;    // tests done, whole, 1 or more
};

using AssayTable = std::vector<AssayRow>;

// The value of a cell of column 1, 2 or 3. work holds the cell's text and is left with the
// text that was converted (blanks removed: "1 000" reads as 1000), so that a failure can
// show it. Throws Failure 13 for text that is no number, Failure 6 for one out of range.
// In the Responses column a zero written other than as "0" (0.0, 00, -0) reads as -1, so
// that it is refused as an empty count.
double readAssayCell(std::string& work, int column);

// A check of the table that failed: the box to show and the cell to put the cursor on.
struct CheckFailure {
    std::string title;
    std::string text;
    int column = 0; // 0 when no cell is at fault (the checks of the totals)
    int row = 0;    // table row, from 1
};

// Checks the rows in order (dose, responses, whole responses, tested, whole tested,
// responses not above tested), then the totals (some responses, not all). The first
// failure found is returned; nullopt when the table can be analysed.
std::optional<CheckFailure> checkAssay(const AssayTable& table);

} // namespace titron::analysis
