#pragma once

#include <string>

namespace titron::vocabulary {

// The decimal form that numbers are shown from: 15 significant digits.
struct SignificantDigits {
    std::string digits; // exactly 15 digits, the first not 0
    int exponent = 0;   // the value is d.dddddddddddddd times 10 to this power
};

// The 15 significant digits of |v|, for a finite v other than 0, rounded to nearest;
// independent of the locale.
SignificantDigits significantDigits(double v);

} // namespace titron::vocabulary
