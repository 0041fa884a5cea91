// Tail probabilities of the standard normal and the chi-square distribution. Their
// constants fix the approximation, and the results are printed to four decimals and
// compared with 0.05 and 0.001, so the constants are part of the program's behaviour.
#pragma once

namespace titron::analysis {

// Two-tailed probability 2 (1 - Phi(z)) of the standard normal for z >= 0, by the
// polynomial approximation 26.2.17 of Abramowitz and Stegun (error about 1e-7 in Phi).
double normalTwoTail(double z);

// Upper tail P(X >= x) of chi-square with df >= 1 degrees of freedom, never above 1.
// Hill and Pike's series (CACM Algorithm 299) below 100 degrees of freedom, with a
// logarithmic path for x >= 50; the Wilson-Hilferty cube-root approximation from 100 on.
// x below 0 (a deviance that rounding left under 0) gives 1.
double chiSquareTail(double x, int df);

} // namespace titron::analysis
