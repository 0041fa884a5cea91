#include "analysis/assay_design.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "analysis/distributions.h"

namespace titron::analysis {

namespace {

// ln p for p = 1 - exp(-x), precise at both ends: near x = 0 p itself is exact, for large x
// log1p keeps the tiny distance of p from 1.
double logResponding(double x) {
    if (x > std::numbers::ln2) {
        return std::log1p(-std::exp(-x));
    }
    return std::log(-std::expm1(-x));
}

double roundToTwoSignificant(double v) {
    const int exponent = static_cast<int>(std::floor(std::log10(v))) - 1;
    if (exponent >= 0) {
        const double scale = std::pow(10.0, exponent);
        return std::round(v / scale) * scale;
    }
    // Dividing by a power of ten that is exact rounds once, where multiplying by 10^-k
    // (not exact in binary) would round twice.
    const double scale = std::pow(10.0, -exponent);
    return std::round(v * scale) / scale;
}

double sumOfInformation(double proportion, const std::vector<double>& doses) {
    double sum = 0.0;
    for (const double dose : doses) {
        sum += informationPerTest(proportion * dose);
    }
    return sum;
}

double ratioWithTests(double proportion, const std::vector<double>& doses, double tested,
                      double level) {
    std::vector<PlannedDose> plan;
    for (const double dose : doses) {
        plan.push_back({dose, tested});
    }
    return assessDesign(proportion, plan, level).intervalRatio;
}

} // namespace

double informationPerTest(double x) {
    const double notResponding = std::exp(-x);
    const double responding = -std::expm1(-x);
    if (!(x > 0.0) || notResponding == 0.0 || responding == 0.0) {
        return 0.0;
    }
    return x * x * notResponding / responding;
}

double mostInformativeFd() {
    // The derivative of ln(x^2 exp(-x) / (1 - exp(-x))) is 0 where x = 2 (1 - exp(-x)).
    // The map's slope there, 2 exp(-x), is about 0.4, so the iteration closes in fast.
    static const double peak = [] {
        double x = 1.6;
        for (int pass = 0; pass < 200; ++pass) {
            const double next = -2.0 * std::expm1(-x);
            if (next == x) {
                break;
            }
            x = next;
        }
        return x;
    }();
    return peak;
}

DesignFigures assessDesign(double proportion, const std::vector<PlannedDose>& doses, double level) {
    DesignFigures figures;
    double logNone = 0.0;
    double logAll = 0.0;
    for (const PlannedDose& planned : doses) {
        const double x = proportion * planned.dose;
        figures.expectedResponses.push_back(planned.tested * -std::expm1(-x));
        figures.information += planned.tested * informationPerTest(x);
        logNone -= x * planned.tested;
        logAll += planned.tested * logResponding(x);
    }
    // Products of many factors near 0 or 1 are summed as logarithms: a factor that is
    // tiny but not zero then never makes the product 0 early, and 1 - tiny keeps its digits.
    figures.probabilityNone = std::exp(logNone);
    figures.probabilityAll = std::exp(logAll);
    figures.seLog = figures.information > 0.0 ? 1.0 / std::sqrt(figures.information)
                                              : std::numeric_limits<double>::infinity();
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    figures.intervalRatio = std::exp(2.0 * z * figures.seLog);
    return figures;
}

std::vector<double> proposeDoses(double proportion) {
    const double best = roundToTwoSignificant(mostInformativeFd() / proportion);
    return {best / 4.0, best / 2.0, best, best * 2.0};
}

std::optional<double> fewestTestsPerDose(double proportion, const std::vector<double>& doses,
                                         double level, double targetRatio) {
    // With n tests at every dose the information is n S, so the ratio exp(2 z / sqrt(n S))
    // is at most R from n = 4 z^2 / (S ln(R)^2) on; the steps after that guess settle the
    // rounding at the boundary against the figure that is reported.
    const double perTest = sumOfInformation(proportion, doses);
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    const double logRatio = std::log(targetRatio);
    double tested = std::ceil(4.0 * z * z / (perTest * logRatio * logRatio));
    if (!(perTest > 0.0) || !(tested <= kMostTestsPerDose)) {
        return std::nullopt;
    }
    tested = std::max(tested, 1.0);
    while (tested > 1.0 && ratioWithTests(proportion, doses, tested - 1.0, level) <= targetRatio) {
        tested -= 1.0;
    }
    while (ratioWithTests(proportion, doses, tested, level) > targetRatio) {
        if (tested >= kMostTestsPerDose) {
            return std::nullopt;
        }
        tested += 1.0;
    }
    return tested;
}

} // namespace titron::analysis
