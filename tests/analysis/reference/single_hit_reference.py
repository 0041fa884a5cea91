#!/usr/bin/env python3
"""Reference values for tests/analysis/single_hit_model_test.cpp.

Computed with the standard library only, in 60-digit decimal arithmetic, by methods that
share nothing with the program's: every maximum-likelihood value is the root of its score
found by bisection (the log-likelihoods are concave), the free-slope fit by bisection on
the intercept's score nested inside bisection on the slope's profile score, and the
intervals and bounds by bisection on their defining equations. The printed numbers are
rounded to 17 significant digits. Run: python3 single_hit_reference.py
"""
from decimal import Decimal as D, getcontext

getcontext().prec = 60
ONE = D(1)


def terms(x, r, n):
    q = (-x).exp()
    if x < D("0.1"):  # 1 - exp(-x) by its series, free of cancellation
        p, term, k = D(0), x, 1
        while abs(term) > x * D(10) ** -58:
            p += term
            k += 1
            term = -term * x / k
    else:
        p = ONE - q
    return p, q


def loglik(table, b):
    f = b.exp()
    s = D(0)
    for d, r, n in table:
        x = f * d
        p, q = terms(x, r, n)
        if r > 0:
            s += r * p.ln()
        s -= (n - r) * x
    return s


def score_eta(x, r, n):
    p, q = terms(x, r, n)
    return (r - n * p) * x / p


def bisect(lo, hi, increasing_fn, iterations=220):
    """Root of a function negative at lo, positive at hi."""
    for _ in range(iterations):
        mid = (lo + hi) / 2
        if increasing_fn(mid) > 0:
            hi = mid
        else:
            lo = mid
    return (lo + hi) / 2


def fit(table):
    # score(b) decreases in b: find where it crosses 0.
    def negscore(b):
        f = b.exp()
        return -sum(score_eta(f * d, r, n) for d, r, n in table)
    return bisect(D(-60), D(30), negscore)


def fisher(table, b):
    f = b.exp()
    total = D(0)
    for d, r, n in table:
        x = f * d
        p, q = terms(x, r, n)
        total += n * x * x * q / p
    return total


def row_deviance(x, r, n):
    p, q = terms(x, r, n)
    half = D(0)
    if r > 0:
        half += r * (D(r) / n / p).ln()
    if r < n:
        half += (n - r) * (D(n - r) / n / q).ln()
    return 2 * half


def normal_upper_quantile(tail):
    # Bisection on the upper tail 0.5 erfc(z / sqrt 2), erfc by its series.
    def upper(z):
        # 1 - Phi(z) = 0.5 - (1/sqrt(2 pi)) sum_k (-1)^k z^(2k+1) / (2^k k! (2k+1))
        total, term, k = D(0), z, 0
        while True:
            add = term / (2 * k + 1)
            total += add
            if abs(add) < D(10) ** -58:
                break
            k += 1
            term = -term * z * z / (2 * k)
        pi = D("3.14159265358979323846264338327950288419716939937510582097494")
        return D("0.5") - total / (2 * pi).sqrt()
    return bisect(D(0), D(10), lambda z: tail - upper(z))


def show(name, value):
    print(f"{name} = {float(value)!r}")


def examine(label, table, level=D("0.95")):
    print(f"# {label}: {table}")
    z = normal_upper_quantile((1 - level) / 2)
    b = fit(table)
    info = fisher(table, b)
    se = 1 / info.sqrt()
    show("b", b)
    show("se_log", se)
    show("wald_lower", (b - z * se).exp())
    show("wald_upper", (b + z * se).exp())
    top = loglik(table, b)
    crit = z * z
    drop = lambda c: 2 * (top - loglik(table, c)) - crit
    show("lr_lower", bisect(b, b - 30, drop).exp())
    show("lr_upper", bisect(b, b + 30, drop).exp())
    f = b.exp()
    dev = sum(row_deviance(f * d, r, n) for d, r, n in table)
    pearson = D(0)
    for d, r, n in table:
        x = f * d
        p, q = terms(x, r, n)
        e = n * p
        res = (r - e) / (n * p * q).sqrt()
        dr = row_deviance(x, r, n).sqrt() * (1 if r >= e else -1)
        pearson += res * res
        print(f"  dose {d}: expected {float(e)!r} pearson {float(res)!r} deviance {float(dr)!r}")
    show("pearson", pearson)
    show("deviance", dev)
    return b, dev


def score_tests(table, b):
    f = b.exp()
    out = []
    for cov in ("log", "dose"):
        U = Iaa = Ixa = Ixx = D(0)
        for d, r, n in table:
            x = f * d
            p, q = terms(x, r, n)
            h = x / p
            w = n * h * x * q
            c = D(d).ln() if cov == "log" else D(d)
            U += (r - n * p) * h * c
            Iaa += w
            Ixa += w * c
            Ixx += w * c * c
        show(f"score_{cov}_z", U / (Ixx - Ixa * Ixa / Iaa).sqrt())


def slope_fit(table, single_hit_deviance):
    logs = [(D(d).ln(), r, n) for d, r, n in table]

    def a_of(beta):
        def neg(a):
            return -sum(score_eta((a + beta * t).exp(), r, n) for t, r, n in logs)
        return bisect(D(-120), D(120), neg, 150)

    def neg_profile(beta):
        a = a_of(beta)
        return -sum(score_eta((a + beta * t).exp(), r, n) * t for t, r, n in logs)

    beta = bisect(D(-8), D(8), neg_profile, 120)
    a = a_of(beta)
    saa = sat = stt = D(0)
    dev = D(0)
    for t, r, n in logs:
        x = (a + beta * t).exp()
        p, q = terms(x, r, n)
        w = n * x * x * q / p
        saa += w
        sat += w * t
        stt += w * t * t
        dev += row_deviance(x, r, n)
    se = (saa / (saa * stt - sat * sat)).sqrt()
    show("slope", beta)
    show("slope_se", se)
    show("slope_deviance", dev)
    show("slope_wald_z", (beta - 1) / se)
    drop = single_hit_deviance - dev
    show("slope_lr_z", drop.sqrt() * (1 if beta > 1 else -1))


def lower_bound(table, level=D("0.95")):
    target = (1 - level).ln()
    fn = lambda b: sum(n * (ONE - (-(b.exp() * d)).exp()).ln() for d, r, n in table) - target
    show("lower_bound", bisect(D(-60), D(30), fn).exp())


if __name__ == "__main__":
    spleen = [(1000, 2, 24), (3000, 6, 24), (10000, 14, 24), (30000, 22, 24)]
    b, dev = examine("four doses", spleen)
    score_tests(spleen, b)
    slope_fit(spleen, dev)
    steep = [(100, 0, 24), (1000, 12, 24), (10000, 24, 24)]
    b, dev = examine("steep", steep)
    score_tests(steep, b)
    slope_fit(steep, dev)
    b, dev = examine("four doses at 90%", spleen, D("0.90"))
    examine("single dose", [(100, 3, 10)])
    repeated = [(1000, 2, 24), (1000, 5, 24), (5000, 10, 12)]
    b, dev = examine("repeated doses", repeated)
    score_tests(repeated, b)
    slope_fit(repeated, dev)
    huge = [(2e9, 4, 20), (5e9, 12, 20), (1e10, 17, 20), (4e10, 20, 20)]
    b, dev = examine("huge doses", [(D(int(d)), r, n) for d, r, n in huge])
    score_tests([(D(int(d)), r, n) for d, r, n in huge], b)
    examine("p rounds to 1", [(1, 3, 10), (2, 6, 10), (200, 10, 10), (1000, 20, 20)])
    examine("doses below 1", [(D("0.001"), 5, 10), (D("0.002"), 8, 10)])
    examine("far from the start",
            [(20000000, 17, 20), (16000, 27, 35), (500, 27, 34), (140000, 1, 23)])
    lower_bound([(100, 3, 3), (1000, 2, 2)])
    lower_bound([(10**9, 5, 5), (3 * 10**9, 4, 4)])
