// The figures of an analysis: the proportion with its limits at one standard error and at
// 95%, the log proportion with its standard error, and the two chi-square tests of the
// assay's internal consistency, with the warnings they call for.
#pragma once

#include <cstdint>
#include <optional>

#include "analysis/estimator.h"

namespace titron::analysis {

struct Figures {
    std::int32_t iterations = 0;
    bool converged = true; // false only when the passes allowed ran out (report line 2)

    double logProportion = 0.0;   // b, natural log of the proportion
    double se = 0.0;              // standard error of b
    double proportion = 0.0;      // exp(b), a proportion (frequency "1 in" 1/proportion)
    double proportionMinus = 0.0; // exp(b - se)
    double proportionPlus = 0.0;  // exp(b + se)
    double lowerLimit = 0.0;      // exp(b - 1.96 se), 95% two-sided
    double upperLimit = 0.0;      // exp(b + 1.96 se)

    int rows = 0; // k, the assay rows
    double pearsonChi = 0.0;
    double deviance = 0.0;
    bool hasTests = false;          // two rows or more: the test section is reported
    int df = 0;                     // rows - 1, when hasTests
    std::optional<double> pearsonP; // upper chi-square tail; none for a statistic of 0
    std::optional<double> devianceP;

    // A proportion of 1 lies within one standard error of the estimate: |b| < se.
    bool inconsistentWithModel = false;
    // The Pearson test rejects the model at 5%.
    bool poorFit = false;
};

// Works out the figures from the estimate of a table of `rows` rows. Arithmetic failures
// (an upper limit that overflows, for one) throw vocabulary::Failure.
Figures computeFigures(const Estimate& estimate, int rows);

} // namespace titron::analysis
