// Maximum-likelihood estimate of the log proportion of active units, b = ln f, in the
// single-hit Poisson model p(d) = 1 - exp(-f d): a binomial model with complementary
// log-log link, ln d as offset and slope 1, fitted by iteratively reweighted least squares.
#pragma once

#include <cstdint>
#include <functional>

#include "analysis/assay_table.h"

namespace titron::analysis {

// Asked when the passes allowed are used up without convergence. Gets the passes made so
// far and returns how many more are allowed: 0 stops the estimate, a negative number ends
// the iteration unconverged with the latest estimate.
using MorePassesQuestion = std::function<std::int32_t(std::int32_t passesSoFar)>;

struct Estimate {
    double logProportion = 0.0; // b after the last update (natural log of the proportion)
    // Sums of the last pass, worked out at the b before the last update.
    double sumWeight = 0.0;
    double deviance = 0.0;
    double pearsonChi = 0.0;
    std::int32_t iterations = 0; // passes made
    std::int32_t remaining = 0;  // passes that were still allowed when the iteration ended
    bool stopped = false;        // the question was answered with 0: no result
};

// Passes allowed before the first question.
inline constexpr std::int32_t kPassesPerRound = 20;

// Runs the estimator on a checked table (see checkAssay). Arithmetic failures throw
// vocabulary::Failure with their failure number.
Estimate estimateLogProportion(const AssayTable& table, const MorePassesQuestion& askMorePasses);

} // namespace titron::analysis
