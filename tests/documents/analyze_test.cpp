#include "documents/analyze.h"

#include <gtest/gtest.h>

#include "analyze_fixture.h"
#include "tests/worked_examples.h"

namespace titron::documents {
namespace {

using platform::Icon;
using testing::AnalyzeFixture;

class AnalyzeCommandTest : public AnalyzeFixture {
  protected:
    // Runs the analysis expecting one box; checks the box and that the document is as it
    // was but for the cursor.
    void expectRefused(const std::string& title, const std::string& text, int col, int row) {
        analyze.resultsPane().setText("an older report that must stay on view, 50 chars or more");
        session.AnalysisChanged = session::kUnchanged;
        analyze.analyze();
        ASSERT_EQ(boxes().size(), 1u);
        EXPECT_EQ(boxes()[0].request.title, title);
        EXPECT_EQ(boxes()[0].request.text, text);
        EXPECT_EQ(boxes()[0].request.icon, Icon::Exclamation);
        EXPECT_FALSE(boxes()[0].pointerBusy);
        EXPECT_EQ(pane(), "an older report that must stay on view, 50 chars or more");
        EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
        if (col != 0) {
            EXPECT_EQ(analyze.grid().activeCol(), col);
            EXPECT_EQ(analyze.grid().activeRow(), row);
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
    EXPECT_TRUE(analyze.resultsPane().look().formatted);
    EXPECT_EQ(analyze.resultsPane().look().colour, (documents::Rgb{0, 0, 128}));
    EXPECT_EQ(analyze.resultsPane().look().tabStopsTwips,
              (std::vector<int>{0, 960, 1920, 2880, 3840, 4800, 5760, 6720, 7680, 8640}));
    EXPECT_EQ(analyze.resultsPane().font().name, "Courier New");
    EXPECT_FALSE(platform.pointerBusy());
}

TEST_F(AnalyzeCommandTest, ReportCarriesTheDocumentsFileLine) {
    typeFourRowExample();
    analyze.nameBox().setText("Spleen A");
    session.AnalysisFile = "/Home/Lab/Spleen.TNA";
    analyze.analyze();
    EXPECT_NE(pane().find("END\r\n\r\nTitron Analysis File: [/home/lab/spleen.tna]\r\n\r\nRow"),
              std::string::npos);
}

TEST_F(AnalyzeCommandTest, MissingNameIsToldAfterTheReportWhichStands) {
    typeFourRowExample();
    const AnalysisRun run = analyze.runAnalysis();
    EXPECT_EQ(run.ending, AnalysisRun::Ending::Report);
    EXPECT_TRUE(run.noNameNote);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "ANALYSIS NAME");
    EXPECT_EQ(boxes()[0].request.text, "There is no Analysis Name.");
    EXPECT_EQ(boxes()[0].request.icon, Icon::Information);
    EXPECT_EQ(pane().rfind("Analysis Name: \r\n", 0), 0u);
    EXPECT_EQ(analyze.focus(), Control::AnalysisName);
}

TEST_F(AnalyzeCommandTest, EmptyGridSaysNoDataAndLeavesThePane) {
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "NO DATA TO ANALYZE");
    EXPECT_EQ(boxes()[0].request.text, "No data to analyze.");
    EXPECT_EQ(pane(), kEmptyResults);
}

TEST_F(AnalyzeCommandTest, EachRowCheckShowsItsBoxAndPutsTheCursorOnTheCellAtFault) {
    type({{"100", "1", "10", ""}, {"0", "1", "10", ""}});
    expectRefused("INVALID DOSE", "Invalid Dose: 0", 1, 2);
}

TEST_F(AnalyzeCommandTest, NegativeOrOddlyWrittenZeroResponsesAreEmpty) {
    for (const char* text : {"0.0", "00", "-0", "-3"}) {
        platform.clearTranscript();
        type({{"100", text, "10", ""}});
        SCOPED_TRACE(text);
        expectRefused("INVALID RESPONSES", "Invalid Responses:  Empty", 2, 1);
    }
}

TEST_F(AnalyzeCommandTest, FractionalCountsAreRefusedButNearlyWholeOnesPass) {
    type({{"100", "2.5", "10", ""}});
    expectRefused("INVALID RESPONSES", "The values for Responses and Tested must be integers", 2,
                  1);
    platform.clearTranscript();
    type({{"100", "2", "10.5", ""}});
    expectRefused("INVALID NUMBER TESTED", "The values for Responses and Tested must be integers",
                  3, 1);
    platform.clearTranscript();
    type({{"100", "3.00000000001", "10", ""}, {"1000", "8", "10", ""}});
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);
}

TEST_F(AnalyzeCommandTest, TestedAndResponsesAboveTestedChecks) {
    type({{"100", "0", "-2", ""}});
    expectRefused("INVALID NUMBER TESTED", "Invalid Number Tested: -2", 3, 1);
    platform.clearTranscript();
    type({{"100", "5", "3", ""}});
    expectRefused("INVALID RESPONSES/NUMBER TESTED",
                  "Responses is greater than Number Tested:\r\n\r\n5 > 3", 2, 1);
}

TEST_F(AnalyzeCommandTest, TotalsWithNoneOrAllRespondingAreRefusedWithoutMovingTheCursor) {
    type({{"100", "0", "10", ""}, {"1000", "0", "5", ""}});
    analyze.grid().addressCell(4, 7);
    analyze.grid().activate();
    expectRefused("NO RESPONSES", "Data with no Responses cannot be analyzed.", 0, 0);
    EXPECT_EQ(analyze.grid().activeRow(), 7);
    platform.clearTranscript();
    type({{"100", "5", "5", ""}, {"1000", "10", "10", ""}});
    expectRefused("100% RESPONSES", "Data with 100% Responses cannot be analyzed.", 0, 0);
    platform.clearTranscript();
    type({{"100", "0", "10", ""}, {"1000", "10", "10", ""}});
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);
}

TEST_F(AnalyzeCommandTest, TextThatIsNoNumberTakesTheReadingFailurePath) {
    type({{"12abc", "1", "10", ""}});
    analyze.resultsPane().setText("an older report, which the reading failure replaces......");
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "INVALID ENTRY");
    EXPECT_EQ(boxes()[0].request.text, "Invalid entry: 12abc");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_TRUE(analyze.resultsPane().look().formatted);
    EXPECT_EQ(analyze.grid().activeCol(), 1);
    EXPECT_EQ(analyze.focus(), Control::Grid);
}

TEST_F(AnalyzeCommandTest, EmptyCellsAreInvalidEntriesEvenInACommentOnlyRow) {
    type({{"100", "", "10", ""}});
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.text, "Invalid entry: ");
    EXPECT_EQ(analyze.grid().activeCol(), 2);
    EXPECT_EQ(analyze.grid().activeRow(), 1);

    platform.clearTranscript();
    type({{"1000", "2", "24", ""}, {"", "", "", "note"}});
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.text, "Invalid entry: ");
    EXPECT_EQ(analyze.grid().activeCol(), 1);
    EXPECT_EQ(analyze.grid().activeRow(), 2);
}

TEST_F(AnalyzeCommandTest, BlanksInsideNumbersAreIgnoredAndOverflowIsFailureSix) {
    type({{"1 000", "2", "24", ""}, {"3 000", "6", "24", ""}});
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);
    platform.clearTranscript();
    type({{"1E400", "2", "24", ""}});
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #6");
    EXPECT_EQ(boxes()[0].request.text, "An error occurred in the analysis.");
    EXPECT_EQ(pane(), kEmptyResults);
}

TEST_F(AnalyzeCommandTest, ArithmeticFailureDropsTheReportAndKeepsTheFlag) {
    // Five tiny doses pull the start value so high that exp(eta) of the large dose
    // overflows in the first pass.
    type({{"1E-300", "1", "2", ""},
          {"1E-300", "1", "2", ""},
          {"1E-300", "1", "2", ""},
          {"1E-300", "1", "2", ""},
          {"1E-300", "1", "2", ""},
          {"1E100", "1", "2", ""}});
    session.AnalysisChanged = session::kUnchanged;
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #6");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_TRUE(analyze.resultsPane().look().formatted);
}

TEST_F(AnalyzeCommandTest, QuestionForMorePassesStopsWithoutAReport) {
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
}

TEST_F(AnalyzeCommandTest, AnswersAreRoundedToEvenAndHugeOnesOverflow) {
    type({{"0.001", "5", "10", ""}, {"0.002", "8", "10", ""}});
    platform.queueInput("2.5"); // two more passes
    platform.queueInput("0");
    analyze.analyze();
    ASSERT_EQ(platform.inputs().size(), 2u);
    EXPECT_EQ(platform.inputs()[1].request.prompt.substr(0, 8), "After22 ");

    platform.clearTranscript();
    platform.queueInput("3000000000");
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #6");
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

class DocumentRulesTest : public AnalyzeFixture {};

TEST_F(DocumentRulesTest, FirstCellEditAfterASaveResetsThePaneLaterOnesLeaveIt) {
    typeFourRowExample();
    analyze.nameBox().setText("A");
    analyze.analyze();
    const std::string report = pane();
    analyze.grid().addressCell(1, 1);
    analyze.grid().activate();
    analyze.grid().userKeyPress('5');
    analyze.grid().userCommitEdit();
    EXPECT_EQ(pane(), report); // unsaved report stays while cells change

    session.AnalysisChanged = session::kUnchanged; // as after a save
    analyze.grid().userKeyPress('7');
    analyze.grid().userCommitEdit();
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
}

TEST_F(DocumentRulesTest, RenamingThrowsTheReportAwayButNamingAnEmptyDocumentChangesNothing) {
    analyze.nameBox().setText("New name");
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    typeFourRowExample();
    analyze.analyze();
    session.AnalysisChanged = session::kUnchanged;
    analyze.nameBox().setText("Other");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
}

} // namespace
} // namespace titron::documents
