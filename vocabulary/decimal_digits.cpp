#include "vocabulary/decimal_digits.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace titron::vocabulary {

SignificantDigits significantDigits(double v) {
    char buffer[40];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(v),
                                      std::chars_format::scientific, 14);
    // "d.dddddddddddddde+xx"
    const std::string_view sci(buffer, static_cast<std::size_t>(result.ptr - buffer));
    const std::size_t ePos = sci.find('e');
    SignificantDigits parts;
    parts.digits += sci[0];
    parts.digits.append(sci.substr(2, ePos - 2));
    const std::string_view expText = sci.substr(ePos + 1);
    std::from_chars(expText.data() + (expText[0] == '+' ? 1 : 0), expText.data() + expText.size(),
                    parts.exponent);
    return parts;
}

} // namespace titron::vocabulary
