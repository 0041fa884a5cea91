#include <gtest/gtest.h>

#include "analyze_fixture.h"

namespace titron::documents {
namespace {

using platform::Answer;
using testing::AnalyzeFixture;

// The table form of a named two-row document, as a save writes it.
const std::string kTableForm = "Titron Analysis File: [c:\\data\\spleen.tna]\r\n\r\n"
                               "Analysis Name: Spleen A\r\n\r\n"
                               "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                               "1\t\t1000\t\t5\t\t24\t\t\r\n"
                               "2\t\t100000000\t23\t\t24\t\tsecond plate\r\n"
                               "\r\n";

class LoadAnalysisTest : public AnalyzeFixture {
  protected:
    LoadOutcome open(const std::string& name, const std::string& bytes) {
        return analyze.openDocument(writeFile(name, bytes));
    }
    void expectRow(int row, const std::string& dose, const std::string& responses,
                   const std::string& tested, const std::string& comments) {
        SCOPED_TRACE("row " + std::to_string(row));
        EXPECT_EQ(cell(0, row), std::to_string(row));
        EXPECT_EQ(cell(1, row), dose);
        EXPECT_EQ(cell(2, row), responses);
        EXPECT_EQ(cell(3, row), tested);
        EXPECT_EQ(cell(4, row), comments);
    }
    void expectHeadings(const std::vector<std::string>& headings) {
        for (int col = 0; col <= 4; ++col) {
            EXPECT_EQ(cell(col, 0), headings[static_cast<std::size_t>(col)]) << col;
        }
    }
    const std::vector<std::string> kDefaultHeadings{"Row", "Dose", "Responses", "Tested",
                                                    "Comments"};
};

TEST_F(LoadAnalysisTest, TableFormWithANameFillsNameGridAndPane) {
    session.AnalysisChanged = session::kChanged;
    ASSERT_EQ(open("spleen.tna", kTableForm), LoadOutcome::Loaded);
    EXPECT_EQ(analyze.nameBox().text(), "Spleen A");
    EXPECT_EQ(pane(), kTableForm.substr(kTableForm.find("Analysis Name: ")));
    expectHeadings(kDefaultHeadings);
    expectRow(1, "1000", "5", "24", "");
    expectRow(2, "100000000", "23", "24", "second plate");
    EXPECT_EQ(analyze.grid().dataRowCount(), 2);
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_EQ(session.frameCaption.text(),
              "Titron - [" + vocabulary::lowerCase(path("spleen.tna")) + "]");
    EXPECT_TRUE(boxes().empty());
    EXPECT_FALSE(platform.pointerBusy());
}

TEST_F(LoadAnalysisTest, ReportFormShowsTheFilesFiguresAndFillsTheGridFromItsTable) {
    typeFourRowExample();
    analyze.nameBox().setText("Spleen A");
    analyze.analyze();
    const std::string report = pane();
    ASSERT_TRUE(analyze.saveDocument(path("saved.tna")));

    testing::FreshDocument other;
    Analyze& reopened = other.analyze;
    ASSERT_EQ(reopened.openDocument(path("saved.tna")), LoadOutcome::Loaded);
    EXPECT_EQ(reopened.resultsPane().text(), report + "\r\n");
    EXPECT_EQ(reopened.nameBox().text(), "Spleen A");
    for (int row = 1; row <= 4; ++row) {
        for (int col = 0; col <= 4; ++col) {
            EXPECT_EQ(reopened.grid().cell(col, row), cell(col, row)) << col << "," << row;
        }
    }
    EXPECT_EQ(reopened.grid().dataRowCount(), 4);
}

TEST_F(LoadAnalysisTest, TableFormWithoutANameKeepsTheTypedNameAndTheEmptyPane) {
    analyze.nameBox().setText("typed");
    ASSERT_EQ(open("t.tna", "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                            "1\t\t10\t\t1\t\t5\t\t\r\n\r\n"),
              LoadOutcome::Loaded);
    EXPECT_EQ(analyze.nameBox().text(), "typed");
    EXPECT_EQ(pane(), kEmptyResults);
    expectRow(1, "10", "1", "5", "");
}

TEST_F(LoadAnalysisTest, TextWithHeadingLineInThreeFourAndFiveFields) {
    ASSERT_EQ(open("3.txt", "D\tR\tT\r\n10\t1\t5\r\n20\t2\t5\r\n"), LoadOutcome::Loaded);
    expectHeadings({"Row", "D", "R", "T", "Comments"});
    expectRow(2, "20", "2", "5", "");

    analyze.grid().setCell(0, 0, "Row");
    ASSERT_EQ(open("4.txt", "D\tR\tT\tC\r\n10\t1\t5\tfirst\r\n"), LoadOutcome::Loaded);
    expectHeadings({"Row", "D", "R", "T", "C"});
    expectRow(1, "10", "1", "5", "first");
    expectRow(2, "", "", "", ""); // No at the append question emptied the old rows

    ASSERT_EQ(open("5.txt", "N\tD\tR\tT\tC\r\n7\t10\t1\t5\tx\r\n9\t30\t3\t5\ty\r\n"),
              LoadOutcome::Loaded);
    expectHeadings({"N", "D", "R", "T", "C"});
    expectRow(2, "30", "3", "5", "y"); // row numbers are written anew
}

TEST_F(LoadAnalysisTest, TextWithoutHeadingLineFillsFromRowOne) {
    ASSERT_EQ(open("plain.txt", "10\t1\t5\r\n20\t2\t5\r\n"), LoadOutcome::Loaded);
    expectHeadings(kDefaultHeadings);
    expectRow(1, "10", "1", "5", "");
    expectRow(2, "20", "2", "5", "");
    EXPECT_EQ(pane(), kEmptyResults);
}

TEST_F(LoadAnalysisTest, CommasSeparateFieldsAndExtraCommasBelongToTheComment) {
    ASSERT_EQ(open("c.csv", "Dose,Responses,Tested,Comments\r\n10,1,5,one, two, three\r\n"),
              LoadOutcome::Loaded);
    expectRow(1, "10", "1", "5", "one  two  three");
    // With Tabs as separators a comma is a blank.
    ASSERT_EQ(open("t.txt", "10\t1\t5\tone, two\r\n"), LoadOutcome::Loaded);
    expectRow(1, "10", "1", "5", "one  two");
}

TEST_F(LoadAnalysisTest, OnlyTheBlockBehindTheLastBlankLineIsTheTable) {
    ASSERT_EQ(open("b.txt", "10\t1\t5\r\n\r\n20\t2\t5\r\n30\t3\t5\r\n\r\n\r\n\r\n"),
              LoadOutcome::Loaded);
    expectRow(1, "20", "2", "5", "");
    expectRow(2, "30", "3", "5", "");
    EXPECT_EQ(analyze.grid().dataRowCount(), 2);
    // A line of blanks is no blank line.
    ASSERT_EQ(open("s.txt", "10\t1\t5\r\n  \r\n20\t2\t5\r\n"), LoadOutcome::Loaded);
    expectRow(1, "10", "1", "5", "");
    expectRow(2, "  ", "", "", "");
}

TEST_F(LoadAnalysisTest, BareLineFeedFileHasNoFirstLineSoItsCommasBecomeBlanks) {
    ASSERT_EQ(open("lf.csv", "10,1,5\n20,2,5\n"), LoadOutcome::Loaded);
    expectRow(1, "10 1 5", "", "", "");
    expectRow(2, "20 2 5", "", "", "");
    // Tab-separated rows with bare line feeds still land in their columns, all of them.
    std::string rows;
    for (int i = 1; i <= 300; ++i) {
        rows += std::to_string(i) + "\t1\t5\tnote\n";
    }
    ASSERT_EQ(open("lf.txt", rows), LoadOutcome::Loaded);
    expectRow(2, "2", "1", "5", "note");
    expectRow(300, "300", "1", "5", "note");
    EXPECT_EQ(analyze.grid().rowLimit(), 400);
}

TEST_F(LoadAnalysisTest, AppendAddsRowsBelowAndDropsTheFilesHeadingLine) {
    typeFourRowExample();
    analyze.nameBox().setText("First");
    session.AnalysisFile = path("first.tna");
    platform.queueAnswer(Answer::Yes);
    ASSERT_EQ(open("more.tna", "Analysis Name: Second\r\n\r\nRow\t\tDose\t\tResponses\t"
                               "Tested\t\tComments\r\n1\t\t50000\t\t23\t\t24\t\t\r\n\r\n"),
              LoadOutcome::Loaded);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "APPEND DATA?");
    EXPECT_EQ(boxes()[0].request.text, "Append this data to the existing data?");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::YesNoCancel);
    EXPECT_EQ(boxes()[0].request.icon, platform::Icon::Question);
    EXPECT_EQ(boxes()[0].request.defaultButton, 2);
    EXPECT_EQ(analyze.nameBox().text(), "First / Second");
    expectHeadings(kDefaultHeadings);
    expectRow(4, "30000", "22", "24", "");
    expectRow(5, "50000", "23", "24", "");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    EXPECT_EQ(session.frameCaption.text(), "Titron");
    EXPECT_EQ(session.AnalysisFile, path("more.tna"));
}

TEST_F(LoadAnalysisTest, AppendWithoutHeadingKeepsEveryLine) {
    type({{"1", "1", "2", ""}});
    platform.queueAnswer(Answer::Yes);
    ASSERT_EQ(open("more.txt", "5\t1\t2\r\n6\t1\t2\r\n"), LoadOutcome::Loaded);
    expectRow(2, "5", "1", "2", "");
    expectRow(3, "6", "1", "2", "");
}

TEST_F(LoadAnalysisTest, CancelAtTheAppendQuestionChangesNothing) {
    typeFourRowExample();
    session.AnalysisFile = "/old/path.tna";
    session.AnalysisChanged = session::kChanged;
    platform.queueAnswer(Answer::Cancel);
    EXPECT_EQ(open("x.tna", kTableForm), LoadOutcome::Cancelled);
    EXPECT_EQ(session.AnalysisFile, "/old/path.tna");
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    expectRow(1, "1000", "2", "24", "");
}

TEST_F(LoadAnalysisTest, EmptyFileLeavesEmptyRowsTheEmptyPaneAndTheCaptionOnThePath) {
    typeFourRowExample();
    platform.queueAnswer(Answer::No);
    ASSERT_EQ(open("empty.tna", ""), LoadOutcome::Loaded);
    EXPECT_EQ(analyze.grid().dataRowCount(), 0);
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.frameCaption.text(),
              "Titron - [" + vocabulary::lowerCase(path("empty.tna")) + "]");
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
}

TEST_F(LoadAnalysisTest, RowLimitGrowsInStepsOfHundredPastFifteenHundred) {
    std::string text;
    for (int i = 1; i <= 1600; ++i) {
        text += std::to_string(i * 10) + "\t1\t5\r\n";
    }
    ASSERT_EQ(open("long.txt", text), LoadOutcome::Loaded);
    // 1600 lines + 1 (a line after the last CR LF) + start row 1 + 10 spare: 1700.
    EXPECT_EQ(analyze.grid().rowLimit(), 1700);
    EXPECT_EQ(cell(0, 1700), "1700");
    expectRow(1600, "16000", "1", "5", "");
    EXPECT_EQ(analyze.grid().textColour(2, 1650), (entry::Colour{0, 0, 255}));
    EXPECT_EQ(analyze.grid().firstVisibleRow(), 1);
}

TEST_F(LoadAnalysisTest, FilesThatCannotBeReadEndInTheLoadingFailureBox) {
    auto expectFailure = [&](const std::string& file, const std::string& title) {
        platform.clearTranscript();
        EXPECT_EQ(analyze.openDocument(file), LoadOutcome::Failed) << file;
        ASSERT_EQ(boxes().size(), 1u);
        EXPECT_EQ(boxes()[0].request.title, title);
        EXPECT_EQ(boxes()[0].request.text, "An error occurred loading the data.");
        EXPECT_EQ(boxes()[0].request.icon, platform::Icon::Exclamation);
        EXPECT_FALSE(platform.pointerBusy());
    };
    expectFailure(path("missing.tna"), "Titron ERROR #File not found");
    expectFailure(directory.string(), "Titron ERROR #Path/File access error");
    // The name's line never ends.
    expectFailure(writeFile("noend.tna", "Analysis Name: x"),
                  "Titron ERROR #Invalid procedure call or argument");
    EXPECT_EQ(session.AnalysisFile, path("noend.tna"));
}

// The row limit grows by 100 from 100 until it is at least lines + start row + 10, and the
// row numbers are counted in 16 bits. A file counts one line more than it has line ends, so
// 32,689 lines (the last without a line end) give a limit of 32,700, and 32,690 lines one of
// 32,800, beyond 32,767.
TEST_F(LoadAnalysisTest, RowLimitStopsAtTheSixteenBitRowCounterAndTheProgramGoesOn) {
    std::string text;
    std::vector<std::size_t> lineEnds; // where each line's CR LF stands
    for (int i = 1; i <= 32690; ++i) {
        text += std::to_string(i);
        text += "\t1\t2";
        lineEnds.push_back(text.size());
        text += "\r\n";
    }
    // The first lines of the text, the last of them without its line end.
    const auto firstLines = [&](int lines) {
        return text.substr(0, lineEnds.at(static_cast<std::size_t>(lines - 1)));
    };

    EXPECT_EQ(open("over.txt", firstLines(32690)), LoadOutcome::Failed);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #Overflow");
    EXPECT_EQ(boxes()[0].request.text, "An error occurred loading the data.");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::Ok);
    EXPECT_FALSE(platform.pointerBusy());
    EXPECT_EQ(analyze.grid().rowLimit(), 100); // the grid is as it was
    // The same rows with the last line ended count one line more.
    platform.clearTranscript();
    EXPECT_EQ(open("ended.txt", firstLines(32689) + "\r\n"), LoadOutcome::Failed);
    EXPECT_EQ(boxes().size(), 1u);

    // The program goes on: a five-column file, which numbers its rows anew, loads and
    // analyses.
    platform.clearTranscript();
    ASSERT_EQ(analyze.openDocument(TITRON_EXAMPLES_DIR "/spleen-a.tna"), LoadOutcome::Loaded);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);

    platform.queueAnswer(Answer::No);
    ASSERT_EQ(open("limit.txt", firstLines(32689)), LoadOutcome::Loaded);
    EXPECT_EQ(analyze.grid().rowLimit(), 32700);
    EXPECT_EQ(analyze.grid().dataRowCount(), 32689);
    expectRow(32689, "32689", "1", "2", "");
    EXPECT_EQ(cell(0, 32700), "32700");
    EXPECT_EQ(analyze.grid().textColour(3, 32689), (entry::Colour{0, 0, 255}));
    EXPECT_FALSE(platform.pointerBusy());

    // A 32,000-row file with CR LF line ends loads whole.
    platform.queueAnswer(Answer::No);
    ASSERT_EQ(open("big.txt", firstLines(32000) + "\r\n"), LoadOutcome::Loaded);
    EXPECT_EQ(analyze.grid().dataRowCount(), 32000);
    expectRow(1, "1", "1", "2", "");
    expectRow(32000, "32000", "1", "2", "");
    expectRow(32001, "", "", "", "");
    EXPECT_EQ(analyze.grid().firstVisibleRow(), 1);
}

} // namespace
} // namespace titron::documents
