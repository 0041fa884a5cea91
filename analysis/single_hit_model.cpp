#include "analysis/single_hit_model.h"

#include <cmath>
#include <limits>
#include <vector>

#include "analysis/distributions.h"
#include "analysis/model_adequacy.h"
#include "analysis/single_hit_terms.h"

namespace titron::analysis {

namespace {

using single_hit::RowTerms;
using single_hit::rowTerms;

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
// A Newton step below this (relative) is the last: the error it leaves is about its square.
constexpr double kLastStep = 1e-9;

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
std::optional<double> lowerBound(const AssayTable& table, double level) {
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
    // From f d = 1 at the smallest dose, outwards until the target is passed.
    const double start = -std::log(smallest);
    const bool startAbove = above(start);
    const std::optional<double> end =
        startAbove ? bracket(start, -1.0, [&](double b) { return !above(b); })
                   : bracket(start, 1.0, above);
    if (!end) {
        return std::nullopt;
    }
    return std::exp(startAbove ? bisect(*end, start, above) : bisect(start, *end, above));
}

// Where twice the drop of the log-likelihood from its maximum, g(b) = 2 (max - l(b)) - c,
// crosses 0 between `inside` (g < 0) and `outside` (g >= 0): Newton's method on g, whose
// slope is -2 dl/db, kept inside the bracket by bisection wherever its step would leave it.
double likelihoodRatioEnd(const AssayTable& table, const SingleHitFit& fit, double critical,
                          double inside, double outside, double from) {
    double b = from;
    for (int pass = 0; pass < 200; ++pass) {
        const Sums s = sumsAt(table, b);
        const double g = 2.0 * (fit.logLikelihood - s.logLik) - critical;
        (g >= 0.0 ? outside : inside) = b;
        double next = b + g / (2.0 * s.score);
        if (std::fabs(next - b) <= kLastStep * std::fabs(b)) {
            return next;
        }
        const bool within = std::fmin(inside, outside) < next && next < std::fmax(inside, outside);
        if (!within) {
            next = inside + (outside - inside) / 2.0;
            if (next == inside || next == outside) {
                return next;
            }
        }
        b = next;
    }
    return b;
}

// The likelihood-ratio interval of f: on each side of b, the b where twice the drop of the
// log-likelihood reaches the chi-square quantile (the square of the normal one, z). The
// search starts from the Wald interval's ends.
std::optional<Interval> likelihoodRatioInterval(const AssayTable& table, const SingleHitFit& fit,
                                                double z) {
    const double critical = z * z;
    const auto outside = [&](double b) {
        return 2.0 * (fit.logLikelihood - logLikelihoodAt(table, b)) >= critical;
    };
    const double b = fit.logProportion;
    const double step = std::fmax(z * fit.seLog, 1e-3);
    const std::optional<double> below = bracket(b, -step, outside);
    const std::optional<double> above = bracket(b, step, outside);
    if (!below || !above) {
        return std::nullopt;
    }
    return Interval{std::exp(likelihoodRatioEnd(table, fit, critical, b, *below, b - step)),
                    std::exp(likelihoodRatioEnd(table, fit, critical, b, *above, b + step))};
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
        // Newton's method doubles the correct digits each pass: after a step this small
        // the error left is far below rounding, so it is the last.
        if (size <= kLastStep * scale) {
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
            if (const std::optional<double> bound = lowerBound(table, level)) {
                stats.bound = OneSidedBound{OneSidedBound::Side::Lower, *bound};
            }
        }
        return stats;
    }
    const SingleHitFit& fit = *stats.fit;
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    stats.wald = Interval{std::exp(fit.logProportion - z * fit.seLog),
                          std::exp(fit.logProportion + z * fit.seLog)};
    stats.likelihoodRatio = likelihoodRatioInterval(table, fit, z);
    addSingleHitTests(table, stats);
    addGoodnessOfFit(stats);
    return stats;
}

} // namespace titron::analysis
