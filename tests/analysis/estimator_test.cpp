// The statistics: the estimate and its worked examples and limit cases, the figures made
// from it, and the tail probabilities behind the report's p-values.
#include "analysis/estimator.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/figures.h"
#include "analysis/tail_probability.h"
#include "tests/failure_of.h"

namespace titron::analysis {
namespace {

using titron::testing::failureOf;

AssayTable table(std::initializer_list<AssayRow> rows) {
    return AssayTable(rows);
}

// Counts the questions asked and answers each with the next of a list (0 when exhausted).
struct Answers {
    std::vector<std::int32_t> answers;
    std::vector<std::int32_t> asked;
    MorePassesQuestion question() {
        return [this](std::int32_t passes) {
            asked.push_back(passes);
            const std::size_t i = asked.size() - 1;
            return i < answers.size() ? answers[i] : 0;
        };
    }
};

// Worked examples of the estimator, to the six decimals they are given with.
TEST(EstimatorTest, FourRowAssayConvergesInFourPasses) {
    Answers none;
    const Estimate e = estimateLogProportion(
        table({{1000, 2, 24}, {3000, 6, 24}, {10000, 14, 24}, {30000, 22, 24}}), none.question());
    EXPECT_EQ(e.iterations, 4);
    EXPECT_NEAR(e.logProportion, -9.350401, 5e-7);
    EXPECT_NEAR(e.deviance, 0.087711, 5e-7);
    EXPECT_NEAR(e.pearsonChi, 0.090070, 5e-7);
    EXPECT_FALSE(e.stopped);
    EXPECT_TRUE(none.asked.empty());
}

TEST(EstimatorTest, AssayWithNoneAndAllRespondingConvergesInSixPasses) {
    Answers none;
    const Estimate e = estimateLogProportion(table({{100, 0, 24}, {1000, 12, 24}, {10000, 24, 24}}),
                                             none.question());
    EXPECT_EQ(e.iterations, 6);
    EXPECT_NEAR(e.logProportion, -7.383078, 5e-7);
    EXPECT_NEAR(e.deviance, 3.212031, 5e-7);
    EXPECT_NEAR(e.pearsonChi, 1.719815, 5e-7);
}

TEST(EstimatorTest, SingleRowStopsAfterOnePassAtItsStartValue) {
    Answers none;
    const Estimate e = estimateLogProportion(table({{100, 3, 10}}), none.question());
    EXPECT_EQ(e.iterations, 1);
    EXPECT_NEAR(e.deviance, 0.0, 1e-12);
    // The start value, ln(-ln(1 - 0.3)) - ln 100, is already the estimate.
    EXPECT_NEAR(e.logProportion, std::log(-std::log(0.7)) - std::log(100.0), 1e-12);
    // One row has no tests of consistency.
    EXPECT_FALSE(computeFigures(e, 1).hasTests);
}

TEST(EstimatorTest, RowsBeyondTheWeightedRangeEndAtLogProportionZeroAfterSevenPasses) {
    Answers none;
    const Estimate e = estimateLogProportion(
        table({{20000000, 17, 20}, {16000, 27, 35}, {500, 27, 34}, {140000, 1, 23}}),
        none.question());
    EXPECT_EQ(e.iterations, 7);
    EXPECT_EQ(e.logProportion, 0.0);
    EXPECT_EQ(e.sumWeight, 0.0);
    EXPECT_NEAR(e.deviance, 79953.741, 5e-4);
    EXPECT_EQ(e.pearsonChi, 0.0);

    const Figures f = computeFigures(e, 4);
    EXPECT_EQ(f.proportion, 1.0);
    EXPECT_EQ(f.se, 1.0);
    EXPECT_NEAR(f.lowerLimit, std::exp(-1.96), 1e-15);
    EXPECT_NEAR(f.upperLimit, std::exp(1.96), 1e-15);
    EXPECT_TRUE(f.inconsistentWithModel);
    EXPECT_FALSE(f.pearsonP.has_value());
    EXPECT_FALSE(f.poorFit);
    ASSERT_TRUE(f.devianceP.has_value());
    EXPECT_LT(*f.devianceP, 0.001);
}

// The weight's window includes eta = 5. The tiny dose puts both rows beyond the window at the
// first pass, so the log proportion becomes 0 and the first row's eta ln(e^5) = 5 exactly.
TEST(EstimatorTest, RowAtEtaFiveExactlyStillCarriesWeight) {
    ASSERT_EQ(std::log(std::exp(5.0)), 5.0);
    Answers none;
    const Estimate e =
        estimateLogProportion(table({{std::exp(5.0), 3, 10}, {1e-300, 1, 10}}), none.question());
    EXPECT_EQ(e.logProportion, 0.0);
    EXPECT_GT(e.sumWeight, 0.0);
}

// A proportion above one: the start value near 6.6 is halved at each pass, and after 20
// passes the question asks for more. 0 stops; more passes are counted on and the next
// question shows the total; five more are enough (the estimate settles at pass 25); a
// negative answer ends the iteration unconverged with the latest estimate.
TEST(EstimatorTest, ProportionAboveOneHalvesEachPassAndReachesTheQuestion) {
    const AssayTable slow = table({{0.001, 5, 10}, {0.002, 8, 10}});
    Answers stop;
    const Estimate e = estimateLogProportion(slow, stop.question());
    EXPECT_EQ(stop.asked, std::vector<std::int32_t>{20});
    EXPECT_TRUE(e.stopped);
    EXPECT_EQ(e.iterations, 20);
    EXPECT_GT(e.logProportion, 0.0);
    EXPECT_LT(e.logProportion, 6.7 / (1 << 19));

    Answers twoThenStop{{2}, {}};
    const Estimate two = estimateLogProportion(slow, twoThenStop.question());
    EXPECT_EQ(twoThenStop.asked, (std::vector<std::int32_t>{20, 22}));
    EXPECT_EQ(two.iterations, 22);
    EXPECT_TRUE(two.stopped);

    Answers five{{5}, {}};
    const Estimate settled = estimateLogProportion(slow, five.question());
    EXPECT_EQ(five.asked, std::vector<std::int32_t>{20});
    EXPECT_EQ(settled.iterations, 25);
    EXPECT_FALSE(settled.stopped);

    Answers negative{{-1}, {}};
    const Estimate ended = estimateLogProportion(slow, negative.question());
    EXPECT_FALSE(ended.stopped);
    EXPECT_EQ(ended.remaining, -1);
    EXPECT_EQ(ended.iterations, 20);
    EXPECT_TRUE(computeFigures(ended, 2).converged); // only a remaining of exactly 0 says otherwise
}

TEST(EstimatorTest, ExponentialOverflowIsFailureSix) {
    Answers none;
    // Five tiny doses pull the start value near 537; the large dose's eta is then near 767,
    // beyond the range of exp.
    const AssayTable tiny = table({{1e-300, 1, 2},
                                   {1e-300, 1, 2},
                                   {1e-300, 1, 2},
                                   {1e-300, 1, 2},
                                   {1e-300, 1, 2},
                                   {1e100, 1, 2}});
    EXPECT_EQ(failureOf([&] { estimateLogProportion(tiny, none.question()); }),
              vocabulary::failure::Overflow);
}

TEST(FiguresTest, OnlyThePearsonTestWarnsOfAPoorFit) {
    Estimate e;
    e.logProportion = -5.0;
    e.sumWeight = 100.0;
    e.remaining = 5;
    e.pearsonChi = 20.0; // p well below 0.05 with 3 degrees of freedom
    e.deviance = 1.0;
    EXPECT_TRUE(computeFigures(e, 4).poorFit);
    e.pearsonChi = 1.0;
    e.deviance = 20.0;
    EXPECT_FALSE(computeFigures(e, 4).poorFit);
}

TEST(FiguresTest, TinyWeightMakesTheUpperLimitOverflow) {
    Estimate e;
    e.logProportion = -1.0;
    e.sumWeight = 1e-6; // se 1000, exp(b + 1960) overflows
    e.remaining = 5;
    EXPECT_EQ(failureOf([&] { computeFigures(e, 2); }), vocabulary::failure::Overflow);
}

// Reference values are exact tails, worked out independently of the program: the normal
// two-tail as erfc(z / sqrt 2), the chi-square tail for integer df from its closed form
// (for even df, e^-x/2 times the sum of (x/2)^k / k! for k < df/2; for odd df, erfc of
// sqrt(x/2) plus the matching sum over half-integer k). The program's normal tail is a
// polynomial approximation good to 7.5e-8 in each tail, so odd df may be 1.5e-7 out.
constexpr double kNormalError = 1.5e-7;

TEST(NormalTwoTailTest, AgreesWithErfcWithinTheApproximationsError) {
    EXPECT_NEAR(normalTwoTail(0.0), 1.0, kNormalError);
    EXPECT_NEAR(normalTwoTail(1.96), 0.0499957903, kNormalError);
    EXPECT_NEAR(normalTwoTail(2.5758), 0.0100008475, kNormalError);
    EXPECT_NEAR(normalTwoTail(40.0), 0.0, 1e-300);
}

TEST(ChiSquareTailTest, SeriesBelowOneHundredDegreesOfFreedomMatchesTheExactTail) {
    const struct {
        double x;
        int df;
        double exact;
    } cases[] = {
        {3.84, 1, 0.0500435212},
        {5.99, 2, 0.0500366271},
        {7.81, 3, 0.0501060564},
        {9.49, 4, 0.0499531312},
        {123.225, 99, 0.0500014038},
        // From 50 on the terms are summed in logarithms.
        {60.0, 25, 0.0001045549},
        {60.0, 26, 0.0001676976},
        {50.0, 30, 0.0124020607},
        {49.999999, 30, 0.0124020637},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(chiSquareTail(c.x, c.df), c.exact, kNormalError) << c.x << " " << c.df;
    }
}

// From 100 degrees of freedom on, the Wilson-Hilferty approximation: within 2e-5 of the
// exact tail near the 5% point at 100 df, closer as df grows.
TEST(ChiSquareTailTest, CubeRootApproximationFromOneHundredOn) {
    EXPECT_NEAR(chiSquareTail(124.34, 100), 0.0500133405, 2e-5);
    EXPECT_NEAR(chiSquareTail(150.0, 120), 0.0330734809, 2e-5);
    EXPECT_GT(chiSquareTail(10.0, 100), 0.999);
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
