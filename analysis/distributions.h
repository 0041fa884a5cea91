// The normal and chi-square distributions to full double precision, for the model's
// intervals, tests and plans. The report keeps its own approximations (tail_probability.h),
// whose figures it prints.
#pragma once

namespace titron::analysis {

// The z with P(Z > z) = tail for the standard normal Z, 0 < tail < 1: the quantile at
// 1 - tail. normalUpperQuantile((1 - L) / 2) is the z of a two-sided interval at level L.
double normalUpperQuantile(double tail);

// The two-sided p-value of z: P(|Z| >= |z|).
double normalTwoSidedP(double z);

// Upper tail P(X >= x) of chi-square with df > 0 degrees of freedom; 1 for x <= 0.
double chiSquareUpperTail(double x, double df);

} // namespace titron::analysis
