#include "analysis/group_comparison.h"

#include <gtest/gtest.h>

#include "analysis/p_value_adjustment.h"

namespace titron::analysis {
namespace {

// Expected values from tests/analysis/reference/group_comparison_reference.py (standard
// library only): each b the root of its score found by bisection, se = 1 / sqrt(information),
// deviances against the saturated model, the chi-square tail from the regularised incomplete
// gamma function, z from statistics.NormalDist, Holm and Benjamini-Hochberg written out from
// their definitions.

const AssayTable kSpleen{{1000, 2, 24}, {3000, 6, 24}, {10000, 14, 24}, {30000, 22, 24}};
const AssayTable kLymph{{250, 1, 48},   {500, 3, 48},   {1000, 6, 48},
                        {2000, 11, 48}, {4000, 21, 48}, {8000, 33, 48}};
const AssayTable kThird{{1000, 5, 24}, {3000, 12, 24}, {10000, 20, 24}};
const AssayTable kFourth{{500, 1, 24}, {2000, 4, 24}, {8000, 12, 24}};
const AssayTable kFifth{{1000, 3, 24}, {3000, 7, 24}, {10000, 13, 24}, {30000, 21, 24}};
const AssayTable kNoResponses{{100, 0, 24}, {300, 0, 24}};

TEST(PValueAdjustmentTest, TiesAreAdjustedAlikeAndNoneLeavesThemBe) {
    // Holm's step-down and Benjamini-Hochberg's step-up meet the five groups below; here
    // the cap at 1, ties adjusted alike, and none that leaves them be.
    const std::vector<double> tied = adjustPValues({0.2, 0.7, 0.2, 0.01}, PValueAdjustment::Holm);
    EXPECT_DOUBLE_EQ(tied[0], 0.6);
    EXPECT_DOUBLE_EQ(tied[1], 0.7);
    EXPECT_DOUBLE_EQ(tied[2], 0.6);
    EXPECT_DOUBLE_EQ(tied[3], 0.04);
    EXPECT_EQ(adjustPValues({0.6, 0.7}, PValueAdjustment::Holm), (std::vector<double>{1.0, 1.0}));
    EXPECT_EQ(adjustPValues({0.6, 0.2}, PValueAdjustment::None), (std::vector<double>{0.6, 0.2}));
    EXPECT_TRUE(adjustPValues({}, PValueAdjustment::BenjaminiHochberg).empty());
}

TEST(GroupComparisonTest, FiveGroupsAgainstAnIndependentComputation) {
    const GroupComparison holm =
        compareGroups({kSpleen, kLymph, kThird, kFourth, kFifth}, 0.95, PValueAdjustment::Holm);
    ASSERT_EQ(holm.tested.size(), 5u);
    EXPECT_NEAR(holm.groups[0].fit->logProportion, -9.3504008197425428, 1e-9);
    EXPECT_NEAR(holm.groups[2].wald->lower, 0.00014227202893910812, 1e-12);
    EXPECT_NEAR(holm.groups[2].wald->upper, 0.00029110875700214916, 1e-12);

    ASSERT_TRUE(holm.overall);
    EXPECT_NEAR(holm.overall->chiSquare, 19.786467999702225, 1e-7);
    EXPECT_EQ(holm.overall->df, 4);
    EXPECT_NEAR(*holm.overall->p, 0.00055027514713606659, 1e-10);

    ASSERT_EQ(holm.pairs.size(), 10u);
    EXPECT_NEAR(holm.pairs[0].wald.lower, 0.41437940271497919, 1e-9);
    // Pairs in the order 1/2, 1/3, 1/4, 1/5, 2/3, ...: pair 2/5 is the seventh.
    const GroupPair& pair = holm.pairs[6];
    EXPECT_EQ(pair.first, 1u);
    EXPECT_EQ(pair.second, 4u);
    EXPECT_NEAR(pair.ratio, 1.6997078495037514, 1e-9);
    EXPECT_NEAR(pair.wald.lower, 1.1272296503325452, 1e-9);
    EXPECT_NEAR(pair.wald.upper, 2.5629265277154292, 1e-9);
    EXPECT_NEAR(pair.chiSquare, 6.8057277675126215, 1e-7);
    EXPECT_NEAR(pair.p, 0.0090865910319555317, 1e-10);

    // Holm: 4 x p(2/3) = 0.3329 is raised by the step-down to 5 x p(2/4) = 0.3819.
    const std::vector<double> holmExpected{
        0.1344850514,  0.006741661839, 1, 1, 0.3818732859, 0.3818732859, 0.06360613722,
        0.03357304514, 0.002826653439, 1};
    // Benjamini-Hochberg: 10/6 x p(2/4) = 0.1273 is lowered to 10/7 x p(2/3) = 0.1189.
    const std::vector<double> bhExpected{
        0.04482835048, 0.003745367689, 0.9797014618,  0.9143774135,   0.1188780016,
        0.1188780016,  0.02271647758,  0.01398876881, 0.002826653439, 0.9143774135};
    const GroupComparison bh = compareGroups({kSpleen, kLymph, kThird, kFourth, kFifth}, 0.95,
                                             PValueAdjustment::BenjaminiHochberg);
    for (std::size_t k = 0; k < 10; ++k) {
        EXPECT_NEAR(holm.pairs[k].pAdjusted, holmExpected[k], 1e-8 * holmExpected[k]) << k;
        EXPECT_NEAR(bh.pairs[k].pAdjusted, bhExpected[k], 1e-8 * bhExpected[k]) << k;
    }
}

TEST(GroupComparisonTest, EqualFrequenciesGiveNoEvidenceOfADifference) {
    const GroupComparison comparison =
        compareGroups({kSpleen, kSpleen, kSpleen}, 0.95, PValueAdjustment::Holm);
    ASSERT_TRUE(comparison.overall);
    EXPECT_NEAR(comparison.overall->chiSquare, 0.0, 1e-9);
    EXPECT_GE(comparison.overall->chiSquare, 0.0);
    EXPECT_EQ(comparison.overall->df, 2);
    EXPECT_NEAR(*comparison.overall->p, 1.0, 1e-9);
    for (const GroupPair& pair : comparison.pairs) {
        EXPECT_NEAR(pair.ratio, 1.0, 1e-12);
        EXPECT_NEAR(pair.pAdjusted, 1.0, 1e-9);
    }
}

TEST(GroupComparisonTest, GroupWithNoResponsesKeepsItsBoundAtTheLevelAndStaysOutOfTheTests) {
    const GroupComparison comparison =
        compareGroups({kSpleen, kLymph, kNoResponses, kThird}, 0.95, PValueAdjustment::Holm);
    EXPECT_EQ(comparison.tested, (std::vector<std::size_t>{0, 1, 3}));
    const GroupEstimate& none = comparison.groups[2];
    EXPECT_FALSE(none.fit);
    ASSERT_TRUE(none.bound);
    EXPECT_EQ(none.bound->side, OneSidedBound::Side::Upper);
    EXPECT_NEAR(none.bound->proportion, 0.00031205544516187404, 1e-15); // -ln 0.05 / 9600

    // The tests are those of the three groups alone; pair 2/4 keeps the given positions.
    const GroupComparison alone =
        compareGroups({kSpleen, kLymph, kThird}, 0.95, PValueAdjustment::Holm);
    EXPECT_DOUBLE_EQ(comparison.overall->chiSquare, alone.overall->chiSquare);
    EXPECT_EQ(comparison.overall->df, 2);
    ASSERT_EQ(comparison.pairs.size(), 3u);
    EXPECT_EQ(comparison.pairs[2].first, 1u);
    EXPECT_EQ(comparison.pairs[2].second, 3u);
    EXPECT_NEAR(comparison.pairs[2].ratio, 0.68418302354933336, 1e-9);

    // At the 90% level: z = 1.6448536269514715, the bound -ln 0.1 / 9600.
    const GroupComparison ninety =
        compareGroups({kSpleen, kLymph, kNoResponses}, 0.90, PValueAdjustment::Holm);
    EXPECT_NEAR(ninety.groups[0].wald->lower, 6.5440790572319886e-05, 1e-14);
    EXPECT_NEAR(ninety.groups[0].wald->upper, 0.00011547726876335542, 1e-14);
    EXPECT_NEAR(ninety.pairs[0].wald.lower, 0.44260692994567874, 1e-9);
    EXPECT_NEAR(ninety.pairs[0].wald.upper, 0.88065833240255842, 1e-9);
    EXPECT_NEAR(ninety.groups[2].bound->proportion, 0.0002398526138535464, 1e-15);

    const GroupComparison one =
        compareGroups({kNoResponses, kSpleen}, 0.95, PValueAdjustment::Holm);
    EXPECT_FALSE(one.overall);
    EXPECT_TRUE(one.pairs.empty());
}

} // namespace
} // namespace titron::analysis
