// The Analyze command: the report in the pane, the checks that refuse a table, the failures
// of reading and arithmetic, the question for more passes, and the rules of the pane.
#include "documents/analyze.h"

#include <gtest/gtest.h>

#include "analyze_fixture.h"
#include "tests/worked_examples.h"

namespace titron::documents {
namespace {

using platform::Icon;
using testing::AnalyzeFixture;
using testing::Row;

constexpr const char* kOlderReport = "an older report that must stay on view, 50 chars or more";
constexpr const char* kIntegers = "The values for Responses and Tested must be integers";

class AnalyzeCommandTest : public AnalyzeFixture {
  protected:
    // Empties rows 1 to 6 and the transcript, and puts an older report on view.
    void startOver() {
        type({Row{}, Row{}, Row{}, Row{}, Row{}, Row{}});
        platform.clearTranscript();
        analyze.resultsPane().setText(kOlderReport);
        session.AnalysisChanged = session::kUnchanged;
    }
    // A refused table keeps the older report and the changed flag; the cursor goes to the
    // cell at fault, or stays where it was (column 4, row 7) for the totals (col 0).
    void expectRefused(const std::vector<Row>& rows, const std::string& title,
                       const std::string& text, int col, int row) {
        SCOPED_TRACE(title);
        startOver();
        type(rows);
        analyze.grid().addressCell(4, 7);
        analyze.grid().activate();
        analyze.analyze();
        expectBox(title, text);
        EXPECT_EQ(boxes()[0].request.icon, Icon::Exclamation);
        EXPECT_FALSE(boxes()[0].pointerBusy);
        EXPECT_EQ(pane(), kOlderReport);
        EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
        EXPECT_EQ(analyze.grid().activeCol(), col == 0 ? 4 : col);
        EXPECT_EQ(analyze.grid().activeRow(), row == 0 ? 7 : row);
        if (col != 0) {
            EXPECT_EQ(analyze.focus(), Control::Grid);
        }
        EXPECT_FALSE(platform.pointerBusy());
    }
};

TEST_F(AnalyzeCommandTest, FourRowExampleFillsThePaneMarksTheDocumentAndFormatsIt) {
    typeFourRowExample();
    analyze.nameBox().setText("Spleen A");
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    // The worked example of the report, table included, to the byte.
    EXPECT_EQ(pane(), std::string(titron::testing::kSpleenReportWithoutTable) +
                          "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                          "1\t\t1000\t\t2\t\t24\t\t\r\n"
                          "2\t\t3000\t\t6\t\t24\t\t\r\n"
                          "3\t\t10000\t\t14\t\t24\t\t\r\n"
                          "4\t\t30000\t\t22\t\t24\t\t\r\n");
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    EXPECT_TRUE(boxes().empty());
    // Formatted as the window shows it (dark blue Courier, stops every 960 twips: the
    // window's test).
    EXPECT_TRUE(analyze.resultsPane().look().formatted);
    EXPECT_FALSE(platform.pointerBusy());
}

// The note of a missing name is the window's test (and the command line's), which see the
// report stand behind it.
TEST_F(AnalyzeCommandTest, ChecksRefuseTheTableAndPutTheCursorOnTheCellAtFault) {
    expectRefused({}, "NO DATA TO ANALYZE", "No data to analyze.", 0, 0);
    expectRefused({{"100", "1", "10", ""}, {"0", "1", "10", ""}}, "INVALID DOSE", "Invalid Dose: 0",
                  1, 2);
    // A zero written otherwise than "0" counts as empty, as does a negative count.
    expectRefused({{"100", "00", "10", ""}}, "INVALID RESPONSES", "Invalid Responses:  Empty", 2,
                  1);
    expectRefused({{"100", "-3", "10", ""}}, "INVALID RESPONSES", "Invalid Responses:  Empty", 2,
                  1);
    expectRefused({{"100", "2.5", "10", ""}}, "INVALID RESPONSES", kIntegers, 2, 1);
    expectRefused({{"100", "0", "-2", ""}}, "INVALID NUMBER TESTED", "Invalid Number Tested: -2", 3,
                  1);
    expectRefused({{"100", "2", "10.5", ""}}, "INVALID NUMBER TESTED", kIntegers, 3, 1);
    expectRefused({{"100", "5", "3", ""}}, "INVALID RESPONSES/NUMBER TESTED",
                  "Responses is greater than Number Tested:\r\n\r\n5 > 3", 2, 1);
    expectRefused({{"100", "0", "10", ""}, {"1000", "0", "5", ""}}, "NO RESPONSES",
                  "Data with no Responses cannot be analyzed.", 0, 0);
    expectRefused({{"100", "5", "5", ""}, {"1000", "10", "10", ""}}, "100% RESPONSES",
                  "Data with 100% Responses cannot be analyzed.", 0, 0);
}

TEST_F(AnalyzeCommandTest, NearlyWholeCountsBlanksInNumbersAndNoneOrAllInOneRowPass) {
    const std::vector<Row> passing[] = {
        {{"100", "3.00000000001", "10", ""}, {"1000", "8", "10", ""}},
        {{"1 000", "2", "24", ""}, {"3 000", "6", "24", ""}},
        {{"100", "0", "10", ""}, {"1000", "10", "10", ""}},
    };
    for (const auto& rows : passing) {
        startOver();
        type(rows);
        EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report) << rows[0].dose;
    }
}

// Text that is no number, and empty cells even in a row with only a comment, take the
// reading failure path: the pane is emptied and the cursor goes to the cell.
TEST_F(AnalyzeCommandTest, CellsThatAreNoNumberAreInvalidEntries) {
    const auto expectInvalid = [this](const std::vector<Row>& rows, const std::string& text,
                                      int col, int row) {
        startOver();
        type(rows);
        analyze.analyze();
        expectBox("INVALID ENTRY", text);
        EXPECT_EQ(pane(), kEmptyResults);
        EXPECT_TRUE(analyze.resultsPane().look().formatted);
        EXPECT_EQ(analyze.grid().activeCol(), col);
        EXPECT_EQ(analyze.grid().activeRow(), row);
        EXPECT_EQ(analyze.focus(), Control::Grid);
    };
    expectInvalid({{"12abc", "1", "10", ""}}, "Invalid entry: 12abc", 1, 1);
    expectInvalid({{"100", "", "10", ""}}, "Invalid entry: ", 2, 1);
    expectInvalid({{"1000", "2", "24", ""}, {"", "", "", "note"}}, "Invalid entry: ", 1, 2);
}

// A number beyond the range while reading, and an overflow of exp in the first pass (five
// tiny doses pull the start value so high that exp(eta) of the large dose overflows).
TEST_F(AnalyzeCommandTest, OverflowWhileReadingOrEstimatingIsFailureSix) {
    const std::vector<Row> overflowing[] = {
        {{"1E400", "2", "24", ""}},
        {{"1E-300", "1", "2", ""},
         {"1E-300", "1", "2", ""},
         {"1E-300", "1", "2", ""},
         {"1E-300", "1", "2", ""},
         {"1E-300", "1", "2", ""},
         {"1E100", "1", "2", ""}},
    };
    for (const auto& rows : overflowing) {
        startOver();
        type(rows);
        analyze.analyze();
        expectBox("Titron ERROR #6", "An error occurred in the analysis.");
        EXPECT_EQ(pane(), kEmptyResults);
        EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
        EXPECT_TRUE(analyze.resultsPane().look().formatted);
    }
}

TEST_F(AnalyzeCommandTest, QuestionForMorePassesStopsWithoutAReportOrRoundsItsAnswerToEven) {
    type({{"0.001", "5", "10", ""}, {"0.002", "8", "10", ""}});
    for (const char* answer : {"0", "", "abc"}) {
        platform.clearTranscript();
        platform.queueInput(answer);
        const AnalysisRun run = analyze.runAnalysis();
        EXPECT_EQ(run.ending, AnalysisRun::Ending::NoConvergence) << answer;
        ASSERT_EQ(platform.inputs().size(), 1u);
        EXPECT_EQ(platform.inputs()[0].request.title, "ADDITIONAL ITERATIONS");
        EXPECT_EQ(platform.inputs()[0].request.defaultEntry, "20");
        EXPECT_EQ(platform.inputs()[0].request.prompt,
                  "After20 iterations the data have not yet converged.\r\n\r\n"
                  "Enter the number of additional iterations:");
        EXPECT_EQ(pane(), kEmptyResults);
    }
    // Answers are rounded to even: 2.5 gives two more passes. One beyond 32 bits fails in the
    // rounding (the number forms' test) inside the estimate, which ends as any failure of the
    // estimate does (the overflow test).
    platform.clearTranscript();
    platform.queueInput("2.5");
    platform.queueInput("0");
    analyze.analyze();
    ASSERT_EQ(platform.inputs().size(), 2u);
    EXPECT_EQ(platform.inputs()[1].request.prompt.substr(0, 8), "After22 ");
}

TEST_F(AnalyzeCommandTest, EditInProgressReachesTheGridBeforeReading) {
    typeFourRowExample();
    analyze.nameBox().setText("A");
    analyze.setFocus(Control::Grid);
    entry::Grid& grid = analyze.grid();
    grid.addressCell(3, 4);
    grid.activate();
    grid.setEditMode(true);
    grid.userEditText("23");
    analyze.analyze();
    EXPECT_EQ(cell(3, 4), "23");
    EXPECT_NE(pane().find("4\t\t30000\t\t22\t\t23\t\t\r\n"), std::string::npos);
}

TEST_F(AnalyzeCommandTest, FifteenHundredRowAssayAnalyses) {
    // The table grows and numbers its rows as the cursor goes down it, up to 1,500 rows.
    for (int row = 1; row <= 1500; ++row) {
        analyze.grid().userMoveTo(1, row);
        const int dose = 100 * (1 + row % 50);
        type({{std::to_string(dose), std::to_string(row % 5 == 0 ? 3 : 1), "10", ""}}, row);
    }
    ASSERT_EQ(analyze.grid().rowLimit(), 1500);
    analyze.nameBox().setText("Large");
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    EXPECT_EQ(run.figures->df, 1499);
    EXPECT_NE(pane().find("    Degrees of Freedom:     1499\r\n"), std::string::npos);
    // The report's table runs to the last row.
    EXPECT_NE(pane().find("\r\n1500\t\t100\t\t3\t\t10\t\t\r\n"), std::string::npos);
}

} // namespace
} // namespace titron::documents
