#include "shell/figure_text.h"

#include <cstdio>

#include "vocabulary/number_mask.h"

namespace titron::shell {

std::string printedNumber(const char* format, double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, value);
    return buffer;
}

std::string groupedOrFourDigits(double value) {
    return value >= 1000.0 ? vocabulary::formatMask(value, "###,###")
                           : printedNumber("%.4g", value);
}

} // namespace titron::shell
