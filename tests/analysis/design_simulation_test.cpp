#include "analysis/design_simulation.h"

#include <gtest/gtest.h>

namespace titron::analysis {
namespace {

// Every figure below comes from a fixed seed, so a run gives the same counts each time:
// the bounds cannot flake. They are wide (four standard errors or more of the counts) so
// that they would hold for almost any seed, and catch a sampler or a count that is wrong.

TEST(DesignSimulationTest, BinomialDrawsAreExactAtTheEndsAndFairBetween) {
    std::mt19937_64 generator(7);
    EXPECT_EQ(drawBinomial(generator, 30, 0.0), 0);
    EXPECT_EQ(drawBinomial(generator, 30, 1.0), 30);
    EXPECT_EQ(drawBinomial(generator, 0, 0.5), 0);
    // Bin(20, 0.3): mean 6, variance 4.2; 20,000 draws put the mean within 0.015 (1 s.e.).
    double sum = 0.0;
    double squares = 0.0;
    constexpr int kDraws = 20000;
    for (int i = 0; i < kDraws; ++i) {
        const double drawn = static_cast<double>(drawBinomial(generator, 20, 0.3));
        sum += drawn;
        squares += drawn * drawn;
    }
    const double mean = sum / kDraws;
    EXPECT_NEAR(mean, 6.0, 0.075);
    EXPECT_NEAR(squares / kDraws - mean * mean, 4.2, 0.25);
}

TEST(DesignSimulationTest, ASeedRepeatsARunAndTheCountsAgreeWithTheModel) {
    const std::vector<PlannedDose> plan = {{4000, 24}, {8000, 24}, {16000, 24}, {32000, 24}};
    const SimulationOutcome first = simulateDesign(1.0 / 10000, plan, 0.95, 2000, 1);
    const SimulationOutcome again = simulateDesign(1.0 / 10000, plan, 0.95, 2000, 1);
    EXPECT_EQ(first.runs, 2000);
    EXPECT_EQ(first.covered, again.covered);
    EXPECT_EQ(first.noEstimate, again.noEstimate);
    EXPECT_NE(simulateDesign(1.0 / 10000, plan, 0.95, 2000, 2).covered, first.covered);
    // A well-designed assay: its chance of no estimate is below 1e-8, and its Wald interval
    // at 0.95 holds f in about 95% of the assays (s.e. 0.5% over 2,000 runs, so the bounds
    // are four of them away).
    EXPECT_EQ(first.noEstimate, 0);
    const double coverage = static_cast<double>(first.covered) / 2000.0;
    EXPECT_GE(coverage, 0.93);
    EXPECT_LE(coverage, 0.97);

    // Doses far too small: no response in 86.07% of the assays (s.e. 0.8%).
    const std::vector<PlannedDose> tooSmall = {{10, 5}, {20, 5}};
    const SimulationOutcome rare = simulateDesign(1.0 / 1000, tooSmall, 0.95, 2000, 1);
    EXPECT_NEAR(static_cast<double>(rare.noEstimate) / 2000.0,
                assessDesign(1.0 / 1000, tooSmall, 0.95).probabilityNone, 0.04);
}

} // namespace
} // namespace titron::analysis
