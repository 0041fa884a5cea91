// Number masks ("0.0000000", "###,###", "##0.00000", ...) and the long date form.
#pragma once

#include <string>
#include <string_view>

namespace titron::vocabulary {

// Formats value under a mask. The decimals are exactly those of the mask; rounding is half
// away from zero on the number's 15-significant-digit decimal form; before the point "0"
// forces a digit and "#" shows one only if there is one; the integer part is never cut;
// "," anywhere in the integer part groups it by threes; a negative number gets a leading
// minus sign; a mask of only "#" gives the empty text for a value that rounds to 0.
std::string formatMask(double value, std::string_view mask);

// The date under the mask "mmmm dd, yyyy": "November 03, 2026".
std::string formatLongDate(int year, int month, int day);

} // namespace titron::vocabulary
