#include "analysis/design_simulation.h"

#include <cmath>

#include "analysis/assay_table.h"
#include "analysis/distributions.h"
#include "analysis/single_hit_model.h"

namespace titron::analysis {

long drawBinomial(std::mt19937_64& generator, double n, double p) {
    long responding = 0;
    for (double test = 0.0; test < n; test += 1.0) {
        // The top 53 bits as a uniform in [0, 1): every double of that grid equally likely.
        const double uniform = static_cast<double>(generator() >> 11) * 0x1.0p-53;
        if (uniform < p) {
            ++responding;
        }
    }
    return responding;
}

SimulationOutcome simulateDesign(double proportion, const std::vector<PlannedDose>& doses,
                                 double level, long runs, std::uint64_t seed) {
    std::mt19937_64 generator(seed);
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    std::vector<double> responding;
    for (const PlannedDose& planned : doses) {
        responding.push_back(-std::expm1(-proportion * planned.dose));
    }
    SimulationOutcome outcome;
    outcome.runs = runs;
    AssayTable table(doses.size());
    for (long run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < doses.size(); ++i) {
            const double drawn =
                static_cast<double>(drawBinomial(generator, doses[i].tested, responding[i]));
            table[i] = {doses[i].dose, drawn, doses[i].tested};
        }
        const std::optional<SingleHitFit> fit = fitSingleHit(table);
        if (!fit) {
            ++outcome.noEstimate;
            continue;
        }
        const double lower = std::exp(fit->logProportion - z * fit->seLog);
        const double upper = std::exp(fit->logProportion + z * fit->seLog);
        if (lower <= proportion && proportion <= upper) {
            ++outcome.covered;
        }
    }
    return outcome;
}

} // namespace titron::analysis
