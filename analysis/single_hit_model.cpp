#include "analysis/single_hit_model.h"

#include <cmath>
#include <limits>
#include <vector>

#include "analysis/distributions.h"
#include "analysis/single_hit_terms.h"
#include "analysis/slope_fit.h"

namespace titron::analysis {

namespace {

using single_hit::RowTerms;
using single_hit::rowTerms;

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

bool noneResponded(const AssayTable& table) {
    for (const AssayRow& row : table) {
        if (row.responses > 0.0) {
            return false;
        }
    }
    return true;
}

bool allResponded(const AssayTable& table) {
    for (const AssayRow& row : table) {
        if (row.responses < row.tested) {
            return false;
        }
    }
    return true;
}

// The log-likelihood at b alone, for the searches that need nothing else. Safe where f d
// underflows to 0 or overflows: the terms then go to -infinity, never to NaN.
double logLikelihoodAt(const AssayTable& table, double b) {
    const double f = std::exp(b);
    double sum = 0.0;
    for (const AssayRow& row : table) {
        const double x = f * row.dose;
        if (row.responses > 0.0) {
            sum += row.responses * single_hit::logP(x);
        }
        if (row.tested > row.responses) {
            sum -= (row.tested - row.responses) * x;
        }
    }
    return sum;
}

// The log-likelihood and its derivatives by b at one b.
struct Sums {
    double logLik = 0.0;
    double score = 0.0;
    double observedInformation = 0.0;
    double fisherInformation = 0.0;
    double scale = 0.0; // sum of the sizes of the log-likelihood's terms, for its rounding
};

Sums sumsAt(const AssayTable& table, double b) {
    const double f = std::exp(b);
    Sums s;
    for (const AssayRow& row : table) {
        const RowTerms t = rowTerms(f * row.dose, row.responses, row.tested);
        s.logLik += t.logLik;
        s.score += t.score;
        s.observedInformation += t.observedInformation;
        s.fisherInformation += t.fisherWeight;
        s.scale += std::fabs(t.logLik);
    }
    return s;
}

// The report's start value: the mean over the rows of the complementary log-log of the
// observed proportion (half a response in or out where none or all responded) less ln d.
double startValue(const AssayTable& table) {
    double sum = 0.0;
    for (const AssayRow& row : table) {
        const double r = row.responses;
        const double n = row.tested;
        const double adjusted = r == 0.0 ? 0.5 / n : r == n ? (n - 0.5) / n : r / n;
        sum += std::log(-std::log1p(-adjusted)) - std::log(row.dose);
    }
    return sum / static_cast<double>(table.size());
}

// Bisection on b between a point where `above` is false and one where it is true, down to
// adjacent doubles; returns the point where `above` turns true.
template <class Above> double bisect(double below, double aboveAt, const Above& above) {
    for (int i = 0; i < 2200; ++i) {
        const double middle = below + (aboveAt - below) / 2.0;
        if (middle == below || middle == aboveAt) {
            break;
        }
        (above(middle) ? aboveAt : below) = middle;
    }
    return aboveAt;
}

// Steps from `from` by `step`, doubling it each time, until `above` holds.
template <class Above> std::optional<double> bracket(double from, double step, const Above& above) {
    for (int i = 0; i < 1100; ++i) {
        const double at = from + step;
        if (above(at)) {
            return at;
        }
        step *= 2.0;
        if (!std::isfinite(step)) {
            break;
        }
    }
    return std::nullopt;
}

// The lower bound of f with every test responding: the f at which the chance that all of
// them respond has fallen to 1 - level.
double lowerBound(const AssayTable& table, double level) {
    const double target = std::log1p(-level);
    const auto above = [&](double b) {
        const double f = std::exp(b);
        double sum = 0.0;
        for (const AssayRow& row : table) {
            sum += row.tested * single_hit::logP(f * row.dose);
        }
        return sum >= target;
    };
    double smallest = table.front().dose;
    for (const AssayRow& row : table) {
        smallest = std::fmin(smallest, row.dose);
    }
    const double start = -std::log(smallest);
    double lower, upper;
    if (above(start)) {
        upper = start;
        lower = *bracket(start, -1.0, [&](double b) { return !above(b); });
    } else {
        lower = start;
        upper = *bracket(start, 1.0, above);
    }
    return std::exp(bisect(lower, upper, above));
}

// The likelihood-ratio interval of f: on each side of b, the b where twice the drop of the
// log-likelihood reaches the chi-square quantile (the square of the normal one, z).
std::optional<Interval> likelihoodRatioInterval(const AssayTable& table, const SingleHitFit& fit,
                                                double z) {
    const double critical = z * z;
    const auto outside = [&](double b) {
        return 2.0 * (fit.logLikelihood - logLikelihoodAt(table, b)) >= critical;
    };
    const double step = std::fmax(z * fit.seLog, 1e-3);
    const std::optional<double> below = bracket(fit.logProportion, -step, outside);
    const std::optional<double> above = bracket(fit.logProportion, step, outside);
    if (!below || !above) {
        return std::nullopt;
    }
    return Interval{std::exp(bisect(fit.logProportion, *below, outside)),
                    std::exp(bisect(fit.logProportion, *above, outside))};
}

std::vector<DoseResidual> doseResiduals(const AssayTable& table,
                                        const std::optional<SingleHitFit>& fit) {
    std::vector<DoseResidual> doses;
    for (const AssayRow& row : table) {
        DoseResidual dose{row.dose, row.responses, row.tested, {}, {}, {}};
        if (fit) {
            const double x = fit->proportion * row.dose;
            const RowTerms t = rowTerms(x, row.responses, row.tested);
            dose.expected = row.tested * t.p;
            const double variance = row.tested * t.p * t.q;
            if (variance > 0.0) {
                dose.pearsonResidual = t.residual / std::sqrt(variance);
            }
            const double size = std::sqrt(single_hit::rowDeviance(x, row.responses, row.tested));
            dose.devianceResidual = t.residual < 0.0 ? -size : size;
        }
        doses.push_back(dose);
    }
    return doses;
}

ChiSquareTest chiSquareTest(double statistic, int df) {
    ChiSquareTest test{statistic, df, {}};
    if (df > 0) {
        test.p = chiSquareUpperTail(statistic, df);
    }
    return test;
}

// Pearson's chi-square at the fit, from the residuals of the rows.
double pearsonChiSquare(const std::vector<DoseResidual>& doses) {
    double sum = 0.0;
    for (const DoseResidual& dose : doses) {
        if (dose.pearsonResidual) {
            sum += *dose.pearsonResidual * *dose.pearsonResidual;
        } else if (dose.devianceResidual && *dose.devianceResidual != 0.0) {
            return std::numeric_limits<double>::infinity(); // a miss where p is 0 or 1
        }
    }
    return sum;
}

ZTest zTest(double z) {
    return ZTest{z, normalTwoSidedP(z)};
}

// The score test, at the single-hit fit, for adding the covariate c(d) to the model:
// U / sqrt(I_cc - I_ca^2 / I_aa). Both are worked out with c centred at its weighted mean
// I_ca / I_aa, which leaves them unchanged at the fit (where sum (r - n p) h = 0) and
// spares the cancellation of large doses. None when c does not vary.
template <class Covariate>
std::optional<ZTest> scoreTest(const AssayTable& table, const SingleHitFit& fit,
                               const Covariate& covariate) {
    std::vector<RowTerms> terms;
    double sumWeight = 0.0;
    double sumWeighted = 0.0;
    for (const AssayRow& row : table) {
        terms.push_back(rowTerms(fit.proportion * row.dose, row.responses, row.tested));
        sumWeight += terms.back().fisherWeight;
        sumWeighted += terms.back().fisherWeight * covariate(row.dose);
    }
    const double mean = sumWeighted / sumWeight;
    double score = 0.0;
    double information = 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double centred = covariate(table[i].dose) - mean;
        score += terms[i].score * centred;
        information += terms[i].fisherWeight * centred * centred;
    }
    if (!(information > 0.0)) {
        return std::nullopt;
    }
    return zTest(score / std::sqrt(information));
}

void addSingleHitTests(const AssayTable& table, SingleHitStatistics& stats) {
    const SingleHitFit& fit = *stats.fit;
    const SlopeOutcome slope = fitFreeSlope(table, fit);
    stats.noSlopeReason = slope.noSlopeReason;
    if (slope.noSlopeReason == kNoSlopeOneDose) {
        return;
    }
    stats.scoreLogDose = scoreTest(table, fit, [](double d) { return std::log(d); });
    stats.scoreDose = scoreTest(table, fit, [](double d) { return d; });
    if (!slope.fit) {
        return;
    }
    stats.slope = slope.fit;
    stats.slopeWald = zTest((slope.fit->slope - 1.0) / slope.fit->seSlope);
    const double drop = std::sqrt(std::fmax(0.0, fit.deviance - slope.fit->deviance));
    stats.slopeLikelihoodRatio = zTest(slope.fit->slope < 1.0 ? -drop : drop);
}

} // namespace

std::optional<SingleHitFit> fitSingleHit(const AssayTable& table) {
    if (table.empty() || noneResponded(table) || allResponded(table)) {
        return std::nullopt;
    }
    // Newton's method on b. The log-likelihood is concave in b, so a step is halved only
    // while it would lower the log-likelihood by more than its rounding.
    double b = startValue(table);
    Sums s = sumsAt(table, b);
    double previousStep = std::numeric_limits<double>::infinity();
    for (int pass = 0; pass < 500; ++pass) {
        const double step = s.score / s.observedInformation;
        if (!std::isfinite(step)) {
            return std::nullopt;
        }
        const double size = std::fabs(step);
        const double scale = std::fmax(1.0, std::fabs(b));
        if (size <= kEpsilon * scale) {
            b += step;
            break;
        }
        // Below the step of the pass before, near rounding: the score is noise now.
        if (size < 1e-9 * scale && size >= previousStep / 2.0) {
            break;
        }
        const double tolerance = 64.0 * kEpsilon * s.scale;
        bool moved = false;
        for (double fraction = 1.0; fraction > 1e-18; fraction /= 2.0) {
            const double next = b + fraction * step;
            const Sums at = sumsAt(table, next);
            if (at.logLik >= s.logLik - tolerance) {
                b = next;
                s = at;
                moved = true;
                break;
            }
        }
        if (!moved) {
            break;
        }
        previousStep = size;
    }
    s = sumsAt(table, b);
    if (!std::isfinite(b) || !(s.fisherInformation > 0.0)) {
        return std::nullopt;
    }
    SingleHitFit fit;
    fit.logProportion = b;
    fit.proportion = std::exp(b);
    fit.seLog = 1.0 / std::sqrt(s.fisherInformation);
    fit.logLikelihood = s.logLik;
    for (const AssayRow& row : table) {
        fit.deviance +=
            single_hit::rowDeviance(fit.proportion * row.dose, row.responses, row.tested);
    }
    return fit;
}

SingleHitStatistics examineSingleHit(const AssayTable& table, double level) {
    SingleHitStatistics stats;
    stats.level = level;
    if (table.empty()) {
        return stats;
    }
    stats.fit = fitSingleHit(table);
    stats.doses = doseResiduals(table, stats.fit);
    if (!stats.fit) {
        if (noneResponded(table)) {
            double exposure = 0.0;
            for (const AssayRow& row : table) {
                exposure += row.dose * row.tested;
            }
            stats.bound = OneSidedBound{OneSidedBound::Side::Upper, -std::log1p(-level) / exposure};
        } else if (allResponded(table)) {
            stats.bound = OneSidedBound{OneSidedBound::Side::Lower, lowerBound(table, level)};
        }
        return stats;
    }
    const SingleHitFit& fit = *stats.fit;
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    stats.wald = Interval{std::exp(fit.logProportion - z * fit.seLog),
                          std::exp(fit.logProportion + z * fit.seLog)};
    stats.likelihoodRatio = likelihoodRatioInterval(table, fit, z);
    addSingleHitTests(table, stats);

    const int df = static_cast<int>(table.size()) - 1;
    stats.pearson = chiSquareTest(pearsonChiSquare(stats.doses), df);
    stats.deviance = chiSquareTest(fit.deviance, df);
    return stats;
}

} // namespace titron::analysis
