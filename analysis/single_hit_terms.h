// The single-hit model's quantities for one row, written in terms of x = f d (or e^eta) and
// q = exp(-x) so that they stay exact when p rounds to 1 or x is tiny: p is never formed
// as 1 - q, nor 1 - p from p.
#pragma once

#include <cmath>
#include <limits>

namespace titron::analysis::single_hit {

// ln p = ln(1 - exp(-x)), x > 0.
inline double logP(double x) {
    return x < M_LN2 ? std::log(-std::expm1(-x)) : std::log1p(-std::exp(-x));
}

// x - p = x - (1 - exp(-x)) >= 0; the series where the difference would cancel.
inline double xMinusP(double x) {
    if (x < 1e-3) {
        return x * x * (0.5 - x * (1.0 / 6 - x * (1.0 / 24 - x * (1.0 / 120 - x / 720))));
    }
    return x + std::expm1(-x);
}

// a ln(a / m) - (a - m) >= 0, given difference = a - m worked out without cancellation: one
// of the two parts of a row's deviance, observed a against fitted m. Near a = m by the
// series m sum_k (-u)^k / (k (k - 1)), k >= 2, u = (a - m) / m, free of cancellation.
inline double devianceTerm(double a, double m, double difference) {
    if (a == 0.0) {
        return m;
    }
    const double u = difference / m;
    if (std::fabs(u) >= 0.25) {
        return a * std::log(a / m) - difference;
    }
    double sum = 0.0;
    double power = u * u;
    for (int k = 2; k < 60; ++k) {
        const double term = power / (k * (k - 1.0));
        sum += term;
        if (std::fabs(term) <= 1e-17 * std::fabs(sum)) {
            break;
        }
        power *= -u;
    }
    return m * sum;
}

// One row of r responses in n tests at x = f d, as the fits need it.
struct RowTerms {
    double p = 0.0;                   // -expm1(-x)
    double q = 0.0;                   // exp(-x) = 1 - p
    double logLik = 0.0;              // r ln p - (n - r) x
    double residual = 0.0;            // r - n p, as (r - n) + n q
    double score = 0.0;               // d logLik / d eta = (r - n p) x / p
    double observedInformation = 0.0; // -d2 logLik / d eta2 >= 0
    double fisherWeight = 0.0;        // n x^2 q / p, the expected information
};

inline RowTerms rowTerms(double x, double r, double n) {
    RowTerms t;
    t.q = std::exp(-x);
    t.p = -std::expm1(-x);
    t.residual = (r - n) + n * t.q;
    // x = f d underflowed to 0 or overflowed: the row's limits, p = 0 or 1, and no
    // information left in it.
    if (t.p == 0.0 || std::isinf(x)) {
        const double infinity = std::numeric_limits<double>::infinity();
        const bool responds = t.p != 0.0;
        const bool misses = responds ? r < n : r > 0.0;
        t.logLik = misses ? -infinity : 0.0;
        t.score = responds ? (misses ? -infinity : 0.0) : r;
        return t;
    }
    const double h = x / t.p; // f d / p, 1 in the limit x -> 0
    t.logLik = (r > 0.0 ? r * logP(x) : 0.0) - (n - r) * x;
    t.score = t.residual * h;
    // -l'' = (n - r) x + r x q (x - p) / p^2: two terms that are never negative.
    t.observedInformation = (n - r) * x + r * (x * t.q) * (xMinusP(x) / t.p) / t.p;
    t.fisherWeight = n * (x * t.q) * h;
    return t;
}

// Twice the drop of the log-likelihood from the saturated model's, at x = f d: the
// responses r against n p and the others n - r against n q, each part never negative.
inline double rowDeviance(double x, double r, double n) {
    const RowTerms t = rowTerms(x, r, n);
    return 2.0 * (devianceTerm(r, n * t.p, t.residual) + devianceTerm(n - r, n * t.q, -t.residual));
}

} // namespace titron::analysis::single_hit
