#!/usr/bin/env python3
"""Reference values for tests/analysis/group_comparison_test.cpp.

Standard library only, sharing no method with the program's: each fit is the root of the
score of the log-likelihood in b = ln f, found by bisection; se = 1 / sqrt(information);
deviances against the saturated model; the chi-square tail from the regularised upper
incomplete gamma function (series or continued fraction); z from statistics.NormalDist;
Holm and Benjamini-Hochberg written out from their definitions.
Run: python3 group_comparison_reference.py
"""
import math
from statistics import NormalDist


def score(b, table):
    f = math.exp(b)
    return sum(r * f * d * math.exp(-f * d) / -math.expm1(-f * d) - (n - r) * f * d
               for d, r, n in table)


def fit(table):
    lo, hi = -60.0, 10.0
    for _ in range(300):
        mid = (lo + hi) / 2
        lo, hi = (mid, hi) if score(mid, table) > 0 else (lo, mid)
    b = (lo + hi) / 2
    f = math.exp(b)
    info = sum(n * (f * d) ** 2 * math.exp(-f * d) / -math.expm1(-f * d) for d, r, n in table)
    deviance = 0.0
    for d, r, n in table:
        p = -math.expm1(-f * d)
        if r > 0:
            deviance += 2 * r * math.log(r / n / p)
        if r < n:
            deviance += 2 * (n - r) * (math.log((n - r) / n) + f * d)
    return b, 1 / math.sqrt(info), deviance


def chi_square_tail(x, df):
    a, y = df / 2, x / 2
    if y <= 0:
        return 1.0
    front = math.exp(-y + a * math.log(y) - math.lgamma(a))
    if y < a + 1:
        term = total = 1 / a
        k = a
        while abs(term) > 1e-18 * total:
            k += 1
            term *= y / k
            total += term
        return 1 - total * front
    tiny, b = 1e-300, y + 1 - a
    c, d = 1 / tiny, 1 / b
    h = d
    for i in range(1, 10000):
        an = -i * (i - a)
        b += 2
        d = an * d + b
        d = 1 / (d if abs(d) > tiny else tiny)
        c = b + an / c
        c = c if abs(c) > tiny else tiny
        h *= d * c
        if abs(d * c - 1) < 1e-16:
            break
    return front * h


def common_test(tables):
    pooled = [row for table in tables for row in table]
    x = max(0.0, fit(pooled)[2] - sum(fit(table)[2] for table in tables))
    return x, len(tables) - 1, chi_square_tail(x, len(tables) - 1)


def holm(p):
    order, out, running = sorted(range(len(p)), key=lambda i: p[i]), [0] * len(p), 0
    for k, i in enumerate(order):
        running = max(running, min(1, (len(p) - k) * p[i]))
        out[i] = running
    return out


def benjamini_hochberg(p):
    order, out, running = sorted(range(len(p)), key=lambda i: p[i]), [0] * len(p), 1
    for k in reversed(range(len(p))):
        running = min(running, len(p) / (k + 1) * p[order[k]])
        out[order[k]] = running
    return out


groups = [
    [(1000, 2, 24), (3000, 6, 24), (10000, 14, 24), (30000, 22, 24)],
    [(250, 1, 48), (500, 3, 48), (1000, 6, 48), (2000, 11, 48), (4000, 21, 48), (8000, 33, 48)],
    [(1000, 5, 24), (3000, 12, 24), (10000, 20, 24)],
    [(500, 1, 24), (2000, 4, 24), (8000, 12, 24)],
    [(1000, 3, 24), (3000, 7, 24), (10000, 13, 24), (30000, 21, 24)],
]
z = NormalDist().inv_cdf(0.975)
for table in groups:
    b, se, deviance = fit(table)
    print("group b %.17g se %.17g wald %.17g %.17g" % (b, se, math.exp(b - z * se),
                                                      math.exp(b + z * se)))
print("overall chi-square %.17g df %d p %.17g" % common_test(groups))
p = []
for i in range(len(groups)):
    for j in range(i + 1, len(groups)):
        (bi, si, _), (bj, sj, _) = fit(groups[i]), fit(groups[j])
        margin = z * math.sqrt(si * si + sj * sj)
        x, _, pair_p = common_test([groups[i], groups[j]])
        p.append(pair_p)
        print("pair %d/%d ratio %.17g wald %.17g %.17g chi-square %.17g p %.17g" % (
            i + 1, j + 1, math.exp(bi - bj), math.exp(bi - bj - margin),
            math.exp(bi - bj + margin), x, pair_p))
print("holm", " ".join("%.10g" % v for v in holm(p)))
print("bh", " ".join("%.10g" % v for v in benjamini_hochberg(p)))
print("equal frequencies: chi-square %.3g df %d p %.17g" % common_test([groups[0]] * 3))
print("no responses, upper bound %.17g" % (-math.log(0.05) / (100 * 24 + 300 * 24)))
