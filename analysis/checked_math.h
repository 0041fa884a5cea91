// Arithmetic that fails the way the analysis reports failures: a result out of range or
// an undefined operation throws vocabulary::Failure with its failure number instead of
// producing an infinity or a NaN that would print as a figure.
#pragma once

namespace titron::analysis::checked {

// Throws Failure 6 (overflow) unless x is finite; returns x.
double finite(double x);
// exp(x); Failure 6 when the result overflows. Underflow to 0 is not a failure.
double exp(double x);
// ln(x); Failure 5 when x is not positive.
double log(double x);
// sqrt(x); Failure 5 when x is negative.
double sqrt(double x);
// a / b; Failure 6 for 0 / 0, Failure 11 for another number divided by 0, Failure 6 when
// the quotient overflows.
double divide(double a, double b);
// base raised to power; Failure 5 for a negative base with a fractional power, Failure 6
// on overflow.
double pow(double base, double power);

} // namespace titron::analysis::checked
