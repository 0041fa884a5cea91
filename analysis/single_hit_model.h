// The single-hit model examined in full, beside the report: the maximum-likelihood fit to
// full double precision, intervals at any level, one-sided bounds where there is no
// estimate, tests of the model itself, goodness of fit and the residual of every dose.
// The report keeps its own figures and stopping rule; nothing here changes them.
//
// Notation: row i has dose d_i, responses r_i, tested n_i; p(d) = 1 - exp(-f d), b = ln f.
// 1 - p is computed as exp(-f d) and p as -expm1(-f d), so rows with p near 1 stay exact.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/assay_table.h"

namespace titron::analysis {

// The level of the intervals when none is asked for.
inline constexpr double kDefaultLevel = 0.95;

struct Interval {
    double lower = 0.0;
    double upper = 0.0;
};

// The maximum-likelihood fit of the single-hit model.
struct SingleHitFit {
    double logProportion = 0.0; // b
    double proportion = 0.0;    // f = exp(b)
    double seLog = 0.0;         // 1 / sqrt(I), I = sum n_i (f d_i)^2 exp(-f d_i) / p_i
    double logLikelihood = 0.0; // sum r_i ln p_i + (n_i - r_i) ln(1 - p_i), no binomial constants
    double deviance = 0.0;      // twice the drop from the saturated model's log-likelihood
};

// Fits b to full precision; nullopt when no test or every test responded (no finite
// maximum). The table has passed the row checks (doses > 0, 0 <= r <= n, n >= 1).
std::optional<SingleHitFit> fitSingleHit(const AssayTable& table);

// Where no estimate exists: with no response at all an upper bound of f,
// U = -ln(1 - L) / sum d_i n_i; with every test responding a lower bound L_f, solving
// sum n_i ln(1 - exp(-L_f d_i)) = ln(1 - L).
struct OneSidedBound {
    enum class Side { Upper, Lower };
    Side side = Side::Upper;
    double proportion = 0.0;
};

struct ZTest {
    double z = 0.0;
    double p = 0.0; // two-sided, from the normal distribution
};

struct ChiSquareTest {
    double chiSquare = 0.0;
    int df = 0;
    std::optional<double> p; // none at 0 degrees of freedom
};

// The free-slope model cloglog(p) = a + beta ln d, fitted by maximum likelihood.
struct SlopeFit {
    double intercept = 0.0; // a
    double slope = 0.0;     // beta
    double seSlope = 0.0;
    double deviance = 0.0;
};

struct DoseResidual {
    double dose = 0.0;
    double responses = 0.0;
    double tested = 0.0;
    // At the fit; none without one (a bound), and the Pearson residual none where
    // n p (1 - p) is 0.
    std::optional<double> expected; // n_i p_i
    std::optional<double> pearsonResidual;
    std::optional<double> devianceResidual; // signed as r_i - n_i p_i
};

// The reasons why there is no slope.
inline constexpr const char* kNoSlopeOneDose = "fewer than two distinct doses";
inline constexpr const char* kNoSlopeSeparation =
    "the responses separate by dose, so the slope has no finite estimate";
inline constexpr const char* kNoSlopeNoConvergence = "the free-slope fit did not converge";

struct SingleHitStatistics {
    double level = kDefaultLevel;
    std::optional<OneSidedBound> bound; // instead of a fit
    std::optional<SingleHitFit> fit;
    std::optional<Interval> wald;            // of f: exp(b -/+ z se_log)
    std::optional<Interval> likelihoodRatio; // of f: where 2 (max - ln L) = chi-square(L, 1)
    std::optional<SlopeFit> slope;
    // Why there is no slope (fewer than two distinct doses, or responses that separate
    // by dose so that the slope runs off); empty with a slope, or without a fit.
    std::string noSlopeReason;
    std::optional<ZTest> slopeWald;            // (beta - 1) / se(beta)
    std::optional<ZTest> slopeLikelihoodRatio; // sign(beta - 1) sqrt(D_1 - D_beta)
    std::optional<ZTest> scoreLogDose;         // adding ln d to the single-hit model
    std::optional<ZTest> scoreDose;            // adding d (heterogeneity)
    std::optional<ChiSquareTest> pearson;      // on k - 1 degrees of freedom
    std::optional<ChiSquareTest> deviance;
    std::vector<DoseResidual> doses; // one per row, in table order
};

// Everything above for a table that passed the row checks, at the level 0 < level < 1.
SingleHitStatistics examineSingleHit(const AssayTable& table, double level = kDefaultLevel);

} // namespace titron::analysis
