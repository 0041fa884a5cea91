#include "analysis/estimator.h"

#include <cmath>
#include <vector>

#include "analysis/checked_math.h"
#include "vocabulary/failure.h"

namespace titron::analysis {

namespace {

// Relative change of the deviance below which the fit has settled.
constexpr double kConvergence = 1e-7;
// Deviance term of a row whose fitted probability reached 0 or 1 in floating point.
constexpr double kDevianceCap = 9999.0;

std::int32_t nextPassCount(std::int32_t iterations) {
    if (iterations == INT32_MAX) {
        throw vocabulary::Failure(vocabulary::failure::Overflow);
    }
    return iterations + 1;
}

} // namespace

Estimate estimateLogProportion(const AssayTable& table, const MorePassesQuestion& askMorePasses) {
    const std::size_t k = table.size();
    std::vector<double> logDose(k), observed(k);

    // Start values: the complementary log-log of each row's observed proportion, with
    // half a response added to or taken from rows with none or all responding.
    double sumStartLink = 0.0;
    double sumLogDose = 0.0;
    for (std::size_t i = 0; i < k; ++i) {
        const double r = table[i].responses;
        const double n = table[i].tested;
        logDose[i] = checked::log(table[i].dose);
        observed[i] = checked::divide(r, n);
        double adjusted;
        if (r > 0.0 && r < n) {
            adjusted = checked::divide(r, n);
        } else if (r == 0.0) {
            adjusted = checked::divide(0.5, n);
        } else {
            adjusted = checked::divide(n - 0.5, n);
        }
        const double startLink = checked::log(-checked::log(1.0 - adjusted));
        sumStartLink = checked::finite(sumStartLink + startLink);
        sumLogDose = checked::finite(sumLogDose + logDose[i]);
    }

    Estimate result;
    double b = checked::divide(sumStartLink - sumLogDose, static_cast<double>(k));
    double deviance = 0.0;
    std::int32_t remaining = kPassesPerRound;

    while (remaining > 0) {
        double sumWeight = 0.0;
        double sumScore = 0.0;
        double halfDeviance = 0.0;
        double pearsonChi = 0.0;
        result.iterations = nextPassCount(result.iterations);

        for (std::size_t i = 0; i < k; ++i) {
            const double r = table[i].responses;
            const double n = table[i].tested;
            const double eta = checked::finite(b + logDose[i]);
            const double p = 1.0 - checked::exp(-checked::exp(eta));

            // Working response: eta moved by the residual times the derivative of eta by p.
            double z = eta;
            if (p > 0.0 && p < 1.0) {
                const double slope = checked::divide(-1.0, (1.0 - p) * checked::log(1.0 - p));
                z = checked::finite((observed[i] - p) * slope + eta);
            }

            // Iterative weight; rows far out on either side of the curve carry none.
            double w = 0.0;
            if (eta > -20.0 && eta <= 5.0) {
                w = checked::divide(checked::exp(eta + eta), checked::exp(checked::exp(eta)) - 1.0);
            }
            sumWeight = checked::finite(sumWeight + w * n);
            sumScore = checked::finite(sumScore + checked::finite(z - logDose[i]) * (w * n));

            double first = 0.0;
            if (r != 0.0) {
                first = p == 0.0 ? kDevianceCap : r * checked::log(checked::divide(observed[i], p));
            }
            double second = 0.0;
            if (r != n) {
                second = p == 1.0 ? kDevianceCap
                                  : (n - r) * checked::log(checked::divide(n - r, (1.0 - p) * n));
            }
            halfDeviance = checked::finite(halfDeviance + checked::finite(first + second));

            if (p > 0.0 && p < 1.0) {
                const double residual = observed[i] - p;
                pearsonChi = checked::finite(
                    pearsonChi +
                    checked::divide(checked::finite(residual * residual * n), (1.0 - p) * p));
            }
        }

        const double previousDeviance = deviance;
        deviance = checked::finite(2.0 * halfDeviance);
        const double previousLog = b;
        b = sumWeight == 0.0 ? 0.0 : checked::divide(sumScore, sumWeight);
        // A proportion above 1 is refused: go halfway back towards 1 instead.
        if (b > 0.0) {
            b = previousLog / 2.0;
        }
        result.sumWeight = sumWeight;
        result.deviance = deviance;
        result.pearsonChi = pearsonChi;
        result.logProportion = b;

        const double change =
            std::fabs(checked::divide(deviance - previousDeviance, deviance + 1.0));
        if (change < kConvergence) {
            break;
        }
        remaining -= 1;
        if (remaining == 0) {
            remaining = askMorePasses(result.iterations);
            if (remaining == 0) {
                result.stopped = true;
                break;
            }
        }
    }
    result.remaining = remaining;
    return result;
}

} // namespace titron::analysis
