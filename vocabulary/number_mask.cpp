#include "vocabulary/number_mask.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

#include "vocabulary/decimal_digits.h"
#include "vocabulary/number_text.h"
#include "vocabulary/failure.h"

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

    // The magnitude as integer digits and fraction digits of its 15-significant-digit form.
    std::string intPart;
    std::string fraction;
    const double magnitude = std::fabs(value);
    if (magnitude != 0.0) {
        const auto [digits, exponent] = significantDigits(magnitude);
        if (exponent >= 0) {
            const auto intDigits = static_cast<std::size_t>(exponent) + 1;
            if (digits.size() <= intDigits) {
                intPart = digits;
                intPart.append(intDigits - digits.size(), '0');
            } else {
                intPart = digits.substr(0, intDigits);
                fraction = digits.substr(intDigits);
            }
        } else {
            fraction.assign(static_cast<std::size_t>(-exponent - 1), '0');
            fraction += digits;
        }
    }

    // Half away from zero on the decimal digits: the first digit dropped decides.
    bool roundUp = false;
    if (fraction.size() > shape.decimals) {
        roundUp = fraction[shape.decimals] >= '5';
        fraction.resize(shape.decimals);
    } else {
        fraction.append(shape.decimals - fraction.size(), '0');
    }
    if (roundUp) {
        std::string all = intPart + fraction;
        incrementDigits(all);
        intPart = all.substr(0, all.size() - shape.decimals);
        fraction = all.substr(all.size() - shape.decimals);
    }

    const std::size_t firstNonZero = intPart.find_first_not_of('0');
    intPart.erase(0, firstNonZero == std::string::npos ? intPart.size() : firstNonZero);
    if (intPart.size() < shape.minIntDigits) {
        intPart.insert(0, shape.minIntDigits - intPart.size(), '0');
    }

    std::string out = value < 0 ? "-" : "";
    if (shape.grouped) {
        for (std::size_t k = 0; k < intPart.size(); ++k) {
            if (k > 0 && (intPart.size() - k) % 3 == 0) {
                out += ',';
            }
            out += intPart[k];
        }
    } else {
        out += intPart;
    }
    if (shape.hasPoint) {
        out += '.';
        out += fraction;
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
