#include "analysis/distributions.h"

#include <cmath>
#include <limits>

namespace titron::analysis {

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
constexpr int kMostTerms = 10000;

// P(a, x), the regularized lower incomplete gamma function, by its series (x < a + 1).
double lowerGammaSeries(double a, double x) {
    double term = 1.0 / a;
    double sum = term;
    for (int n = 1; n < kMostTerms && std::fabs(term) > std::fabs(sum) * kEpsilon; ++n) {
        term *= x / (a + n);
        sum += term;
    }
    return sum * std::exp(-x + a * std::log(x) - std::lgamma(a));
}

// Q(a, x), the regularized upper incomplete gamma function, by its continued fraction
// (x >= a + 1), evaluated by the modified Lentz method.
double upperGammaFraction(double a, double x) {
    constexpr double tiny = 1e-300;
    double b = x + 1.0 - a;
    double c = 1.0 / tiny;
    double d = 1.0 / b;
    double h = d;
    for (int i = 1; i < kMostTerms; ++i) {
        const double an = -i * (i - a);
        b += 2.0;
        d = an * d + b;
        d = std::fabs(d) < tiny ? tiny : d;
        c = b + an / c;
        c = std::fabs(c) < tiny ? tiny : c;
        d = 1.0 / d;
        const double delta = d * c;
        h *= delta;
        if (std::fabs(delta - 1.0) <= kEpsilon) {
            break;
        }
    }
    return std::exp(-x + a * std::log(x) - std::lgamma(a)) * h;
}

// The lower-tail quantile of the standard normal for 0 < p <= 0.5, by Acklam's rational
// approximation (relative error 1.2e-9), refined by one step of Halley's method on erfc.
double normalLowerQuantile(double p) {
    static constexpr double a[] = {-3.969683028665376e+01, 2.209460984245205e+02,
                                   -2.759285104469687e+02, 1.383577518672690e+02,
                                   -3.066479806614716e+01, 2.506628277459239e+00};
    static constexpr double b[] = {-5.447609879822406e+01, 1.615858368580409e+02,
                                   -1.556989798598866e+02, 6.680131188771972e+01,
                                   -1.328068155288572e+01};
    static constexpr double c[] = {-7.784894002430293e-03, -3.223964580411365e-01,
                                   -2.400758277161838e+00, -2.549732539343734e+00,
                                   4.374664141464968e+00,  2.938163982698783e+00};
    static constexpr double d[] = {7.784695709041462e-03, 3.224671290700398e-01,
                                   2.445134137142996e+00, 3.754408661907416e+00};
    double x = 0.0;
    if (p < 0.02425) {
        const double q = std::sqrt(-2.0 * std::log(p));
        x = (((((c[0] * q + c[1]) * q + c[2]) * q + c[3]) * q + c[4]) * q + c[5]) /
            ((((d[0] * q + d[1]) * q + d[2]) * q + d[3]) * q + 1.0);
    } else {
        const double q = p - 0.5;
        const double r = q * q;
        x = (((((a[0] * r + a[1]) * r + a[2]) * r + a[3]) * r + a[4]) * r + a[5]) * q /
            (((((b[0] * r + b[1]) * r + b[2]) * r + b[3]) * r + b[4]) * r + 1.0);
    }
    const double e = 0.5 * std::erfc(-x / std::sqrt(2.0)) - p;
    const double u = e * std::sqrt(2.0 * M_PI) * std::exp(x * x / 2.0);
    return x - u / (1.0 + x * u / 2.0);
}

} // namespace

double normalUpperQuantile(double tail) {
    return tail <= 0.5 ? -normalLowerQuantile(tail) : normalLowerQuantile(1.0 - tail);
}

double normalTwoSidedP(double z) {
    return std::erfc(std::fabs(z) / std::sqrt(2.0));
}

double chiSquareUpperTail(double x, double df) {
    if (!(x > 0.0)) {
        return 1.0;
    }
    const double a = df / 2.0;
    const double half = x / 2.0;
    return half < a + 1.0 ? 1.0 - lowerGammaSeries(a, half) : upperGammaFraction(a, half);
}

} // namespace titron::analysis
