#include "analysis/figures.h"

#include <cmath>

#include "analysis/checked_math.h"
#include "analysis/tail_probability.h"

namespace titron::analysis {

namespace {

// Two-sided 95% point of the standard normal, as the report's limits use it.
constexpr double kNormal95 = 1.96;

} // namespace

Figures computeFigures(const Estimate& estimate, int rows) {
    Figures f;
    f.iterations = estimate.iterations;
    f.converged = estimate.remaining != 0;
    f.rows = rows;
    f.pearsonChi = estimate.pearsonChi;
    f.deviance = estimate.deviance;

    const double b = estimate.logProportion;
    f.logProportion = b;
    f.proportion = checked::exp(b);
    f.se = estimate.sumWeight == 0.0 ? 1.0
                                     : checked::pow(checked::divide(1.0, estimate.sumWeight), 0.5);
    f.proportionPlus = checked::exp(checked::finite(b + f.se));
    f.proportionMinus = checked::exp(checked::finite(b - f.se));
    f.upperLimit = checked::exp(checked::finite(b + checked::finite(kNormal95 * f.se)));
    f.lowerLimit = checked::exp(checked::finite(b - checked::finite(kNormal95 * f.se)));

    f.inconsistentWithModel = std::fabs(b) < f.se;

    if (rows < 2) {
        return f;
    }
    f.hasTests = true;
    f.df = rows - 1;
    if (f.pearsonChi != 0.0) {
        f.pearsonP = chiSquareTail(f.pearsonChi, f.df);
        f.poorFit = *f.pearsonP < 0.05;
    }
    if (f.deviance != 0.0) {
        f.devianceP = chiSquareTail(f.deviance, f.df);
    }
    return f;
}

} // namespace titron::analysis
