// The single-hit model examined in full. Reference values come from
// tests/analysis/reference/single_hit_reference.py (60-digit decimal arithmetic, every
// root found by bisection; its output is kept beside it) or from the formulas by hand.
#include "analysis/single_hit_model.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/slope_fit.h"

namespace titron::analysis {
namespace {

// Agreement to a relative difference, for values that span many magnitudes.
#define EXPECT_CLOSE(actual, expected, relative)                                                   \
    EXPECT_NEAR(actual, expected, (relative)*std::fabs(expected))

constexpr double kFull = 1e-13; // full precision, allowing for the rounding of long sums

const AssayTable kFourDoses = {{1000, 2, 24}, {3000, 6, 24}, {10000, 14, 24}, {30000, 22, 24}};

struct Expected {
    double expected, pearson, deviance;
};

void expectDoses(const SingleHitStatistics& s, std::initializer_list<Expected> rows) {
    ASSERT_EQ(s.doses.size(), rows.size());
    std::size_t i = 0;
    for (const Expected& row : rows) {
        const DoseResidual& dose = s.doses[i++];
        EXPECT_CLOSE(*dose.expected, row.expected, kFull) << "row " << i;
        EXPECT_CLOSE(*dose.pearsonResidual, row.pearson, 1e-11) << "row " << i;
        EXPECT_CLOSE(*dose.devianceResidual, row.deviance, 1e-11) << "row " << i;
    }
}

TEST(SingleHitModelTest, FourDosesAgreeWithTheReference) {
    const SingleHitStatistics s = examineSingleHit(kFourDoses);
    ASSERT_TRUE(s.fit && s.wald && s.likelihoodRatio && s.pearson && s.deviance);
    EXPECT_FALSE(s.bound);
    EXPECT_CLOSE(s.fit->logProportion, -9.350400819742543, 1e-15);
    EXPECT_CLOSE(s.fit->seLog, 0.17263783261592983, kFull);
    EXPECT_CLOSE(s.wald->lower, 6.19759126508301e-05, kFull);
    EXPECT_CLOSE(s.wald->upper, 0.00012193323886300221, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 6.140715904927884e-05, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.00012045527348415324, kFull);
    EXPECT_CLOSE(s.pearson->chiSquare, 0.09006953575830104, 1e-11);
    EXPECT_CLOSE(s.deviance->chiSquare, 0.08771129683089231, 1e-11);
    EXPECT_EQ(s.pearson->df, 3);
    EXPECT_NEAR(*s.pearson->p, 0.9930, 5e-5); // as the report prints them
    EXPECT_NEAR(*s.deviance->p, 0.9933, 5e-5);
    expectDoses(s, {{1.9982221440881383, 0.0013135645205616154, 0.0013133874946867114},
                    {5.5094068482628975, 0.23812185585679654, 0.23574737699861112},
                    {13.938179181944598, 0.025574023346799323, 0.025581369944636202},
                    {22.23149108317602, -0.1808639306211267, -0.1774213617189641}});

    ASSERT_TRUE(s.slope && s.slopeWald && s.slopeLikelihoodRatio && s.scoreLogDose && s.scoreDose);
    EXPECT_EQ(s.noSlopeReason, "");
    EXPECT_CLOSE(s.slope->slope, 0.9603746406079011, kFull);
    EXPECT_CLOSE(s.slope->seSlope, 0.1670640709006153, 1e-12);
    EXPECT_CLOSE(s.slope->deviance, 0.03216142916140336, 1e-11);
    EXPECT_CLOSE(s.slopeWald->z, -0.23718660259195773, 1e-12);
    EXPECT_CLOSE(s.slopeLikelihoodRatio->z, -0.23569019425824433, 1e-10);
    EXPECT_CLOSE(s.scoreLogDose->z, -0.23888874029581295, 1e-12);
    EXPECT_CLOSE(s.scoreDose->z, -0.2558233498153226, 1e-12);
    EXPECT_CLOSE(s.scoreDose->p, std::erfc(0.2558233498153226 / std::sqrt(2.0)), 1e-12);
    // The intercept puts the free-slope line near the single-hit one: a + beta ln d = eta.
    EXPECT_NEAR(s.slope->intercept + s.slope->slope * std::log(10000.0),
                s.fit->logProportion + std::log(10000.0), 0.05);
}

TEST(SingleHitModelTest, IntervalsFollowTheLevel) {
    const SingleHitStatistics s = examineSingleHit(kFourDoses, 0.90);
    EXPECT_CLOSE(s.wald->lower, 6.544079057231987e-05, kFull);
    EXPECT_CLOSE(s.wald->upper, 0.00011547726876335527, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 6.504081686439596e-05, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.0001144528260892942, kFull);
}

// 3 of 10 at dose 100: by hand, f = -ln(0.7) / 100 and I = 10 x^2 0.7 / 0.3 with x = f d.
TEST(SingleHitModelTest, SingleDoseHasAnExactFitAndBothIntervals) {
    const SingleHitStatistics s = examineSingleHit({{100, 3, 10}});
    ASSERT_TRUE(s.fit && s.wald && s.likelihoodRatio);
    const double x = -std::log(0.7);
    EXPECT_CLOSE(s.fit->proportion, x / 100, 1e-15);
    EXPECT_CLOSE(s.fit->seLog, 1 / std::sqrt(10 * x * x * 0.7 / 0.3), 1e-15);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 0.00088348985714723, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.00932773405128067, kFull);
    EXPECT_NEAR(s.fit->deviance, 0.0, 1e-14);
    EXPECT_NEAR(*s.doses[0].expected, 3.0, 1e-14);
    EXPECT_FALSE(s.slope || s.slopeWald || s.slopeLikelihoodRatio || s.scoreLogDose || s.scoreDose);
    EXPECT_EQ(s.noSlopeReason, kNoSlopeOneDose);
    EXPECT_EQ(examineSingleHit({{100, 3, 10}, {100, 5, 10}}).noSlopeReason, kNoSlopeOneDose);
    EXPECT_EQ(s.pearson->df, 0);
    EXPECT_FALSE(s.pearson->p);
    EXPECT_FALSE(s.deviance->p);
}

TEST(SingleHitModelTest, RepeatedDosesStayRowsOfTheirOwn) {
    const SingleHitStatistics s = examineSingleHit({{1000, 2, 24}, {1000, 5, 24}, {5000, 10, 12}});
    EXPECT_CLOSE(s.fit->logProportion, -8.388384660039836, 1e-15);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 0.00013402459622848578, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.0003597493298966788, kFull);
    EXPECT_EQ(s.pearson->df, 2);
    EXPECT_CLOSE(s.pearson->chiSquare, 3.446721415217705, 1e-12);
    EXPECT_CLOSE(s.deviance->chiSquare, 4.082153259611427, 1e-12);
    // Two distinct doses: ln d and d are the same covariate up to scale, one score test.
    EXPECT_CLOSE(s.scoreLogDose->z, 1.5132174413549082, 1e-12);
    EXPECT_CLOSE(s.scoreDose->z, 1.5132174413549082, 1e-12);
    EXPECT_CLOSE(s.slope->slope, 1.5102847548890197, kFull);
    EXPECT_CLOSE(s.slope->seSlope, 0.32460789042429156, 1e-12);
    EXPECT_CLOSE(s.slopeWald->z, 1.5720035462540112, 1e-12);
    EXPECT_CLOSE(s.slopeLikelihoodRatio->z, 1.5919040422440305, 1e-12);
    expectDoses(s, {{4.88335602806396, -1.4619713833010506, -1.6157084244732536},
                    {4.88335602806396, 0.05914293876485469, 0.058969627592701385},
                    {8.152458639149355, 1.1427437168590227, 1.211677403321182}});
}

TEST(SingleHitModelTest, DosesOfBillionsStayExact) {
    const SingleHitStatistics s =
        examineSingleHit({{2e9, 4, 20}, {5e9, 12, 20}, {1e10, 17, 20}, {4e10, 20, 20}});
    EXPECT_CLOSE(s.fit->logProportion, -22.486979231496548, 1e-15);
    EXPECT_CLOSE(s.fit->seLog, 0.1811270997795323, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 1.1816703187005154e-10, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 2.4261876893232783e-10, kFull);
    EXPECT_CLOSE(s.deviance->chiSquare, 1.0706570450484603, 1e-12);
    EXPECT_CLOSE(s.scoreLogDose->z, 0.8288775947646558, 1e-12);
    EXPECT_CLOSE(s.scoreDose->z, 0.48000416041956, 1e-12);
    expectDoses(s, {{5.804600725117388, -0.8890703832778671, -0.9222873693834401},
                    {11.51163516251492, 0.22094229326218073, 0.22154791822265854},
                    {16.397383119287344, 0.3506388063011262, 0.3589216667881066},
                    {19.978943686811284, 0.1451843826615828, 0.2052676554294117}});
}

// At doses 200 and 1000 the fitted p is 1 in double precision; the residuals there are
// worked out from exp(-f d) and keep their tiny, non-zero sizes.
TEST(SingleHitModelTest, FittedProbabilitiesThatRoundToOneStayExact) {
    const SingleHitStatistics s =
        examineSingleHit({{1, 3, 10}, {2, 6, 10}, {200, 10, 10}, {1000, 20, 20}});
    EXPECT_CLOSE(s.fit->logProportion, -0.8741284958242349, 1e-15);
    EXPECT_CLOSE(s.fit->seLog, 0.3389566666071441, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 0.19824344181647077, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.7654685834578958, kFull);
    EXPECT_CLOSE(s.pearson->chiSquare, 0.12262727071158476, 1e-12);
    EXPECT_CLOSE(s.deviance->chiSquare, 0.12456138997733206, 1e-12);
    EXPECT_EQ(*s.doses[2].expected, 10.0);
    EXPECT_CLOSE(*s.doses[2].pearsonResidual, 2.399539198057838e-18, 1e-11);
    EXPECT_CLOSE(*s.doses[2].devianceResidual, 3.393460877339255e-18, 1e-11);
    EXPECT_GT(*s.doses[3].pearsonResidual, 0.0);
}

// 0, 12 and 24 of 24 at doses 100, 1000, 10000: nothing responds below 1000 and all above,
// so the free slope runs off (the reference's bisection runs into its edge, the deviance
// towards 0). The single-hit fit and its score tests stand.
TEST(SingleHitModelTest, ResponsesThatSeparateByDoseGiveNoSlope) {
    const SingleHitStatistics s = examineSingleHit({{100, 0, 24}, {1000, 12, 24}, {10000, 24, 24}});
    EXPECT_CLOSE(s.fit->logProportion, -7.383077973426364, 1e-15);
    EXPECT_CLOSE(s.likelihoodRatio->lower, 0.0003620991426157327, kFull);
    EXPECT_CLOSE(s.likelihoodRatio->upper, 0.001033873015178443, kFull);
    EXPECT_CLOSE(s.pearson->chiSquare, 1.7198148389352745, 1e-12);
    EXPECT_CLOSE(s.deviance->chiSquare, 3.2120309200265926, 1e-12);
    EXPECT_FALSE(s.slope || s.slopeWald || s.slopeLikelihoodRatio);
    EXPECT_EQ(s.noSlopeReason, kNoSlopeSeparation);
    EXPECT_CLOSE(s.scoreLogDose->z, 0.9872201232654579, 1e-12);
    EXPECT_CLOSE(s.scoreDose->z, 0.3472348776948843, 1e-12);

    EXPECT_TRUE(responsesSeparateByDose({{1, 0, 5}, {4, 5, 5}, {2, 2, 5}}));
    EXPECT_TRUE(responsesSeparateByDose({{1, 0, 5}, {2, 3, 5}}));
    EXPECT_TRUE(responsesSeparateByDose({{1, 5, 5}, {2, 5, 5}, {3, 1, 4}, {8, 0, 5}}));
    EXPECT_FALSE(responsesSeparateByDose({{1, 0, 5}, {2, 2, 5}, {4, 4, 5}}));
    EXPECT_FALSE(responsesSeparateByDose({{1, 0, 5}, {2, 5, 5}, {3, 0, 5}}));
    EXPECT_FALSE(responsesSeparateByDose({{1, 1, 5}, {2, 3, 5}}));
}

// Tables where the report's own iteration fails (a proportion above 1) or ends far off
// (at b = 0): the fit still reaches the maximum, and the huge misfit stays finite.
TEST(SingleHitModelTest, FitsFromAPoorStart) {
    const SingleHitStatistics above = examineSingleHit({{0.001, 5, 10}, {0.002, 8, 10}});
    EXPECT_CLOSE(above.fit->logProportion, 6.6247961806300095, 1e-15);
    EXPECT_CLOSE(above.likelihoodRatio->lower, 402.3978075396202, kFull);
    EXPECT_CLOSE(above.likelihoodRatio->upper, 1296.381561495531, kFull);
    const SingleHitStatistics far =
        examineSingleHit({{20000000, 17, 20}, {16000, 27, 35}, {500, 27, 34}, {140000, 1, 23}});
    EXPECT_CLOSE(far.fit->logProportion, -13.959253910031682, 1e-15);
    EXPECT_CLOSE(far.fit->seLog, 0.5661587695334088, kFull);
    EXPECT_CLOSE(far.likelihoodRatio->lower, 6.569167184409092e-07, kFull);
    EXPECT_CLOSE(far.likelihoodRatio->upper, 1.1156046583149179e-06, kFull);
    EXPECT_CLOSE(far.pearson->chiSquare, 15052940.272232743, 1e-12);
    EXPECT_CLOSE(far.deviance->chiSquare, 666.1554761059032, 1e-12);
    EXPECT_CLOSE(*far.doses[0].pearsonResidual, -3873.2375623620596, 1e-12);
}

TEST(SingleHitModelTest, NoResponseGivesAnUpperBoundInsteadOfAFit) {
    const SingleHitStatistics s = examineSingleHit({{10, 0, 5}, {100, 0, 10}}, 0.95);
    EXPECT_FALSE(fitSingleHit({{10, 0, 5}, {100, 0, 10}}));
    EXPECT_FALSE(s.fit || s.wald || s.likelihoodRatio || s.pearson || s.deviance);
    ASSERT_TRUE(s.bound);
    EXPECT_EQ(s.bound->side, OneSidedBound::Side::Upper);
    EXPECT_CLOSE(s.bound->proportion, -std::log(0.05) / 1050, 1e-15);
    ASSERT_EQ(s.doses.size(), 2u);
    EXPECT_EQ(s.doses[1].dose, 100);
    EXPECT_FALSE(s.doses[1].expected || s.doses[1].pearsonResidual);
}

TEST(SingleHitModelTest, EveryTestRespondingGivesALowerBound) {
    const SingleHitStatistics s = examineSingleHit({{100, 3, 3}, {1000, 2, 2}});
    EXPECT_FALSE(s.fit);
    ASSERT_TRUE(s.bound);
    EXPECT_EQ(s.bound->side, OneSidedBound::Side::Lower);
    EXPECT_CLOSE(s.bound->proportion, 0.004633231582547201, 1e-14);
    const SingleHitStatistics huge = examineSingleHit({{1e9, 5, 5}, {3e9, 4, 4}});
    EXPECT_CLOSE(huge.bound->proportion, 8.753803123010463e-10, 1e-14);
}

} // namespace
} // namespace titron::analysis
