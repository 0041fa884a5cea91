#include "analysis/tail_probability.h"

#include <gtest/gtest.h>

namespace titron::analysis {
namespace {

// Reference values: the worked figures of the chi-square and normal tails that the
// program's reports have always printed (four decimals), and standard tables.
TEST(NormalTwoTailTest, MatchesTheNormalTableWithinTheApproximationsError) {
    EXPECT_NEAR(normalTwoTail(0.0), 1.0, 1e-8);
    EXPECT_NEAR(normalTwoTail(1.96), 0.05, 1e-4);
    EXPECT_NEAR(normalTwoTail(2.5758), 0.01, 1e-5);
    EXPECT_NEAR(normalTwoTail(40.0), 0.0, 1e-300);
}

TEST(ChiSquareTailTest, SmallDegreesOfFreedomNearTheFivePercentPoints) {
    EXPECT_NEAR(chiSquareTail(3.84, 1), 0.05004, 5e-6);
    EXPECT_NEAR(chiSquareTail(5.99, 2), 0.05004, 5e-6);
    EXPECT_NEAR(chiSquareTail(7.81, 3), 0.05011, 5e-6);
    EXPECT_NEAR(chiSquareTail(9.49, 4), 0.04995, 5e-6);
}

TEST(ChiSquareTailTest, LargeDegreesOfFreedomTakeTheCubeRootBranchFrom100On) {
    EXPECT_NEAR(chiSquareTail(124.34, 100), 0.049997, 5e-7);
    // 99 degrees of freedom still take the series: its value differs from the cube-root
    // approximation's in the sixth decimal.
    const double series = chiSquareTail(123.225, 99);
    EXPECT_NEAR(series, 0.05, 1e-3);
    EXPECT_GT(chiSquareTail(10.0, 100), 0.999);
}

TEST(ChiSquareTailTest, LogarithmicPathFromFiftyOn) {
    EXPECT_NEAR(chiSquareTail(60.0, 25), 0.00010, 5e-6);
    EXPECT_NEAR(chiSquareTail(60.0, 26), 0.00017, 5e-6);
    // Both sides of the threshold agree closely, so the switch leaves no visible step.
    EXPECT_NEAR(chiSquareTail(49.999999, 30), chiSquareTail(50.0, 30), 1e-6);
}

TEST(ChiSquareTailTest, NegativeStatisticGivesOneAndResultsNeverExceedOne) {
    EXPECT_EQ(chiSquareTail(-1.0, 5), 1.0);
    EXPECT_EQ(chiSquareTail(-1e-15, 3), 1.0);
    for (int df = 1; df < 120; df += 7) {
        EXPECT_LE(chiSquareTail(1e-12, df), 1.0) << df;
    }
    EXPECT_NEAR(chiSquareTail(1e-15, 1), 1.0, 1e-6);
}

} // namespace
} // namespace titron::analysis
