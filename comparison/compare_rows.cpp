#include "comparison/compare_rows.h"

#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "analysis/checked_math.h"
#include "analysis/tail_probability.h"
#include "entry/grid.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"

namespace titron::comparison {

namespace {

constexpr const char* kFigureMask = "##0.00000";
constexpr const char* kPValueMask = "##0.0000";
constexpr double kZ95 = 1.96;
// Beyond this Z the p-value is taken as 0.
constexpr double kLargestZ = 5;
// Added before the mask rounds a p-value to 4 decimals, so that none shows as 0.0000.
constexpr double kPValueLift = 0.00005;

struct LogFigures {
    double logProportion;
    double standardError;
};

std::optional<LogFigures> readRow(const entry::Grid& grid, int row) {
    try {
        return LogFigures{vocabulary::strictNumber(grid.cell(column::LogProportion, row)),
                          vocabulary::strictNumber(grid.cell(column::StandardError, row))};
    } catch (const vocabulary::Failure&) {
        return std::nullopt; // no figures: the row can't be compared
    }
}

// The texts of columns 5 to 9 for a row tested against the comparison row, or nothing
// when a figure passes the range of a number (which only a hand-made file can cause).
std::optional<std::array<std::string, 5>> compare(const LogFigures& base,
                                                  const LogFigures& tested) {
    try {
        const double e = analysis::checked::sqrt(base.standardError * base.standardError +
                                                 tested.standardError * tested.standardError);
        const double d = analysis::checked::finite(base.logProportion - tested.logProportion);
        const double z = std::fabs(analysis::checked::divide(d, e));
        const double p = z <= kLargestZ ? analysis::normalTwoTail(z) : 0.0;
        using vocabulary::formatMask;
        return std::array<std::string, 5>{
            formatMask(d, kFigureMask),
            formatMask(analysis::checked::exp(d), kFigureMask),
            formatMask(analysis::checked::exp(d - kZ95 * e), kFigureMask) + " to " +
                formatMask(analysis::checked::exp(d + kZ95 * e), kFigureMask),
            formatMask(p / 2 + kPValueLift, kPValueMask),
            formatMask(p + kPValueLift, kPValueMask),
        };
    } catch (const vocabulary::Failure&) {
        return std::nullopt;
    }
}

} // namespace

void compareRows(entry::Grid& grid, int row) {
    grid.setRedraw(false);
    const std::optional<LogFigures> base = readRow(grid, row);
    const int rows = grid.dataRowCount();
    for (int i = 1; i <= rows; ++i) {
        std::optional<std::array<std::string, 5>> cells;
        const std::optional<LogFigures> tested = readRow(grid, i);
        if (i != row && base && tested && base->logProportion != 0 && tested->logProportion != 0 &&
            (base->standardError != 0 || tested->standardError != 0)) {
            cells = compare(*base, *tested);
        }
        for (int col = column::Difference; col <= column::TwoTailed; ++col) {
            grid.setCell(col, i,
                         cells ? (*cells)[static_cast<std::size_t>(col - column::Difference)]
                               : std::string());
        }
    }
    grid.setRedraw(true);
}

} // namespace titron::comparison
