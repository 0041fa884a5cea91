#include "shell/tsv_line.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace titron::shell {
namespace {

std::string printed(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

// The tsv's figures are those of printf's %.17g, byte for byte, whatever the value.
TEST(TsvLineTest, FiguresAreWrittenAsPrintfWritesThem) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    std::vector<double> values = {0.0,    -0.0,   0.1,          -9.3504,
                                  1e-300, 5e-324, 1e21,         123456789012345678.0,
                                  kInf,   -kInf,  std::nan(""), std::numeric_limits<double>::max()};
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);
    }
    for (const double value : values) {
        std::string text;
        appendFullPrecision(text, value);
        ASSERT_EQ(text, printed(value));
    }
}

} // namespace
} // namespace titron::shell
