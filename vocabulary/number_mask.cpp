#include "vocabulary/number_mask.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

#include "vocabulary/decimal_digits.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_text.h"

namespace titron::vocabulary {

namespace {

using vocabulary::Failure;

// What a mask asks for: the digits that must stand before the point, whether the integer
// part is grouped, and the decimals.
struct MaskShape {
    std::size_t minIntDigits = 0;
    bool grouped = false;
    bool hasPoint = false;
    std::size_t decimals = 0;
};

// Mask grammar: [#0,]* then optionally "." and [0#]*. A "0" before the point forces a digit
// at its place and at every place to its right.
MaskShape parseMask(std::string_view mask) {
    MaskShape shape;
    std::size_t i = 0;
    std::size_t placesFromFirstZero = 0;
    bool zeroSeen = false;
    for (; i < mask.size() && mask[i] != '.'; ++i) {
        const char c = mask[i];
        if (c == ',') {
            shape.grouped = true;
        } else if (c == '#' || c == '0') {
            zeroSeen = zeroSeen || c == '0';
            if (zeroSeen) {
                ++placesFromFirstZero;
            }
        } else {
            throw Failure(failure::InvalidCall);
        }
    }
    shape.minIntDigits = placesFromFirstZero;
    if (i < mask.size()) {
        shape.hasPoint = true;
        for (++i; i < mask.size(); ++i) {
            if (mask[i] != '0' && mask[i] != '#') {
                throw Failure(failure::InvalidCall);
            }
            ++shape.decimals;
        }
    }
    return shape;
}

// Adds one unit in the last place of a string of decimal digits; "" + 1 gives "1".
void incrementDigits(std::string& digits) {
    for (std::size_t k = digits.size(); k-- > 0;) {
        if (digits[k] != '9') {
            ++digits[k];
            return;
        }
        digits[k] = '0';
    }
    digits.insert(digits.begin(), '1');
}

} // namespace

std::string formatMask(double value, std::string_view mask) {
    const MaskShape shape = parseMask(mask);
    if (!std::isfinite(value)) {
        return generalNumber(value);
    }

    // The magnitude's 15-significant-digit form as one run of digits, the first intLength
    // of them before the point: "1234.5" is "123450000000000" with 4.
    std::string digits;
    std::size_t intLength = 0;
    const double magnitude = std::fabs(value);
    if (magnitude != 0.0) {
        const SignificantDigits form = significantDigits(magnitude);
        if (form.exponent >= 0) {
            intLength = static_cast<std::size_t>(form.exponent) + 1;
            digits = form.digits;
            if (digits.size() < intLength) {
                digits.append(intLength - digits.size(), '0');
            }
        } else {
            digits.assign(static_cast<std::size_t>(-form.exponent - 1), '0');
            digits += form.digits;
        }
    }

    // Exactly the mask's decimals, half away from zero: the first digit dropped decides.
    const std::size_t keep = intLength + shape.decimals;
    bool roundUp = false;
    if (digits.size() > keep) {
        roundUp = digits[keep] >= '5';
        digits.resize(keep);
    } else {
        digits.append(keep - digits.size(), '0');
    }
    if (roundUp) {
        incrementDigits(digits);
        intLength = digits.size() - shape.decimals;
    }

    const std::size_t leadingZeros = std::min(digits.find_first_not_of('0'), intLength);
    digits.erase(0, leadingZeros);
    intLength -= leadingZeros;
    if (intLength < shape.minIntDigits) {
        digits.insert(0, shape.minIntDigits - intLength, '0');
        intLength = shape.minIntDigits;
    }

    std::string out;
    out.reserve(digits.size() + intLength / 3 + 2);
    if (value < 0) {
        out += '-';
    }
    for (std::size_t k = 0; k < intLength; ++k) {
        if (shape.grouped && k > 0 && (intLength - k) % 3 == 0) {
            out += ',';
        }
        out += digits[k];
    }
    if (shape.hasPoint) {
        out += '.';
        out.append(digits, intLength);
    }
    return out;
}

std::string formatLongDate(int year, int month, int day) {
    static constexpr std::array<const char*, 12> monthNames = {
        "January", "February", "March",     "April",   "May",      "June",
        "July",    "August",   "September", "October", "November", "December"};
    if (month < 1 || month > 12) {
        throw Failure(failure::InvalidCall);
    }
    std::string out = monthNames[static_cast<std::size_t>(month - 1)];
    out += ' ';
    if (day >= 0 && day < 10) {
        out += '0';
    }
    out += std::to_string(day);
    out += ", ";
    const std::string yearText = std::to_string(year);
    if (year >= 0 && yearText.size() < 4) {
        out.append(4 - yearText.size(), '0');
    }
    out += yearText;
    return out;
}

} // namespace titron::vocabulary
