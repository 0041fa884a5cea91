// The output of titron-cli design: a text a person reads, or one JSON document.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/assay_design.h"
#include "analysis/design_simulation.h"

namespace titron::shell {

struct DesignPlan {
    double frequency = 0.0; // X of "1 in X", > 0
    double level = 0.0;
    std::vector<analysis::PlannedDose> doses;
    bool proposedDoses = false;
    std::optional<double> targetRatio; // when the tests per dose were chosen to reach it
    std::optional<analysis::SimulationOutcome> simulation;
    std::uint64_t seed = 0; // of the simulation
};

std::string designText(const DesignPlan& plan);

// {"frequency", "level", "doses": [{"dose", "tested", "expected_responses"}], "se_log",
// "interval_ratio", "probability_none", "probability_all"}, and with a simulation
// "simulation": {"runs", "seed", "no_estimate", "covered", "coverage"}.
std::string designJson(const DesignPlan& plan);

} // namespace titron::shell
