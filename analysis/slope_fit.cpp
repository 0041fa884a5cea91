#include "analysis/slope_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "analysis/single_hit_terms.h"

namespace titron::analysis {

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
// A Newton step below this (relative) is the last: the error it leaves is about its square.
constexpr double kLastStep = 1e-9;
// A standard error of the slope this many times its size (or 1) marks a runaway fit.
constexpr double kRunawayRatio = 1e4;

// The log-likelihood of the free-slope model with its gradient and information matrices,
// on ln d centred at its mean, t, so that a and beta are nearly independent.
struct SlopeSums {
    double logLik = 0.0;
    double scale = 0.0; // sum of the sizes of the log-likelihood's terms
    double gradientA = 0.0, gradientBeta = 0.0;
    double observedAA = 0.0, observedAB = 0.0, observedBB = 0.0;
    double fisherAA = 0.0, fisherAB = 0.0, fisherBB = 0.0;
};

SlopeSums slopeSumsAt(const AssayTable& table, const std::vector<double>& t, double a,
                      double beta) {
    SlopeSums s;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double x = std::exp(a + beta * t[i]);
        const double r = table[i].responses;
        const double n = table[i].tested;
        const single_hit::RowTerms terms = single_hit::rowTerms(x, r, n);
        s.logLik += terms.logLik;
        s.scale += std::fabs(terms.logLik);
        s.gradientA += terms.score;
        s.gradientBeta += terms.score * t[i];
        s.observedAA += terms.observedInformation;
        s.observedAB += terms.observedInformation * t[i];
        s.observedBB += terms.observedInformation * t[i] * t[i];
        s.fisherAA += terms.fisherWeight;
        s.fisherAB += terms.fisherWeight * t[i];
        s.fisherBB += terms.fisherWeight * t[i] * t[i];
    }
    return s;
}

} // namespace

bool responsesSeparateByDose(const AssayTable& table) {
    const auto holds = [&](double c, bool rising) {
        for (const AssayRow& row : table) {
            const bool none = row.responses == 0.0;
            const bool all = row.responses == row.tested;
            if (row.dose < c && !(rising ? none : all)) {
                return false;
            }
            if (row.dose > c && !(rising ? all : none)) {
                return false;
            }
        }
        return true;
    };
    for (const AssayRow& row : table) {
        if (holds(row.dose, true) || holds(row.dose, false)) {
            return true;
        }
    }
    return false;
}

SlopeOutcome fitFreeSlope(const AssayTable& table, const SingleHitFit& start) {
    std::vector<double> t(table.size());
    double meanLog = 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        t[i] = std::log(table[i].dose);
        meanLog += t[i];
    }
    meanLog /= static_cast<double>(table.size());
    for (double& value : t) {
        value -= meanLog;
    }
    if (std::all_of(table.begin(), table.end(),
                    [&](const AssayRow& row) { return row.dose == table.front().dose; })) {
        return {std::nullopt, kNoSlopeOneDose};
    }
    if (responsesSeparateByDose(table)) {
        return {std::nullopt, kNoSlopeSeparation};
    }

    // Newton's method on (a, beta) from the single-hit fit, halving a step that would lower
    // the log-likelihood (concave in both) by more than its rounding.
    double a = start.logProportion + meanLog;
    double beta = 1.0;
    SlopeSums s = slopeSumsAt(table, t, a, beta);
    double previousStep = std::numeric_limits<double>::infinity();
    bool converged = false;
    for (int pass = 0; pass < 500 && !converged; ++pass) {
        const double det = s.observedAA * s.observedBB - s.observedAB * s.observedAB;
        const double stepA = (s.observedBB * s.gradientA - s.observedAB * s.gradientBeta) / det;
        const double stepBeta = (s.observedAA * s.gradientBeta - s.observedAB * s.gradientA) / det;
        if (!std::isfinite(stepA) || !std::isfinite(stepBeta)) {
            break;
        }
        const double size = std::fmax(std::fabs(stepA) / std::fmax(1.0, std::fabs(a)),
                                      std::fabs(stepBeta) / std::fmax(1.0, std::fabs(beta)));
        // As for the single-hit fit: after a step this small the error is below rounding.
        if (size <= kLastStep) {
            a += stepA;
            beta += stepBeta;
            converged = true;
            break;
        }
        // Below the step of the pass before, near rounding: the gradient is noise now.
        if (size < 1e-9 && size >= previousStep / 2.0) {
            converged = true;
            break;
        }
        const double tolerance = 64.0 * kEpsilon * s.scale;
        bool moved = false;
        for (double fraction = 1.0; fraction > 1e-18; fraction /= 2.0) {
            const SlopeSums at =
                slopeSumsAt(table, t, a + fraction * stepA, beta + fraction * stepBeta);
            if (at.logLik >= s.logLik - tolerance) {
                a += fraction * stepA;
                beta += fraction * stepBeta;
                s = at;
                moved = true;
                break;
            }
        }
        converged = !moved && size < 1e-9;
        if (!moved) {
            break;
        }
        previousStep = size;
    }
    if (!converged) {
        return {std::nullopt, kNoSlopeNoConvergence};
    }
    s = slopeSumsAt(table, t, a, beta);
    // The standard error from the expected information, as for the single-hit fit.
    const double det = s.fisherAA * s.fisherBB - s.fisherAB * s.fisherAB;
    const double se = std::sqrt(s.fisherAA / det);
    if (!std::isfinite(se) || !(det > 0.0)) {
        return {std::nullopt, kNoSlopeNoConvergence};
    }
    // A slope whose error dwarfs it has run off where the likelihood no longer bends: the
    // check of the responses above is exact, this one catches what rounding leaves over.
    if (se > kRunawayRatio * std::fmax(1.0, std::fabs(beta))) {
        return {std::nullopt, kNoSlopeSeparation};
    }
    double deviance = 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        deviance +=
            single_hit::rowDeviance(std::exp(a + beta * t[i]), table[i].responses, table[i].tested);
    }
    return {SlopeFit{a - beta * meanLog, beta, se, deviance}, ""};
}

} // namespace titron::analysis
