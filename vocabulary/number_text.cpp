#include "vocabulary/number_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>

#include "vocabulary/decimal_digits.h"
#include "vocabulary/failure.h"

namespace titron::vocabulary {

namespace {

using vocabulary::Failure;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// A decimal number taken apart: mantissa digits with at most one point (at least one
// digit), and the exponent, held at +/-1e8 so that it cannot overflow; any exponent that
// large is far beyond the range of a double anyway.
struct DecimalParts {
    std::string mantissa;
    long long exponent = 0;
    bool negative = false;
};

constexpr long long exponentLimit = 100'000'000;

void addExponentDigit(long long& exponent, char digit) {
    if (exponent < exponentLimit) {
        exponent = exponent * 10 + (digit - '0');
    }
}

// The decimal order of the number: 1 for 1..9.99, 0 for 0.1..0.999, so that a value of 1
// or more has an order above 0. A zero mantissa gives the lowest order.
long long leadingMagnitude(const DecimalParts& parts) {
    const std::string& m = parts.mantissa;
    const std::size_t point = m.find('.');
    const std::size_t intEnd = point == std::string::npos ? m.size() : point;
    const std::size_t first = m.find_first_of("123456789");
    if (first == std::string::npos) {
        return std::numeric_limits<long long>::min();
    }
    const long long place = first < intEnd ? static_cast<long long>(intEnd - first)
                                           : -static_cast<long long>(first - intEnd - 1);
    return place + parts.exponent;
}

// Converts with C semantics, whatever the process locale. Beyond the range of a double
// gives an infinity of the sign, below the smallest denormal a zero of the sign.
double toDouble(const DecimalParts& parts) {
    std::string clean = parts.mantissa;
    if (clean.front() == '.') {
        clean.insert(clean.begin(), '0');
    }
    if (clean.back() == '.') {
        clean.pop_back();
    }
    clean += 'e';
    clean += std::to_string(parts.exponent);

    double value = 0.0;
    const auto [ptr, ec] = std::from_chars(clean.data(), clean.data() + clean.size(), value);
    if (ec == std::errc::result_out_of_range) {
        value = leadingMagnitude(parts) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return parts.negative ? -value : value;
}

double roundHalfEven(double v) {
    double r = std::round(v); // ties away from zero; fixed below
    if (std::fabs(v - std::trunc(v)) == 0.5) {
        r = 2.0 * std::round(v / 2.0);
    }
    return r;
}

// Hexadecimal or octal digits as the value they stand for: up to 0xFFFF a signed 16-bit
// number, up to 0xFFFFFFFF a signed 32-bit one, beyond that too large (+infinity).
double radixValue(std::string_view digits, unsigned radix) {
    unsigned long long value = 0;
    for (const char c : digits) {
        unsigned d = 0;
        if (isDigit(c)) {
            d = static_cast<unsigned>(c - '0');
        } else if (c >= 'a' && c <= 'f') {
            d = static_cast<unsigned>(c - 'a' + 10);
        } else if (c >= 'A' && c <= 'F') {
            d = static_cast<unsigned>(c - 'A' + 10);
        } else {
            break;
        }
        if (d >= radix) {
            break;
        }
        value = value * radix + d;
        if (value > 0xFFFFFFFFull) {
            return std::numeric_limits<double>::infinity();
        }
    }
    if (value <= 0xFFFFull) {
        return value >= 0x8000ull ? static_cast<double>(value) - 65536.0
                                  : static_cast<double>(value);
    }
    return value >= 0x80000000ull ? static_cast<double>(value) - 4294967296.0
                                  : static_cast<double>(value);
}

} // namespace

double strictNumber(std::string_view text) {
    DecimalParts parts;
    std::size_t i = 0;
    const std::size_t n = text.size();
    if (i < n && (text[i] == '+' || text[i] == '-')) {
        parts.negative = text[i] == '-';
        ++i;
    }
    bool anyDigit = false;
    // Integer digits; a comma groups them once a digit has been seen.
    for (; i < n; ++i) {
        if (isDigit(text[i])) {
            parts.mantissa += text[i];
            anyDigit = true;
        } else if (text[i] != ',' || !anyDigit) {
            break;
        }
    }
    if (i < n && text[i] == '.') {
        parts.mantissa += '.';
        for (++i; i < n && isDigit(text[i]); ++i) {
            parts.mantissa += text[i];
            anyDigit = true;
        }
    }
    if (!anyDigit) {
        throw Failure(failure::TypeMismatch);
    }
    if (i < n && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
        ++i;
        bool negativeExponent = false;
        if (i < n && (text[i] == '+' || text[i] == '-')) {
            negativeExponent = text[i] == '-';
            ++i;
        }
        if (i == n || !isDigit(text[i])) {
            throw Failure(failure::TypeMismatch);
        }
        for (; i < n && isDigit(text[i]); ++i) {
            addExponentDigit(parts.exponent, text[i]);
        }
        if (negativeExponent) {
            parts.exponent = -parts.exponent;
        }
    }
    if (i != n) {
        throw Failure(failure::TypeMismatch);
    }
    const double value = toDouble(parts);
    if (std::isinf(value)) {
        throw Failure(failure::Overflow);
    }
    return value;
}

bool nearlyEqual(double a, double b) {
    return std::fabs(a - b) < 1e-10;
}

bool isWholeNumber(double v) {
    return nearlyEqual(v, roundHalfEven(v));
}

namespace {

// A text as the leading value reads it: its blanks passed over wherever they stand, one
// character at a time, so that a long text is never copied to drop them.
class NonBlankReader {
  public:
    NonBlankReader(std::string_view text, bool commasAreBlanks)
        : m_text(text), m_commasAreBlanks(commasAreBlanks) {
        skipBlanks();
    }
    bool atEnd() const { return m_pos >= m_text.size(); }
    char peek() const { return m_text[m_pos]; }
    bool peekIs(char c) const { return !atEnd() && peek() == c; }
    void next() {
        ++m_pos;
        skipBlanks();
    }

  private:
    void skipBlanks() {
        while (m_pos < m_text.size() && isBlank(m_text[m_pos])) {
            ++m_pos;
        }
    }
    bool isBlank(char c) const {
        return c == ' ' || c == '\t' || c == '\n' || (m_commasAreBlanks && c == ',');
    }

    std::string_view m_text;
    bool m_commasAreBlanks;
    std::size_t m_pos = 0;
};

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

double readLeadingValue(NonBlankReader in) {
    if (in.peekIs('&')) {
        NonBlankReader radix = in;
        radix.next();
        if (!radix.atEnd()) {
            const char kind = radix.peek();
            radix.next();
            if (kind != 'H' && kind != 'h' && kind != 'O' && kind != 'o') {
                return 0.0;
            }
            // The digits up to the first character that is no digit at all.
            std::string digits;
            for (; !radix.atEnd() && isHexDigit(radix.peek()); radix.next()) {
                digits += radix.peek();
            }
            return radixValue(digits, kind == 'H' || kind == 'h' ? 16 : 8);
        }
    }

    DecimalParts parts;
    if (in.peekIs('+') || in.peekIs('-')) {
        parts.negative = in.peek() == '-';
        in.next();
    }
    bool anyDigit = false;
    for (; !in.atEnd() && isDigit(in.peek()); in.next()) {
        parts.mantissa += in.peek();
        anyDigit = true;
    }
    if (in.peekIs('.')) {
        parts.mantissa += '.';
        for (in.next(); !in.atEnd() && isDigit(in.peek()); in.next()) {
            parts.mantissa += in.peek();
            anyDigit = true;
        }
    }
    if (!anyDigit) {
        return 0.0;
    }
    // An exponent counts only with at least one digit: "1e" and "1e+" are 1.
    if (!in.atEnd() &&
        (in.peek() == 'E' || in.peek() == 'e' || in.peek() == 'D' || in.peek() == 'd')) {
        in.next();
        bool negativeExponent = false;
        if (in.peekIs('+') || in.peekIs('-')) {
            negativeExponent = in.peek() == '-';
            in.next();
        }
        for (; !in.atEnd() && isDigit(in.peek()); in.next()) {
            addExponentDigit(parts.exponent, in.peek());
        }
        if (negativeExponent) {
            parts.exponent = -parts.exponent;
        }
    }
    return toDouble(parts);
}

} // namespace

double leadingValue(std::string_view text) {
    return readLeadingValue(NonBlankReader(text, false));
}

double leadingValueWithCommasAsBlanks(std::string_view text) {
    return readLeadingValue(NonBlankReader(text, true));
}

std::int32_t roundToInt32(double v) {
    if (!std::isfinite(v)) {
        throw Failure(failure::Overflow);
    }
    const double r = roundHalfEven(v);
    if (r < -2147483648.0 || r > 2147483647.0) {
        throw Failure(failure::Overflow);
    }
    return static_cast<std::int32_t>(r);
}

std::string generalNumber(double v) {
    if (std::isnan(v)) {
        return "NaN";
    }
    if (std::isinf(v)) {
        return v > 0 ? "Infinity" : "-Infinity";
    }
    if (v == 0.0) {
        return "0";
    }

    auto [digits, exponent] = significantDigits(v);
    while (digits.size() > 1 && digits.back() == '0') {
        digits.pop_back();
    }

    std::string out = v < 0 ? "-" : "";
    if (exponent >= 15 || exponent < -4) {
        out += digits[0];
        if (digits.size() > 1) {
            out += '.';
            out.append(digits, 1);
        }
        out += exponent < 0 ? "E-" : "E+";
        const std::string magnitude = std::to_string(std::abs(exponent));
        if (magnitude.size() < 2) {
            out += '0';
        }
        out += magnitude;
    } else if (exponent >= 0) {
        const auto intDigits = static_cast<std::size_t>(exponent) + 1;
        if (digits.size() <= intDigits) {
            out += digits;
            out.append(intDigits - digits.size(), '0');
        } else {
            out.append(digits, 0, intDigits);
            out += '.';
            out.append(digits, intDigits);
        }
    } else {
        out += "0.";
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += digits;
    }
    return out;
}

} // namespace titron::vocabulary
