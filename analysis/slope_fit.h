// The free-slope model cloglog(p) = a + beta ln d beside the single-hit model (beta = 1):
// its maximum-likelihood fit, or why it has none.
#pragma once

#include <optional>
#include <string>

#include "analysis/assay_table.h"
#include "analysis/single_hit_model.h"

namespace titron::analysis {

struct SlopeOutcome {
    std::optional<SlopeFit> fit;
    std::string noSlopeReason; // empty with a fit
};

// True when the responses separate by dose: some dose c has no response below it and
// every test responding above it, or the other way round. The free-slope likelihood then
// keeps rising as the slope runs off, and has no finite maximum.
bool responsesSeparateByDose(const AssayTable& table);

// Fits a and beta, starting from the single-hit fit `start`.
SlopeOutcome fitFreeSlope(const AssayTable& table, const SingleHitFit& start);

} // namespace titron::analysis
