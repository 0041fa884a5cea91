// A check of a plan by simulation: assays drawn from the single-hit model at the guessed
// proportion, each fitted as an analysis would be, counting how often the Wald interval
// holds the true proportion and how often there is no estimate. Seeded, so that a run
// repeats exactly, with any standard library.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "analysis/assay_design.h"

namespace titron::analysis {

inline constexpr std::uint64_t kDefaultSimulationSeed = 1;

struct SimulationOutcome {
    long runs = 0;
    long noEstimate = 0; // no response at all, or every test responding
    long covered = 0;    // of the runs with an estimate, those whose interval held f
};

// One binomial draw: the number of n tests (whole, 0 or more) that respond with chance p.
// Each test is drawn on its own, as a uniform of 53 bits below p. The standard library's
// binomial_distribution is not used because its algorithm differs between library versions,
// so that the same seed would draw other assays elsewhere.
long drawBinomial(std::mt19937_64& generator, double n, double p);

// runs assays of the plan at proportion f, their Wald intervals at the level.
SimulationOutcome simulateDesign(double proportion, const std::vector<PlannedDose>& doses,
                                 double level, long runs, std::uint64_t seed);

} // namespace titron::analysis
