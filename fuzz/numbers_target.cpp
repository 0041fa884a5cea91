// The number conversions and masks that the report's bytes depend on, checked against one
// another: a text the strict conversion takes has the same lenient leading value; the
// general form and every mask the program uses read back as the number they show.
#include <cmath>
#include <cstring>
#include <optional>
#include <string>

#include "fuzz/fuzz_bytes.h"
#include "fuzz/fuzz_targets.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"

namespace titron::fuzz {

namespace {

using vocabulary::Failure;
using vocabulary::strictNumber;

// Every mask the program formats numbers with: the report, the comparison and the failure
// box.
constexpr const char* kMasks[] = {"0.0000000", "###,###", "##0.00000", "##0.0000",
                                  "##0.000",   "#0.0000", "0.0000",    "#####"};

std::optional<double> strictOrNothing(std::string_view text) {
    try {
        return strictNumber(text);
    } catch (const Failure& failure) {
        check(failure.number() == vocabulary::failure::TypeMismatch ||
                  failure.number() == vocabulary::failure::Overflow,
              "the strict conversion failed with number " + std::to_string(failure.number()));
        return std::nullopt;
    }
}

// Fifteen significant digits of the largest numbers round above the largest double, so
// their shown text reads back as an overflow: "-1.79769313486232E+308" for -1.797...57E+308.
bool beyondFifteenDigitRange(double v) {
    return std::fabs(v) > 1.79769313486231e308;
}

std::string describe(double v) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.17g", v);
    return buffer;
}

void checkGeneralForm(double v) {
    const std::string text = vocabulary::generalNumber(v);
    const std::optional<double> back = strictOrNothing(text);
    if (!back && beyondFifteenDigitRange(v)) {
        return;
    }
    check(back.has_value(), "the general form " + text + " of " + describe(v) + " is no number");
    // Fifteen significant digits: within a few parts in 1e15 of the value.
    check(std::fabs(*back - v) <= std::fabs(v) * 1e-14,
          "the general form " + text + " reads back far from " + describe(v));
}

void checkMask(double v, const char* mask) {
    const std::string text = vocabulary::formatMask(v, mask);
    const char* point = std::strchr(mask, '.');
    const int decimals = point ? static_cast<int>(std::strlen(point + 1)) : 0;
    const bool forcedDigit = std::strchr(mask, '0') != nullptr;
    if (text.empty() || text == "-") {
        // Only a mask of "#" alone leaves out a value that rounds to nothing.
        check(!forcedDigit && std::fabs(v) < 0.5 + std::fabs(v) * 1e-14,
              "mask " + std::string(mask) + " gives '" + text + "' for " + describe(v));
        return;
    }
    const std::optional<double> back = strictOrNothing(text);
    if (!back && beyondFifteenDigitRange(v)) {
        return;
    }
    check(back.has_value(), "mask " + std::string(mask) + " gives the non-number " + text);
    // Rounded to the mask's decimals from the 15-digit form of the value.
    const double tolerance = 0.5 * std::pow(10.0, -decimals) + std::fabs(v) * 1e-14;
    check(std::fabs(*back - v) <= tolerance,
          "mask " + std::string(mask) + " shows " + describe(v) + " as " + text);
}

void checkValue(double v) {
    if (!std::isfinite(v)) {
        return; // no figure the program shows is infinite: the checked arithmetic stops it
    }
    checkGeneralForm(v);
    for (const char* mask : kMasks) {
        checkMask(v, mask);
    }
    try {
        const std::int32_t r = vocabulary::roundToInt32(v);
        check(std::fabs(static_cast<double>(r) - v) <= 0.5, "rounding " + describe(v) + " missed");
    } catch (const Failure& failure) {
        check(failure.number() == vocabulary::failure::Overflow && std::fabs(v) >= 2147483647.5,
              "rounding " + describe(v) + " to a whole number failed");
    }
}

} // namespace

void numberTexts(std::string_view bytes) {
    FuzzBytes in(bytes);
    // Some inputs start with the bits of a double to format.
    if (in.byte() & 1) {
        double v = 0;
        for (std::size_t i = 0; i < sizeof v; ++i) {
            const std::uint8_t b = in.byte();
            std::memcpy(reinterpret_cast<char*>(&v) + i, &b, 1);
        }
        checkValue(v);
    }
    const std::string_view text = in.rest();
    const double leading = vocabulary::leadingValue(text);
    check(!std::isnan(leading), "the leading value of a text is no number");

    const std::optional<double> strict = strictOrNothing(text);
    if (strict) {
        check(std::isfinite(*strict), "the strict conversion gave an infinity");
        if (text.find(',') == std::string_view::npos) {
            check(leading == *strict, "strict " + describe(*strict) + " and leading value " +
                                          describe(leading) + " differ");
        }
        checkValue(*strict);
    }
}

} // namespace titron::fuzz
