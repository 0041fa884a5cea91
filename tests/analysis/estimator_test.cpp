#include "analysis/estimator.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/figures.h"
#include "vocabulary/failure.h"

namespace titron::analysis {
namespace {

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

TEST(EstimatorTest, ProportionAboveOneHalvesEachPassAndReachesTheQuestion) {
    Answers stop;
    const Estimate e =
        estimateLogProportion(table({{0.001, 5, 10}, {0.002, 8, 10}}), stop.question());
    EXPECT_EQ(stop.asked, std::vector<std::int32_t>{20});
    EXPECT_TRUE(e.stopped);
    EXPECT_EQ(e.iterations, 20);
    // The start value near 6.6 halved at each of the 20 passes.
    EXPECT_GT(e.logProportion, 0.0);
    EXPECT_LT(e.logProportion, 6.7 / (1 << 19));
}

TEST(EstimatorTest, MorePassesAreCountedOnAndTheNextQuestionShowsTheTotal) {
    Answers twoThenStop{{2}, {}};
    const Estimate e =
        estimateLogProportion(table({{0.001, 5, 10}, {0.002, 8, 10}}), twoThenStop.question());
    EXPECT_EQ(twoThenStop.asked, (std::vector<std::int32_t>{20, 22}));
    EXPECT_EQ(e.iterations, 22);
    EXPECT_TRUE(e.stopped);

    // Five more are enough for this assay: the halved estimate settles at pass 25.
    Answers five{{5}, {}};
    const Estimate settled =
        estimateLogProportion(table({{0.001, 5, 10}, {0.002, 8, 10}}), five.question());
    EXPECT_EQ(five.asked, std::vector<std::int32_t>{20});
    EXPECT_EQ(settled.iterations, 25);
    EXPECT_FALSE(settled.stopped);
}

TEST(EstimatorTest, NegativeAnswerEndsTheIterationUnconvergedWithTheLatestEstimate) {
    Answers negative{{-1}, {}};
    const Estimate e =
        estimateLogProportion(table({{0.001, 5, 10}, {0.002, 8, 10}}), negative.question());
    EXPECT_FALSE(e.stopped);
    EXPECT_EQ(e.remaining, -1);
    EXPECT_EQ(e.iterations, 20);
    EXPECT_TRUE(computeFigures(e, 2).converged); // only a remaining of exactly 0 says otherwise
}

TEST(EstimatorTest, ExponentialOverflowIsFailureSix) {
    Answers none;
    // Five tiny doses pull the start value near 537; the large dose's eta is then near 767,
    // beyond the range of exp.
    try {
        estimateLogProportion(table({{1e-300, 1, 2},
                                     {1e-300, 1, 2},
                                     {1e-300, 1, 2},
                                     {1e-300, 1, 2},
                                     {1e-300, 1, 2},
                                     {1e100, 1, 2}}),
                              none.question());
        ADD_FAILURE() << "expected an overflow";
    } catch (const vocabulary::Failure& failure) {
        EXPECT_EQ(failure.number(), vocabulary::failure::Overflow);
    }
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

TEST(FiguresTest, FirstWarningWhenAProportionOfOneIsWithinOneStandardError) {
    Estimate e;
    e.logProportion = -0.2;
    e.sumWeight = 4.0; // se 0.5
    e.remaining = 5;
    const Figures f = computeFigures(e, 1);
    EXPECT_DOUBLE_EQ(f.se, 0.5);
    EXPECT_TRUE(f.inconsistentWithModel);
    EXPECT_FALSE(f.hasTests);
}

TEST(FiguresTest, TinyWeightMakesTheUpperLimitOverflow) {
    Estimate e;
    e.logProportion = -1.0;
    e.sumWeight = 1e-6; // se 1000, exp(b + 1960) overflows
    e.remaining = 5;
    try {
        computeFigures(e, 2);
        ADD_FAILURE() << "expected an overflow";
    } catch (const vocabulary::Failure& failure) {
        EXPECT_EQ(failure.number(), vocabulary::failure::Overflow);
    }
}

} // namespace
} // namespace titron::analysis
