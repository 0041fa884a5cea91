// How well the single-hit model holds at its fit: the residual of every dose, the
// goodness-of-fit chi-squares, and the tests against a free slope and heterogeneity.
#pragma once

#include <optional>
#include <vector>

#include "analysis/assay_table.h"
#include "analysis/single_hit_model.h"

namespace titron::analysis {

// One per row in table order; expected and residuals only with a fit.
std::vector<DoseResidual> doseResiduals(const AssayTable& table,
                                        const std::optional<SingleHitFit>& fit);

// Pearson and deviance chi-square on k - 1 degrees of freedom, from the fit and the
// residuals already in `stats`.
void addGoodnessOfFit(SingleHitStatistics& stats);

// The free slope with its Wald and likelihood-ratio tests, or the reason for none, and the
// score tests for ln d and d, at the fit in `stats`.
void addSingleHitTests(const AssayTable& table, SingleHitStatistics& stats);

} // namespace titron::analysis
