// Analysis files written and read: the table form and the report form, plain text files of
// rows, appending, the row limit, very long texts, and files that can't be read.
#include <unistd.h>

#include <gtest/gtest.h>

#include "analyze_fixture.h"
#include "comparison/compare.h"
#include "comparison/compare_rows.h"
#include "vocabulary/number_mask.h"

namespace titron::documents {
namespace {

using platform::Answer;
using testing::AnalyzeFixture;

// The table form of a named two-row document with a file, as a save writes it.
const std::string kTableForm = "Titron Analysis File: [C:\\Data\\Spleen.tna]\r\n\r\n"
                               "Analysis Name: Spleen A\r\n\r\n"
                               "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                               "1\t\t1000\t\t5\t\t24\t\t\r\n"
                               "2\t\t100000000\t23\t\t24\t\tsecond plate\r\n"
                               "\r\n";
const std::string kHeadings = "Row|Dose|Responses|Tested|Comments\n";

class AnalysisFileTest : public AnalyzeFixture {
  protected:
    LoadOutcome open(const std::string& name, const std::string& bytes) {
        return analyze.openDocument(writeFile(name, bytes));
    }
    // Opens a file of that text (not appended) and gives the rows it left in the table.
    std::string loaded(const std::string& name, const std::string& bytes) {
        EXPECT_EQ(open(name, bytes), LoadOutcome::Loaded) << name;
        return rows(1, analyze.grid().dataRowCount());
    }
    std::string caption() const { return session.frameCaption.text(); }
    std::string captionOf(const std::string& name) const { return "Titron - [" + path(name) + "]"; }
};

TEST_F(AnalysisFileTest, TableFormIsWrittenAndReadBackWholeButForCommasAndEmptyCells) {
    type({{"1000", "5", "24", ""}, {"100000000", "23", "24", "second plate"}});
    analyze.nameBox().setText("Spleen A");
    session.AnalysisFile = "C:\\Data\\Spleen.tna";
    ASSERT_TRUE(analyze.saveDocument(path("out.tna")));
    EXPECT_EQ(readFile("out.tna"), kTableForm);
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_EQ(session.AnalysisFile, path("out.tna"));
    EXPECT_EQ(caption(), captionOf("out.tna"));

    testing::FreshDocument other;
    other.session.AnalysisChanged = session::kChanged;
    ASSERT_EQ(other.analyze.openDocument(path("out.tna")), LoadOutcome::Loaded);
    EXPECT_EQ(other.analyze.nameBox().text(), "Spleen A");
    EXPECT_EQ(other.analyze.resultsPane().text(),
              kTableForm.substr(kTableForm.find("Analysis Name: ")));
    EXPECT_EQ(other.analyze.grid().dataRowCount(), 2);
    for (int cellAt = 0; cellAt < 3 * 5; ++cellAt) { // headings and both rows, cell by cell
        EXPECT_EQ(other.analyze.grid().cell(cellAt % 5, cellAt / 5), cell(cellAt % 5, cellAt / 5));
    }
    EXPECT_EQ(other.session.AnalysisChanged, session::kUnchanged);
    EXPECT_TRUE(other.platform.boxes().empty());

    // Without file or name it is just the table, and nothing without rows.
    type({{"10", "1", "5", ""}, {"", "", "", ""}});
    analyze.nameBox().setText("");
    session.AnalysisFile = "";
    EXPECT_EQ(analyze.composeFileText(), "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                                         "1\t\t10\t\t1\t\t5\t\t\r\n");
    type({{"", "", "", ""}});
    EXPECT_EQ(analyze.composeFileText(), "");

    // Read back, a comma comes back as a blank and the cells right of an empty one move left.
    type({{"10", "1", "5", "a, b"}, {"20", "", "5", "gap"}});
    ASSERT_TRUE(analyze.saveDocument(path("r.tna")));
    platform.queueAnswer(Answer::No);
    ASSERT_EQ(analyze.openDocument(path("r.tna")), LoadOutcome::Loaded);
    EXPECT_EQ(rows(1, 2), "1|10|1|5|a  b\n2|20|5|gap|\n");
}

TEST_F(AnalysisFileTest, ReportFormIsThePaneTextAndEachSaveOfALoadedTextAddsOneLineEnd) {
    typeFourRowExample();
    analyze.analyze(); // without a name: the report starts "Analysis Name: " and a line end
    ASSERT_TRUE(analyze.saveDocument(path("a.tna")));
    const std::string first = readFile("a.tna");
    EXPECT_EQ(first, pane() + "\r\n");
    EXPECT_EQ(first.rfind("Analysis Name: \r\nIterations:", 0), 0u);

    ASSERT_EQ(analyze.openDocument(path("a.tna")), LoadOutcome::Loaded);
    ASSERT_TRUE(analyze.saveDocument(path("b.tna")));
    EXPECT_EQ(readFile("b.tna"), first + "\r\n");
}

// A save writes a hidden file beside the old one and renames it over it.
TEST_F(AnalysisFileTest, SaveReplacesAFileWholeAndAFailedWriteLeavesWhatWasThere) {
    writeFile("x.tna", std::string(5000, 'z'));
    type({{"10", "1", "5", ""}});
    const std::string text = analyze.composeFileText();
    ASSERT_TRUE(analyze.saveDocument(path("x.tna")));
    EXPECT_EQ(readFile("x.tna"), text + "\r\n");

    // A directory in the file's place: the new text cannot replace it.
    std::filesystem::create_directory(path("taken.tna"));
    writeFile("taken.tna/inside.txt", "old contents");
    std::string failure;
    EXPECT_FALSE(analyze.saveDocument(path("taken.tna"), &failure));
    EXPECT_EQ(failure, "a folder, not a regular file");
    EXPECT_EQ(readFile("taken.tna/inside.txt"), "old contents");
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory)) {
        ++entries;
    }
    EXPECT_EQ(entries, 2) << "the half-written file must not stay behind";
    // The document keeps its path and caption.
    EXPECT_EQ(session.AnalysisFile, path("x.tna"));
    EXPECT_EQ(caption(), captionOf("x.tna"));
}

TEST_F(AnalysisFileTest, TableFormWithoutANameKeepsTheTypedNameAndTheEmptyPane) {
    analyze.nameBox().setText("typed");
    EXPECT_EQ(loaded("t.tna", "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                              "1\t\t10\t\t1\t\t5\t\t\r\n\r\n"),
              "1|10|1|5|\n");
    EXPECT_EQ(analyze.nameBox().text(), "typed");
    EXPECT_EQ(pane(), kEmptyResults);
}

// Plain text files of rows; a file with rows in the table is loaded in their place.
TEST_F(AnalysisFileTest, TextFilesOfThreeFourOrFiveFieldsWithOrWithoutAHeadingLine) {
    EXPECT_EQ(loaded("plain.txt", "10\t1\t5\r\n20\t2\t5\r\n"), "1|10|1|5|\n2|20|2|5|\n");
    EXPECT_EQ(rows(0, 0), "Row|Dose|Responses|Tested|Comments\n");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(loaded("3.txt", "D\tR\tT\r\n10\t1\t5\r\n20\t2\t5\r\n"), "1|10|1|5|\n2|20|2|5|\n");
    EXPECT_EQ(rows(0, 0), "Row|D|R|T|Comments\n");
    EXPECT_EQ(loaded("4.txt", "D\tR\tT\tC\r\n10\t1\t5\tfirst\r\n"), "1|10|1|5|first\n");
    EXPECT_EQ(rows(0, 0), "Row|D|R|T|C\n");
    // Five fields: the first heads the row numbers, which are written anew.
    EXPECT_EQ(loaded("5.txt", "N\tD\tR\tT\tC\r\n7\t10\t1\t5\tx\r\n9\t30\t3\t5\ty\r\n"),
              "1|10|1|5|x\n2|30|3|5|y\n");
    EXPECT_EQ(rows(0, 0), "N|D|R|T|C\n");
}

TEST_F(AnalysisFileTest, CommasBlankLinesAndBareLineFeeds) {
    // Extra commas belong to the comment; with Tabs as separators a comma is a blank.
    EXPECT_EQ(loaded("c.csv", "Dose,Responses,Tested,Comments\r\n10,1,5,one, two, three\r\n"),
              "1|10|1|5|one  two  three\n");
    EXPECT_EQ(loaded("t.txt", "10\t1\t5\tone, two\r\n"), "1|10|1|5|one  two\n");
    // Only the block behind the last blank line is the table; a line of blanks is no blank line.
    EXPECT_EQ(loaded("b.txt", "10\t1\t5\r\n\r\n20\t2\t5\r\n30\t3\t5\r\n\r\n\r\n\r\n"),
              "1|20|2|5|\n2|30|3|5|\n");
    EXPECT_EQ(loaded("s.txt", "10\t1\t5\r\n  \r\n20\t2\t5\r\n"), "1|10|1|5|\n2|  |||\n3|20|2|5|\n");
    // A file of bare line feeds has no first line, so its commas become blanks...
    EXPECT_EQ(loaded("lf.csv", "10,1,5\n20,2,5\n"), "1|10 1 5|||\n2|20 2 5|||\n");
    // ...but Tab-separated rows still land in their columns, all of them.
    std::string text;
    for (int i = 1; i <= 300; ++i) {
        text += std::to_string(i) + "\t1\t5\tnote\n";
    }
    ASSERT_EQ(open("lf.txt", text), LoadOutcome::Loaded);
    EXPECT_EQ(rows(300, 300), "300|300|1|5|note\n");
    EXPECT_EQ(analyze.grid().dataRowCount(), 300);
    EXPECT_EQ(analyze.grid().rowLimit(), 400);
}

TEST_F(AnalysisFileTest, AppendAddsRowsBelowNoReplacesThemAndCancelChangesNothing) {
    typeFourRowExample();
    analyze.nameBox().setText("First");
    session.AnalysisFile = path("first.tna");
    platform.queueAnswer(Answer::Yes);
    ASSERT_EQ(open("more.tna", "Analysis Name:   Second  \r\n\r\nRow\t\tDose\t\tResponses\t"
                               "Tested\t\tComments\r\n1\t\t50000\t\t23\t\t24\t\t\r\n\r\n"),
              LoadOutcome::Loaded);
    expectBox("APPEND DATA?", "Append this data to the existing data?");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::YesNoCancel);
    EXPECT_EQ(boxes()[0].request.icon, platform::Icon::Question);
    EXPECT_EQ(boxes()[0].request.defaultButton, 2);
    EXPECT_EQ(analyze.nameBox().text(), "First / Second"); // the file's name trimmed
    EXPECT_EQ(rows(0, 0) + rows(4, 6), kHeadings + "4|30000|22|24|\n5|50000|23|24|\n6||||\n");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    EXPECT_EQ(caption(), "Titron"); // the caption shows no file, though the file is kept
    EXPECT_EQ(session.AnalysisFile, path("more.tna"));

    // Without a heading line every line is a row.
    platform.queueAnswer(Answer::Yes);
    ASSERT_EQ(open("rows.txt", "5\t1\t2\r\n6\t1\t2\r\n"), LoadOutcome::Loaded);
    EXPECT_EQ(rows(6, 7), "6|5|1|2|\n7|6|1|2|\n");

    // Cancel at the question changes nothing; an empty file loaded in place empties all.
    platform.queueAnswer(Answer::Cancel);
    EXPECT_EQ(open("x.tna", kTableForm), LoadOutcome::Cancelled);
    EXPECT_EQ(session.AnalysisFile, path("rows.txt"));
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    EXPECT_EQ(rows(7, 7), "7|6|1|2|\n");
    platform.queueAnswer(Answer::No);
    ASSERT_EQ(open("empty.tna", ""), LoadOutcome::Loaded);
    EXPECT_EQ(analyze.grid().dataRowCount(), 0);
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(caption(), captionOf("empty.tna"));
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);

    // Below 20 rows, 86 lines fit only when the limit grows by the start row too.
    type(std::vector<testing::Row>(20, {"1", "1", "2", ""}));
    std::string lines;
    for (int i = 1; i <= 86; ++i) {
        lines += std::to_string(i) + "\t1\t2\r\n";
    }
    platform.queueAnswer(Answer::Yes);
    ASSERT_EQ(open("86.txt", lines), LoadOutcome::Loaded);
    EXPECT_EQ(rows(106, 106), "106|86|1|2|\n");
}

// Whatever the path, a file that can't be taken ends in the loading failure box and the
// program goes on.
TEST_F(AnalysisFileTest, FilesThatCannotBeReadEndInTheLoadingFailureBox) {
    const std::string locked = writeFile("locked.tna", "1000\t2\t24\r\n");
    std::filesystem::permissions(locked, std::filesystem::perms::none);
    std::vector<std::pair<std::string, std::string>> cases{
        {path("missing.tna"), "Titron ERROR #File not found"},
        {directory.string(), "Titron ERROR #Path/File access error"},
    };
    if (::geteuid() != 0) { // root reads it anyway
        cases.emplace_back(locked, "Titron ERROR #Permission denied");
    }
    // The name's line never ends.
    cases.emplace_back(writeFile("noend.tna", "Analysis Name: x"),
                       "Titron ERROR #Invalid procedure call or argument");
    // Refused before anything is read: a FIFO, which would wait for a writer, and a file one
    // byte over the limit (sparse, so nothing is written).
    const std::string fifo = makeFifo("fifo.tna");
    cases.emplace_back(fifo, "Titron ERROR #Path/File access error");
    const std::string large = writeFile("large.txt", "");
    std::filesystem::resize_file(large, platform::kLargestReadableFile + 1);
    cases.emplace_back(large, "Titron ERROR #File larger than 64 MB");
    for (const auto& [file, title] : cases) {
        platform.clearTranscript();
        LoadOutcome outcome = LoadOutcome::Loaded;
        EXPECT_TRUE(returnsAtOnce(fifo, [&] { outcome = analyze.openDocument(file); })) << file;
        EXPECT_EQ(outcome, LoadOutcome::Failed) << file;
        expectBox(title, "An error occurred loading the data.");
        EXPECT_EQ(boxes()[0].request.icon, platform::Icon::Exclamation);
        EXPECT_FALSE(platform.pointerBusy());
    }
    EXPECT_EQ(session.AnalysisFile, cases.back().first);
    std::filesystem::permissions(locked, std::filesystem::perms::owner_all);
    ASSERT_EQ(analyze.openDocument(locked), LoadOutcome::Loaded);
    EXPECT_EQ(cell(1, 1), "1000");
}

// Spreadsheets and editors start a UTF-8 file with a byte-order mark: it is passed over, so
// the first row stays a row and doesn't become the headings.
TEST_F(AnalysisFileTest, ByteOrderMarkAtTheStartIsPassedOver) {
    const std::string mark = "\xEF\xBB\xBF";
    ASSERT_EQ(open("rows.txt", mark + "1000\t2\t24\r\n3000\t6\t24\r\n"), LoadOutcome::Loaded);
    EXPECT_EQ(rows(0, 2), kHeadings + "1|1000|2|24|\n2|3000|6|24|\n");
}

// The row limit grows by 100 from 100 until it is at least lines + start row + 10, and the
// row numbers are counted in 16 bits. A file counts one line more than it has line ends, so
// 32,689 lines (the last without a line end) give a limit of 32,700, and 32,690 lines one of
// 32,800, beyond 32,767.
TEST_F(AnalysisFileTest, RowLimitStopsAtTheSixteenBitRowCounterAndTheProgramGoesOn) {
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
    expectBox("Titron ERROR #Overflow", "An error occurred loading the data.");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::Ok);
    EXPECT_FALSE(platform.pointerBusy());
    EXPECT_EQ(analyze.grid().rowLimit(), 100); // the grid is as it was
    // The same rows with the last line ended count one line more.
    platform.clearTranscript();
    EXPECT_EQ(open("ended.txt", firstLines(32689) + "\r\n"), LoadOutcome::Failed);
    EXPECT_EQ(boxes().size(), 1u);

    // The program goes on: the largest file loads whole.
    platform.clearTranscript();
    ASSERT_EQ(open("limit.txt", firstLines(32689)), LoadOutcome::Loaded);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(analyze.grid().rowLimit(), 32700);
    EXPECT_EQ(analyze.grid().dataRowCount(), 32689);
    EXPECT_EQ(rows(1, 1) + rows(32689, 32689), "1|1|1|2|\n32689|32689|1|2|\n");
    EXPECT_EQ(cell(0, 32700), "32700");
    EXPECT_EQ(analyze.grid().textColour(3, 32689), kDataTextColour);
    EXPECT_FALSE(platform.pointerBusy());
}

// A 100,000-character name and comments go whole through the report, a save, the reopened
// document and the comparison's reader. Patterns, not one repeated letter, so that a
// shifted or cut text shows.
TEST_F(AnalysisFileTest, HundredThousandCharacterNameAndCommentsKeepWhole) {
    const auto pattern = [](const std::string& unit) {
        std::string text;
        while (text.size() < 100000) {
            text += unit;
        }
        text.resize(100000);
        return text;
    };
    const std::string name = pattern("Spleen 0123456789 ");
    const std::string firstComment = pattern("plate one. ");
    const std::string secondComment = pattern("plate two; ");
    type({{"1000", "2", "24", firstComment}, {"3000", "6", "24", secondComment}});
    analyze.nameBox().setText(name);
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    const std::string report = pane();
    EXPECT_EQ(report.find("Analysis Name: " + name + "\r\n"), 0u);
    EXPECT_NE(report.find("\t" + firstComment + "\r\n"), std::string::npos);
    EXPECT_NE(report.find("\t" + secondComment + "\r\n"), std::string::npos);

    ASSERT_TRUE(analyze.saveDocument(path("long.tna")));
    testing::FreshDocument other;
    Analyze& reopened = other.analyze;
    ASSERT_EQ(reopened.openDocument(path("long.tna")), LoadOutcome::Loaded);
    EXPECT_TRUE(other.platform.boxes().empty());
    EXPECT_EQ(reopened.nameBox().text(), name);
    EXPECT_EQ(reopened.resultsPane().text(), report + "\r\n");
    EXPECT_EQ(reopened.grid().cell(4, 1), firstComment);
    EXPECT_EQ(reopened.grid().cell(4, 2), secondComment);
    EXPECT_EQ(reopened.grid().cell(3, 2), "24");

    comparison::Compare compare(platform.services(), session);
    compare.beginEmpty();
    ASSERT_EQ(compare.addFile(path("long.tna")), comparison::AddOutcome::Added);
    EXPECT_EQ(compare.grid().cell(comparison::column::Name, 1), name);
    EXPECT_EQ(compare.grid().cell(comparison::column::LogProportion, 1),
              vocabulary::formatMask(run.figures->logProportion, "##0.00000"));
}

} // namespace
} // namespace titron::documents
