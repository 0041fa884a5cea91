// Planning an assay before it is done: for a guessed proportion f and chosen doses and
// tests, the precision the single-hit fit can be expected to reach and the chance that it
// gives no estimate at all; a dose series around the most informative dose; and the fewest
// tests per dose that reach a wanted width of interval.
//
// Notation as in single_hit_model.h: x = f d, p = -expm1(-x), 1 - p = exp(-x).
#pragma once

#include <optional>
#include <vector>

namespace titron::analysis {

struct PlannedDose {
    double dose = 0.0;   // > 0
    double tested = 0.0; // whole, 1 or more
};

// The expected (Fisher) information about ln f that one test at x = f d carries:
// x^2 exp(-x) / p. It goes to 0 as x goes to 0 or grows without bound.
double informationPerTest(double x);

// The x where informationPerTest peaks: the root of x = 2 (1 - exp(-x)), about 1.594.
double mostInformativeFd();

struct DesignFigures {
    std::vector<double> expectedResponses; // n_i p_i, in the order of the doses
    double information = 0.0;              // sum n_i x_i^2 exp(-x_i) / p_i
    double seLog = 0.0;                    // 1 / sqrt(information); infinite without any
    double intervalRatio = 0.0;            // upper / lower = exp(2 z se) at the level
    double probabilityNone = 0.0;          // no test responds: prod exp(-x_i n_i)
    double probabilityAll = 0.0;           // every test responds: prod p_i^n_i
};

// The expected figures of a plan at proportion f > 0 and level 0 < level < 1.
DesignFigures assessDesign(double proportion, const std::vector<PlannedDose>& doses, double level);

// The proposed series for proportion f: the most informative dose rounded to two
// significant figures, d*, and d*/4, d*/2, d*, 2 d*. Information falls slowly below d*
// and fast above it, where nearly every test responds, so the series reaches further
// below than above; then a frequency three times higher or lower than the guess costs
// about the same.
std::vector<double> proposeDoses(double proportion);

// The fewest tests n, the same at every dose, whose expected interval ratio is at most
// targetRatio (> 1); nothing when even kMostTestsPerDose are not enough.
inline constexpr double kMostTestsPerDose = 1e9;
std::optional<double> fewestTestsPerDose(double proportion, const std::vector<double>& doses,
                                         double level, double targetRatio);

} // namespace titron::analysis
