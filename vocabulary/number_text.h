// Conversions between numbers and text that the analysis, the reader and the messages
// rely on. Pure functions; the report's bytes depend on them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace titron::vocabulary {

// Strict reading of a cell's text: optional sign, decimal digits with an optional point
// (at least one digit), optional exponent (E, e, D or d, optional sign, digits). Commas
// between the digits before the point group them and are ignored. Anything else, and the
// empty text, throws Failure 13; a number beyond the range of a double throws Failure 6.
double strictNumber(std::string_view text);

// True when |a - b| < 1e-10, strictly.
bool nearlyEqual(double a, double b);

// Rounds v to the nearest whole number (a tie to the even one) and compares with
// nearlyEqual.
bool isWholeNumber(double v);

// The lenient leading value of a text, which never fails: blanks, Tabs and line feeds
// are skipped wherever they stand; an optional sign, digits, a point and an exponent with
// E or D are taken as far as they go; &H and &O announce hexadecimal and octal digits.
// The first other character ends the number; a text with no number gives 0. A value too
// large for a double gives an infinity of its sign.
double leadingValue(std::string_view text);

// The leading value of the text with its commas passed over as blanks too: the value a
// line starts with once its commas have become separators.
double leadingValueWithCommasAsBlanks(std::string_view text);

// Rounds to the nearest whole number, a tie to the even one, as a signed 32-bit number.
// Throws Failure 6 when the result is out of range (or v is not finite).
std::int32_t roundToInt32(double v);

// The general form of a number in messages: up to 15 significant digits, no trailing
// zeros, no point for a whole number, exponent form (1E+20, 1.5E-07) when the decimal
// exponent is 15 or more or below -4. -0 gives "0".
std::string generalNumber(double v);

} // namespace titron::vocabulary
