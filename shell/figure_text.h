// Figures as the command line's texts for people write them, beside the report's masks.
#pragma once

#include <string>

namespace titron::shell {

// One number through a printf format such as "%.4g".
std::string printedNumber(const char* format, double value);

// A finite figure as the report writes frequencies from 1,000 on (whole, grouped by threes);
// below that with four significant digits, so that 0.8 or 1 in 2.5 keeps its meaning.
std::string groupedOrFourDigits(double value);

} // namespace titron::shell
