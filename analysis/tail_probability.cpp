#include "analysis/tail_probability.h"

#include <cmath>

#include "analysis/checked_math.h"

namespace titron::analysis {

double normalTwoTail(double z) {
    const double t = checked::divide(1.0, 1.0 + 0.2316419 * z);
    // The density constant is 1/sqrt(2 pi) to ten digits, as the approximation prints it.
    const double d = 0.3989422804 * checked::exp(-z * z / 2.0);
    const double q =
        ((((1.330274429 * t - 1.821255978) * t + 1.781477937) * t - 0.356563782) * t + 0.31938153);
    const double p = 1.0 - q * (t * d);
    return (1.0 - p) + (1.0 - p);
}

namespace {

// Wilson-Hilferty: the cube root of chi-square over df is close to normal. The exponent
// is the ten-digit constant, not an exact third.
double largeDfTail(double x, int df) {
    const double u =
        checked::pow(checked::divide(x, df), 0.3333333333) - 1.0 + checked::divide(2.0, 9.0 * df);
    const double s = checked::sqrt(checked::divide(2.0 / 9.0, df));
    const double v = checked::divide(u, s);
    double q = normalTwoTail(std::fabs(v)) / 2.0;
    if (v < 0.0) {
        q = 1.0 - q;
    }
    return q;
}

// Hill and Pike's series for df below 100.
double smallDfTail(double x, int df) {
    const double a = x / 2.0;
    const double root = checked::sqrt(x);
    const double y = checked::exp(-a);
    const bool odd = df % 2 != 0;

    double s = y;
    if (odd) {
        s = normalTwoTail(root);
    }
    if (df <= 2) {
        return s;
    }
    const double last = (df - 1) / 2.0;
    double z = odd ? 0.5 : 1.0;
    if (x >= 50.0) {
        // In logarithms, so that the terms don't overflow; 0.572364942925 is ln sqrt(pi).
        double e = odd ? 0.572364942925 : 0.0;
        const double c = checked::log(a);
        while (z <= last) {
            e = checked::log(z) + e;
            s = s + checked::exp(c * z - a - e);
            z = z + 1.0;
        }
        return s;
    }
    // 0.564189583548 is 1 / sqrt(pi).
    double e = odd ? checked::divide(0.564189583548, checked::sqrt(a)) : 1.0;
    double c = 0.0;
    while (z <= last) {
        e = checked::finite(checked::divide(e * a, z));
        c = checked::finite(c + e);
        z = z + 1.0;
    }
    return checked::finite(y * c + s);
}

} // namespace

double chiSquareTail(double x, int df) {
    if (x < 0.0) {
        return 1.0;
    }
    const double result = df >= 100 ? largeDfTail(x, df) : smallDfTail(x, df);
    return result > 1.0 ? 1.0 : result;
}

} // namespace titron::analysis
