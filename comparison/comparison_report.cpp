#include "comparison/comparison_report.h"

#include "comparison/compare_rows.h"
#include "entry/grid.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::comparison {

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr std::size_t kShortCell = 15;
constexpr const char* kHead[] = {
    "                                                        Difference                        "
    "                Test for the",
    "                                  Log        S.E. of    in Log     Ratio of   95% C.I. for "
    "the        Ratio of Prop.'s=1",
    "Titron Filename  Analysis Name    Proportion Log Prop.  Prop.'s    Prop.'s    Ratio of "
    "Prop.'s        1-tailed  2-tailed",
    "---------------  ---------------  ---------  ---------  ---------  ---------  "
    "----------------------  --------  --------",
    "Comparison Row:",
};
constexpr std::size_t kRuleWidth = 120;

// The text left aligned in a field of width, or whole when it is as wide or wider: the
// fields behind it then move right.
std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) {
        text.append(width - text.size(), ' ');
    }
    return text;
}

// A cell of the grid as a number under "##0.00000"; an empty cell stays empty. Only a
// hand-made cell could hold no number; it is shown as it stands.
std::string figure(const std::string& cell) {
    if (cell.empty()) {
        return cell;
    }
    try {
        return vocabulary::formatMask(vocabulary::strictNumber(cell), "##0.00000");
    } catch (const vocabulary::Failure&) {
        return cell;
    }
}

// File, name and log proportion of a row, each in its field.
std::string rowStart(const entry::Grid& grid, int row) {
    return padded(fileField(grid.cell(column::File, row)), 17) +
           padded(nameField(grid.cell(column::Name, row)), 17) +
           padded(figure(grid.cell(column::LogProportion, row)), 11);
}

std::string standardError(const entry::Grid& grid, int row) {
    return figure(grid.cell(column::StandardError, row));
}

// Every field in its own width, so that one too wide pushes the rest right by its excess.
std::string dataLine(const entry::Grid& grid, int row) {
    const auto trimmed = [&](int col) { return vocabulary::trimSpaces(grid.cell(col, row)); };
    return rowStart(grid, row) + padded(standardError(grid, row), 11) +
           padded(grid.cell(column::Difference, row), 11) + padded(trimmed(column::Ratio), 11) +
           padded(trimmed(column::Interval), 24) + padded(trimmed(column::OneTailed), 10) +
           trimmed(column::TwoTailed);
}

} // namespace

// Built by appending: GCC 12 sees a false overlap in "~" + substr under -O3.
std::string fileField(const std::string& cell) {
    if (cell.size() <= kShortCell) {
        return cell;
    }
    std::string field("~");
    field.append(cell, cell.size() - 14, 14);
    return field;
}

std::string nameField(const std::string& cell) {
    if (cell.size() <= kShortCell) {
        return cell;
    }
    std::string field(cell, 0, 11);
    field += '~';
    field.append(cell, cell.size() - 3, 3);
    return field;
}

std::string buildReport(entry::Grid& grid) {
    std::string report;
    for (const char* line : kHead) {
        report += line;
        report += kLineEnd;
    }
    const int comparisonRow = grid.activeRow();
    report += rowStart(grid, comparisonRow) + standardError(grid, comparisonRow);
    report += kLineEnd;
    report += std::string(kRuleWidth, '=') + kLineEnd;
    const int rows = grid.dataRowCount();
    for (int row = 1; row <= rows; ++row) {
        if (row == comparisonRow) {
            continue;
        }
        report += dataLine(grid, row) + kLineEnd;
        report += std::string(kRuleWidth, '-') + kLineEnd;
    }
    return report;
}

} // namespace titron::comparison
