#include "analysis/distributions.h"

#include <cmath>

#include <gtest/gtest.h>

namespace titron::analysis {
namespace {

// Reference values from published tables of the normal and chi-square distributions,
// quoted to the digits given there.
TEST(DistributionsTest, NormalQuantilesAndTailsAgreeWithTables) {
    EXPECT_NEAR(normalUpperQuantile(0.025), 1.959963984540054, 1e-14);
    EXPECT_NEAR(normalUpperQuantile(0.005), 2.5758293035489004, 1e-14);
    EXPECT_NEAR(normalUpperQuantile(0.05), 1.6448536269514722, 1e-14);
    EXPECT_NEAR(normalUpperQuantile(1e-10), 6.361340902404056, 1e-12);
    EXPECT_NEAR(normalUpperQuantile(0.975), -1.959963984540054, 1e-14);
    EXPECT_EQ(normalUpperQuantile(0.5), 0.0);
    EXPECT_NEAR(normalTwoSidedP(1.959963984540054), 0.05, 1e-16);
    EXPECT_NEAR(normalTwoSidedP(-3.0), 0.0026997960632601866, 1e-17);
    // Far in the tail the p-value keeps its relative precision.
    EXPECT_NEAR(normalTwoSidedP(10.0) / 1.5239706048321052e-23, 1.0, 1e-13);
}

TEST(DistributionsTest, ChiSquareTailsAgreeWithTables) {
    EXPECT_NEAR(chiSquareUpperTail(3.841458820694124, 1), 0.05, 1e-15);
    EXPECT_NEAR(chiSquareUpperTail(18.307038053275146, 10), 0.05, 1e-15);
    EXPECT_NEAR(chiSquareUpperTail(2.0, 2), 0.36787944117144233, 1e-15); // e^-1
    EXPECT_NEAR(chiSquareUpperTail(124.34211340400407, 100), 0.05, 1e-13);
    // Three degrees of freedom in closed form: erfc(sqrt(x/2)) + sqrt(2x/pi) exp(-x/2).
    for (const double x : {0.5, 3.0, 7.8147279032511765, 30.0}) {
        const double closed =
            std::erfc(std::sqrt(x / 2)) + std::sqrt(2 * x / M_PI) * std::exp(-x / 2);
        EXPECT_NEAR(chiSquareUpperTail(x, 3) / closed, 1.0, 1e-13) << x;
    }
    EXPECT_NEAR(chiSquareUpperTail(100.0, 1) / 1.5239706048321052e-23, 1.0, 1e-12);
    EXPECT_EQ(chiSquareUpperTail(0.0, 4), 1.0);
    EXPECT_EQ(chiSquareUpperTail(-1e-12, 4), 1.0);
}

} // namespace
} // namespace titron::analysis
