#include "analysis/report.h"

#include <functional>

#include <gtest/gtest.h>

#include "tests/failure_of.h"
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

TEST(ReportTextTest, NameAsTypedAndTheFileAsGivenBeforeTheTable) {
    const std::string text = reportText(fourRowFigures(), "A", "/Data/Run 1.TNA", "T\r\n");
    EXPECT_NE(text.find("END\r\n\r\nTitron Analysis File: [/Data/Run 1.TNA]\r\n\r\nT\r\n"),
              std::string::npos);
    // The name is printed as typed, blanks and all.
    EXPECT_EQ(reportText(fourRowFigures(), "  two  blanks ", "", "")
                  .rfind("Analysis Name:   two  blanks \r\n", 0),
              0u);
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

// Each case changes the worked figures and finds the line as it prints.
TEST(ReportTextTest, FieldsKeepTheirColumnsAndEdgeValuesPrintAsTheyAre) {
    const struct {
        std::function<void(Figures&)> change;
        std::string line;
    } cases[] = {
        // Variable blanks keep the decimal points aligned.
        {[](Figures& f) { f.logProportion = -12.34567; },
         "    Log Proportion:         -12.34567       S.E."},
        {[](Figures& f) { f.logProportion = -123.45678; }, "Log Proportion:        -123.45678"},
        {[](Figures& f) { f.logProportion = 0.5; }, "Log Proportion:           0.50000"},
        // As wide a gap as 123.456: the columns behind shift by one.
        {[](Figures& f) { f.pearsonChi = 1234.567; }, "(Pearson):   1234.567         p-value:"},
        {[](Figures& f) {
             f.rows = 11;
             f.df = 10;
         },
         "Freedom:      10\r\n"},
        {[](Figures& f) {
             f.rows = 10;
             f.df = 9;
         },
         "Freedom:       9\r\n"},
        // The row count, not the degrees of freedom, sets the blanks: 101 rows take one less.
        {[](Figures& f) {
             f.rows = 101;
             f.df = 100;
         },
         "Freedom:     100\r\n"},
        // A frequency of 0.4 rounds to nothing; a proportion that prints as zero keeps its
        // frequency in full.
        {[](Figures& f) { f.upperLimit = 2.5; }, "Upper Frequency:     1 in \r\n"},
        {[](Figures& f) { f.proportion = 4e-8; },
         "0.0000000     Frequency:           1 in 25,000,000"},
        // A zero statistic leaves its p-value empty.
        {[](Figures& f) {
             f.deviance = 0.0;
             f.devianceP.reset();
         },
         "(Deviance):    0.000         p-value:             \r\n"},
        // The warning of the model follows the log proportion's line.
        {[](Figures& f) { f.inconsistentWithModel = true; },
         "0.1726\r\n\r\nWARNING:  DATA IS INCONSISTENT WITH THE MODEL.\r\n\r\n  Test for internal"},
    };
    for (const auto& c : cases) {
        Figures f = fourRowFigures();
        c.change(f);
        EXPECT_NE(reportText(f, "", "", "").find(c.line), std::string::npos) << c.line;
    }
}

TEST(ReportTextTest, LowerLimitOfZeroIsADivisionByZero) {
    Figures f = fourRowFigures();
    f.lowerLimit = 0.0;
    EXPECT_EQ(titron::testing::failureOf([&] { reportText(f, "", "", ""); }),
              vocabulary::failure::DivisionByZero);
}

} // namespace
} // namespace titron::analysis
