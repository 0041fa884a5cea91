#include "analysis/assay_design.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/single_hit_model.h"

namespace titron::analysis {
namespace {

// Reference figures from a separate Python computation with the standard library only:
// z = statistics.NormalDist().inv_cdf(0.975); for each dose x = f d, q = math.exp(-x),
// p = 1 - q (math.expm1 below x = 0.5); I = sum n x^2 q / p; se = 1 / math.sqrt(I);
// ratio = math.exp(2 z se); none = math.exp(-sum x n); all = math.exp(sum n math.log(p)).
void expectRelative(double actual, double expected) {
    EXPECT_NEAR(actual / expected, 1.0, 1e-12) << actual << " against " << expected;
}

TEST(AssayDesignTest, OneAndThreeDosePlansAgreeWithAnIndependentComputation) {
    const DesignFigures one = assessDesign(1.0 / 1000, {{1000, 50}}, 0.95);
    ASSERT_EQ(one.expectedResponses.size(), 1u);
    expectRelative(one.expectedResponses[0], 31.606027941427882);
    expectRelative(one.seLog, 0.18537970916252108);
    expectRelative(one.intervalRatio, 2.0681926435856886);
    expectRelative(one.probabilityNone, 1.9287498479639178e-22);
    expectRelative(one.probabilityAll, 1.0964675130618918e-10);

    const DesignFigures three =
        assessDesign(1.0 / 10000, {{5000, 10}, {10000, 20}, {20000, 30}}, 0.95);
    ASSERT_EQ(three.expectedResponses.size(), 3u);
    expectRelative(three.expectedResponses[0], 3.9346934028736658);
    expectRelative(three.expectedResponses[1], 12.642411176571153);
    expectRelative(three.expectedResponses[2], 25.93994150290162);
    expectRelative(three.information, 34.2753864736884);
    expectRelative(three.seLog, 0.17080824080327378);
    expectRelative(three.intervalRatio, 1.9533698327884734);
    expectRelative(three.probabilityNone, 1.2160992992528256e-37);
    expectRelative(three.probabilityAll, 1.1763577241945722e-10);
    // Another level changes only the ratio: exp(2 z se) with z = 2.5758293035489004 at 0.99.
    expectRelative(assessDesign(1.0 / 1000, {{1000, 50}}, 0.99).intervalRatio,
                   std::exp(2 * 2.5758293035489004 * 0.18537970916252108));
}

TEST(AssayDesignTest, PlanAtAFittedProportionHasTheFitsStandardError) {
    // The fit's S.E. is the expected information at its estimate, so a plan of the same
    // rows at that proportion must give the same figure.
    const AssayTable rows = {{1000, 2, 24}, {3000, 6, 24}, {10000, 14, 24}, {30000, 22, 24}};
    const std::optional<SingleHitFit> fit = fitSingleHit(rows);
    ASSERT_TRUE(fit);
    std::vector<PlannedDose> plan;
    for (const AssayRow& row : rows) {
        plan.push_back({row.dose, row.tested});
    }
    expectRelative(assessDesign(fit->proportion, plan, 0.95).seLog, fit->seLog);
}

TEST(AssayDesignTest, ChancesOfNoEstimateWhenTheyAreLargeOrNearlyOne) {
    // Doses far too small: most assays see no response at all.
    const DesignFigures tooSmall = assessDesign(1.0 / 1000, {{10, 5}, {20, 5}}, 0.95);
    expectRelative(tooSmall.probabilityNone, 0.8607079764250578);
    // Doses far too large: most assays respond in every test.
    const DesignFigures tooLarge = assessDesign(1.0 / 1000, {{5000, 3}, {10000, 3}}, 0.95);
    expectRelative(tooLarge.probabilityAll, 0.9797885937718068);
    // A billion tests at f d = 40: 1 - p = 4.2e-18 is lost in p itself, but not in ln p,
    // so the chance that all respond stays below 1 by 1e9 (1 - p).
    const DesignFigures nearlyOne = assessDesign(1.0, {{40, 1e9}}, 0.95);
    EXPECT_NEAR((1.0 - nearlyOne.probabilityAll) / 4.2483542462673324e-09, 1.0, 1e-6);
    // At f d = 1e-6, p = 1e-6 - 5e-13 + ... keeps all its digits (p^2 from the series).
    expectRelative(assessDesign(1.0, {{1e-6, 2}}, 0.95).probabilityAll, 9.999990000005834e-13);
    // Doses so large that no test can fail tell nothing: no standard error, no ratio.
    const DesignFigures nothing = assessDesign(1.0, {{1e6, 10}}, 0.95);
    EXPECT_EQ(nothing.information, 0.0);
    EXPECT_TRUE(std::isinf(nothing.seLog));
    EXPECT_EQ(nothing.probabilityAll, 1.0);
}

TEST(AssayDesignTest, MostInformativeDoseIsNearOnePointSix) {
    const double best = mostInformativeFd();
    EXPECT_NEAR(best, 1.5936242600400403, 1e-14);
    EXPECT_NEAR(informationPerTest(best), 0.6476102378919147, 1e-14);
    EXPECT_EQ(informationPerTest(0.0), 0.0);
    EXPECT_EQ(informationPerTest(1e6), 0.0);
}

TEST(AssayDesignTest, ProposedSeriesAndFewestTestsForATargetRatio) {
    EXPECT_EQ(proposeDoses(1.0 / 10000), (std::vector<double>{4000, 8000, 16000, 32000}));
    // 1.594 x 37 = 58.96, rounded to 59.
    EXPECT_EQ(proposeDoses(1.0 / 37), (std::vector<double>{14.75, 29.5, 59, 118}));
    // 1.594 / 2 = 0.797, rounded to 0.80 and carried without a stray last digit.
    EXPECT_EQ(proposeDoses(2.0), (std::vector<double>{0.2, 0.4, 0.8, 1.6}));

    // Python: 4 z^2 / (S ln(2)^2) = 16.57 with S = 1.9302839741949849; 16 tests per dose give
    // the ratio 2.0246, 17 give 1.9824.
    const std::vector<double> doses = proposeDoses(1.0 / 10000);
    EXPECT_EQ(fewestTestsPerDose(1.0 / 10000, doses, 0.95, 2.0), 17.0);
    EXPECT_EQ(fewestTestsPerDose(1.0 / 10000, doses, 0.95, 2.0245), 17.0);
    EXPECT_EQ(fewestTestsPerDose(1.0 / 10000, doses, 0.95, 2.0246), 16.0);
    EXPECT_EQ(fewestTestsPerDose(1.0 / 10000, doses, 0.95, 1000.0), 1.0);
    EXPECT_EQ(fewestTestsPerDose(1.0, {1e6}, 0.95, 2.0), std::nullopt);
    EXPECT_EQ(fewestTestsPerDose(1.0 / 10000, doses, 0.95, 1.0000001), std::nullopt);
}

} // namespace
} // namespace titron::analysis
