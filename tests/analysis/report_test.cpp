#include "analysis/report.h"

#include <gtest/gtest.h>

#include "vocabulary/failure.h"
#include "tests/worked_examples.h"

namespace titron::analysis {
namespace {

// The figures of the four-row example (doses 1000 to 30000, 2, 6, 14, 22 of 24).
Figures fourRowFigures() {
    Estimate e;
    e.logProportion = -9.3504008193326982;
    e.sumWeight = 1.0 / (0.17263783284252698 * 0.17263783284252698);
    e.deviance = 0.087711296830920479;
    e.pearsonChi = 0.090069534296786172;
    e.iterations = 4;
    e.remaining = 16;
    return computeFigures(e, 4);
}

TEST(ReportTextTest, FourRowExampleWithoutItsTableIsExact) {
    EXPECT_EQ(reportText(fourRowFigures(), "Spleen A", "", "TABLE\r\n"),
              std::string(titron::testing::kSpleenReportWithoutTable) + "TABLE\r\n");
}

TEST(ReportTextTest, FileLineNamesTheFileInLowerCaseBeforeTheTable) {
    const std::string text = reportText(fourRowFigures(), "A", "/Data/Run 1.TNA", "T\r\n");
    EXPECT_NE(text.find("END\r\n\r\nTitron Analysis File: [/data/run 1.tna]\r\n\r\nT\r\n"),
              std::string::npos);
    EXPECT_EQ(reportText(fourRowFigures(), "A", "", "T\r\n").find("Titron Analysis File"),
              std::string::npos);
}

TEST(ReportTextTest, PoorFitGetsTheWarningAndTheRecommendationBeforeEnd) {
    Figures f = fourRowFigures();
    f.pearsonChi = 169.969;
    f.deviance = 107.799;
    f.pearsonP = 1e-30;
    f.devianceP = 1e-20;
    f.poorFit = true;
    const std::string text = reportText(f, "B", "", "");
    const std::string expected =
        "  Test for internal inconsistency in the assay\r\n"
        "    Chi-square (Pearson):   169.969         p-value:             < 0.001\r\n"
        "    Chi-square (Deviance):  107.799         p-value:             < 0.001\r\n"
        "    Degrees of Freedom:       3\r\n"
        "\r\n"
        "WARNING:  DATA IS INCONSISTENT WITH THE MODEL. (p-value < 0.05)\r\n"
        "Recommendation: Consult a statician.\r\n"
        "\r\n"
        "END\r\n\r\n";
    EXPECT_NE(text.find(expected), std::string::npos) << text;
}

TEST(ReportTextTest, SingleRowHasNoTestSectionAndNoEnd) {
    Figures f = fourRowFigures();
    f.hasTests = false;
    f.rows = 1;
    const std::string text = reportText(f, "C", "", "T\r\n");
    EXPECT_EQ(text.find("END"), std::string::npos);
    EXPECT_EQ(text.find("Chi-square"), std::string::npos);
    EXPECT_NE(text.find("S.E. of Log Prop.:   0.1726\r\n\r\nT\r\n"), std::string::npos);
}

TEST(ReportTextTest, VariableBlanksKeepDecimalPointsAligned) {
    Figures f = fourRowFigures();
    f.logProportion = -12.34567;
    EXPECT_NE(reportText(f, "", "", "")
                  .find("    Log Proportion: " + std::string(8, ' ') + "-12.34567       S.E."),
              std::string::npos);
    f.logProportion = -123.45678;
    EXPECT_NE(
        reportText(f, "", "", "").find("Log Proportion: " + std::string(7, ' ') + "-123.45678"),
        std::string::npos);
    f.logProportion = 0.5;
    EXPECT_NE(reportText(f, "", "", "").find("Log Proportion: " + std::string(10, ' ') + "0.50000"),
              std::string::npos);

    f.pearsonChi = 1234.567; // as wide a gap as 123.456: the columns behind shift by one
    EXPECT_NE(reportText(f, "", "", "").find("(Pearson):   1234.567         p-value:"),
              std::string::npos);

    f.rows = 11;
    f.df = 10;
    EXPECT_NE(reportText(f, "", "", "").find("Freedom:      10\r\n"), std::string::npos);
    f.rows = 10;
    f.df = 9;
    EXPECT_NE(reportText(f, "", "", "").find("Freedom:       9\r\n"), std::string::npos);
}

TEST(ReportTextTest, ExtremeProportionsPrintAsTheyAre) {
    Figures f = fourRowFigures();
    f.upperLimit = 2.5; // frequency 0.4 rounds to nothing
    EXPECT_NE(reportText(f, "", "", "").find("Upper Frequency:     1 in \r\n"), std::string::npos);
    f.proportion = 4e-8; // prints as zero, its frequency in full
    EXPECT_NE(reportText(f, "", "", "").find("0.0000000     Frequency:           1 in 25,000,000"),
              std::string::npos);
}

TEST(ReportTextTest, ZeroStatisticLeavesItsPValueEmpty) {
    Figures f = fourRowFigures();
    f.deviance = 0.0;
    f.devianceP.reset();
    EXPECT_NE(
        reportText(f, "", "", "").find("(Deviance):    0.000         p-value:             \r\n"),
        std::string::npos);
}

TEST(ReportTextTest, WarningOfTheModelFollowsTheLogProportionLine) {
    Figures f = fourRowFigures();
    f.inconsistentWithModel = true;
    EXPECT_NE(reportText(f, "", "", "")
                  .find("0.1726\r\n\r\nWARNING:  DATA IS INCONSISTENT WITH THE MODEL.\r\n\r\n"
                        "  Test for internal"),
              std::string::npos);
}

TEST(ReportTextTest, LowerLimitOfZeroIsADivisionByZero) {
    Figures f = fourRowFigures();
    f.lowerLimit = 0.0;
    try {
        reportText(f, "", "", "");
        ADD_FAILURE() << "expected a division by zero";
    } catch (const vocabulary::Failure& failure) {
        EXPECT_EQ(failure.number(), vocabulary::failure::DivisionByZero);
    }
}

TEST(ReportTextTest, NameIsPrintedAsTypedWithItsBlanks) {
    EXPECT_EQ(reportText(fourRowFigures(), "  two  blanks ", "", "")
                  .rfind("Analysis Name:   two  blanks \r\n", 0),
              0u);
}

} // namespace
} // namespace titron::analysis
