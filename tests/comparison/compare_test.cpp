// The comparison: the tests of each row against the comparison row, the 120-column report,
// the reader of saved analyses, and the Compare window on the scripted platform (the scan of
// the current directory, adding files, the comparison row following the cursor, deleting
// rows, and the outputs).
#include "comparison/compare.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <gtest/gtest.h>

#include "comparison/compare_rows.h"
#include "comparison/comparison_report.h"
#include "comparison/saved_analysis.h"
#include "entry/key_codes.h"
#include "fuzz/fuzz_platform.h"
#include "tests/documents/analyze_fixture.h"

namespace titron::comparison {
namespace {

constexpr entry::Colour kRed{255, 0, 0};
constexpr entry::Colour kBlue{0, 0, 255};

using documents::testing::analysisText;

// The comparison row against the others, and the report's lines, from the worked row: a
// comparison row of -2.99573 / 0.1000 against -2.30259 / 0.2500.
struct Figures {
    const char* file;
    const char* name;
    const char* logProportion;
    const char* standardError;
};

class CompareStatisticsTest : public ::testing::Test {
  protected:
    void fill(std::initializer_list<Figures> rows, int comparisonRow = 1) {
        int row = 1;
        for (const Figures& f : rows) {
            grid.setCell(column::File, row, f.file);
            grid.setCell(column::Name, row, f.name);
            grid.setCell(column::LogProportion, row, f.logProportion);
            grid.setCell(column::StandardError, row, f.standardError);
            ++row;
        }
        grid.addressCell(1, comparisonRow);
        grid.activate();
        compareRows(grid, comparisonRow);
    }
    std::string tests(int row) const {
        std::string cells;
        for (int col = column::Difference; col <= column::TwoTailed; ++col) {
            cells += grid.cell(col, row);
            cells += '|';
        }
        return cells;
    }

    entry::Grid grid{kCompareColumns, 100};
};

TEST_F(CompareStatisticsTest, WorkedRowAndItsExchange) {
    fill({{"c:\\data\\b.tna", "Base", "-2.99573", "0.1000"},
          {"c:\\data\\a.tna", "Spleen", "-2.30259", "0.2500"}});
    EXPECT_EQ(tests(1), "|||||");
    EXPECT_EQ(tests(2), "-0.69314|0.50000|0.29497 to 0.84756|0.0051|0.0101|");
    EXPECT_TRUE(grid.redraw());
    // Exchanged: the sign of the difference turns, ratio and limits invert, p-values stay.
    compareRows(grid, 2);
    // From the grid's rounded figures: e^0.69314 is 1.99999, not 2.
    EXPECT_EQ(tests(1), "0.69314|1.99999|1.17986 to 3.39019|0.0051|0.0101|");
    EXPECT_EQ(tests(2), "|||||");
}

TEST_F(CompareStatisticsTest, RowsThatDontQualifyStayEmpty) {
    fill({{"a", "", "-2.00000", "0.1000"},
          {"b", "", "0.00000", "0.1000"},    // log proportion 0
          {"c", "", "-3.00000", "0.0000"},   // one standard error 0: E is the other
          {"d", "", "-2.00000", "0.1000"}}); // the same file twice
    EXPECT_EQ(tests(2), "|||||");
    EXPECT_EQ(tests(3), "1.00000|2.71828|2.23446 to 3.30686|0.0001|0.0001|");
    EXPECT_EQ(tests(4), "0.00000|1.00000|0.75791 to 1.31941|0.5000|1.0000|");
    grid.setCell(column::StandardError, 1, "0.0000");
    compareRows(grid, 1);
    EXPECT_EQ(tests(3), "|||||"); // both standard errors 0
    grid.setCell(column::LogProportion, 1, "0.00000");
    compareRows(grid, 1);
    for (int row = 1; row <= 4; ++row) {
        EXPECT_EQ(tests(row), "|||||") << row;
    }
}

// At Z = 5 the approximation gives about 5.7e-7, above 5 the p-value is 0: both show as
// 0.0001 once the 0.00005 is added, so there is no step at 5.
TEST_F(CompareStatisticsTest, PValuesAtAndAboveFiveAndHugeRatios) {
    fill({{"a", "", "-1.00000", "0.1000"},
          {"b", "", "-1.50000", "0.0000"},    // Z exactly 5
          {"c", "", "-1.50001", "0.0000"},    // just above
          {"d", "", "-13.00000", "0.1000"}}); // ratio e^12
    EXPECT_EQ(tests(2).substr(tests(2).size() - 14), "0.0001|0.0001|");
    EXPECT_EQ(tests(3).substr(tests(3).size() - 14), "0.0001|0.0001|");
    EXPECT_EQ(grid.cell(column::Ratio, 4), "162754.79142");
}

TEST_F(CompareStatisticsTest, ReportLinesKeepTheirColumnsAndPushRightWhenTooWide) {
    fill({{"c:\\data\\b.tna", "Base", "-2.99573", "0.1000"},
          {"c:\\data\\a.tna", "Spleen", "-2.30259", "0.2500"},
          {"c:\\users\\lab\\assays\\2026\\en control.tna", "Spleen, day 14 control", "-13.00000",
           "0.1000"}});
    const std::string report = buildReport(grid);
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < report.size();) {
        const std::size_t end = report.find("\r\n", start);
        ASSERT_NE(end, std::string::npos);
        lines.push_back(report.substr(start, end - start));
        start = end + 2;
    }
    ASSERT_EQ(lines.size(), 7U + 2 * 2);
    EXPECT_EQ(lines[0].size(), 118U);
    for (int i : {1, 2, 3, 6, 8, 10}) {
        EXPECT_EQ(lines[static_cast<std::size_t>(i)].size(), 120U) << i;
    }
    EXPECT_EQ(lines[4], "Comparison Row:");
    EXPECT_EQ(lines[5], "c:\\data\\b.tna    Base             -2.99573   0.10000");
    EXPECT_EQ(lines[6], std::string(120, '='));
    EXPECT_EQ(lines[7], "c:\\data\\a.tna    Spleen           -2.30259   0.25000    -0.69314   "
                        "0.50000    0.29497 to 0.84756      0.0051    0.0101");
    EXPECT_EQ(lines[8], std::string(120, '-'));
    // A text as wide as its field stands whole with no blank: the rest moves right.
    EXPECT_EQ(lines[9].substr(0, 34), "~en control.tna  Spleen, day~rol  ");
    EXPECT_EQ(lines[9].substr(34), "-13.00000  0.10000    10.00427   22120.7198916765.59488 to "
                                   "29186.333800.0001    0.0001");
    // A log proportion of 12 characters moves the standard error, which keeps its own field.
    grid.setCell(column::LogProportion, 2, "-12345.67890");
    const std::string wide = buildReport(grid);
    EXPECT_NE(wide.find("\r\nc:\\data\\a.tna    Spleen           -12345.678900.25000    "
                        "-0.69314   0.50000    0.29497 to 0.84756      0.0051    0.0101\r\n"),
              std::string::npos);
}

TEST_F(CompareStatisticsTest, FieldsCutAtSixteenCharactersAndAnEmptyGridHasItsHead) {
    EXPECT_EQ(fileField("c:\\d\\fifteen.ab"), "c:\\d\\fifteen.ab");
    EXPECT_EQ(fileField("c:\\d\\sixteen.abc"), "~\\d\\sixteen.abc");
    EXPECT_EQ(nameField("Fifteen letters"), "Fifteen letters");
    EXPECT_EQ(nameField("Sixteen letters!"), "Sixteen let~rs!");
    const std::string empty = buildReport(grid);
    const std::string tail =
        "Comparison Row:\r\n" + std::string(45, ' ') + "\r\n" + std::string(120, '=') + "\r\n";
    ASSERT_GT(empty.size(), tail.size());
    EXPECT_EQ(empty.substr(empty.size() - tail.size()), tail);
    EXPECT_EQ(empty.size(), 118 + 3 * 120 + 4 * 2 + tail.size());
}

class CompareTest : public documents::testing::AnalyzeFixture {
  protected:
    CompareTest() : compare(platform.services(), session) {
        std::filesystem::current_path(directory);
        session.LastDirectory = directory.string();
    }
    entry::Grid& grid() { return compare.grid(); }
    void moveTo(int row) { grid().userMoveTo(1, row); }
    bool onlyRedRow(int row) {
        for (int r = 1; r <= grid().rowLimit(); ++r) {
            if (grid().textColour(1, r) != (r == row ? kRed : kBlue) ||
                grid().textColour(9, r) != (r == row ? kRed : kBlue)) {
                return false;
            }
        }
        return true;
    }

    Compare compare;
};

TEST(SavedAnalysisTest, ReadsFixedColumnsAndPassesOverFilesWithoutSoundFigures) {
    const auto saved = readSavedAnalysis(analysisText("  Spleen A ", "-9.35040", "0.1726"));
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->name, "  Spleen A ");
    EXPECT_EQ(saved->logProportion, -9.3504);
    EXPECT_EQ(saved->standardError, 0.1726);
    EXPECT_EQ(readSavedAnalysis("Analysis Name: x\r\n\r\n1000\t2\t24\r\n"), std::nullopt);
    std::string noName = analysisText("x", "-1.00000", "0.1000");
    noName.erase(0, noName.find("\r\n") + 2);
    EXPECT_EQ(readSavedAnalysis(noName)->name, "");
    for (std::string bad : {analysisText("x", "", "0.1000"), analysisText("x", "-1.0", "n/a"),
                            analysisText("x", "-1.0", "")}) {
        EXPECT_EQ(readSavedAnalysis(bad), std::nullopt) << bad;
    }
    std::string noLineEnd = analysisText("x", "-1.00000", "0.1000");
    noLineEnd.erase(noLineEnd.find("0.1000") + 6);
    EXPECT_EQ(readSavedAnalysis(noLineEnd), std::nullopt);
}

// 10,000 analysis files and files without results among them: one row a file with results,
// in the order the directory lists them; row 1 is the comparison row. The file cells are
// the directory listed and the file's name, whatever folder an earlier dialog left behind,
// each keeping its case.
TEST_F(CompareTest, EnteringScansTheDirectoryAndLeavingEmptiesTheGrid) {
    // Texts are built by appending: GCC 12 warns falsely on "literal" + to_string here.
    const auto joined = [](const char* front, int number, const char* back) {
        std::string text(front);
        text += std::to_string(number);
        text += back;
        return text;
    };
    constexpr int kFiles = 10000;
    for (int i = 0; i < kFiles; ++i) {
        writeFile(joined("run", i, ".tna"),
                  analysisText(joined("Run ", i, ""), joined("-", 2 + i % 7, ".5"),
                               joined("0.1", i % 10, "")));
    }
    writeFile("table-only.tna", "Analysis Name: x\r\n\r\n1000\t2\t24\r\n");
    writeFile("report.txt", analysisText("not listed", "-1.0", "0.1"));
    session.LastDirectory = "/Lab/Assays";
    session.frameCaption.setText("Titron - [a]");
    compare.show();
    ASSERT_EQ(grid().dataRowCount(), kFiles);
    EXPECT_EQ(grid().rowLimit(), kFiles);
    std::vector<std::string> listed = platform::LocalFiles().list("*.tna");
    listed.erase(std::find(listed.begin(), listed.end(), "table-only.tna"));
    for (int row = 1; row <= kFiles; ++row) {
        const std::string& file = listed[static_cast<std::size_t>(row - 1)];
        const int i = std::stoi(file.substr(3)); // "run<i>.tna"
        ASSERT_EQ(grid().cell(column::File, row), (directory / file).string());
        ASSERT_EQ(grid().cell(column::Name, row), joined("Run ", i, ""));
        ASSERT_EQ(grid().cell(column::LogProportion, row), joined("-", 2 + i % 7, ".50000"));
        ASSERT_EQ(grid().cell(column::StandardError, row), joined("0.1", i % 10, "00"));
    }
    EXPECT_EQ(compare.comparisonRow(), 1);
    EXPECT_TRUE(onlyRedRow(1));
    EXPECT_EQ(grid().cell(column::Difference, 1), "");
    EXPECT_NE(grid().cell(column::TwoTailed, 2), "");
    EXPECT_NE(grid().cell(column::TwoTailed, kFiles), "");
    EXPECT_EQ(session.frameCaption.text(), kCompareCaption);
    EXPECT_FALSE(platform.pointerBusy());

    compare.hide();
    EXPECT_EQ(grid().dataRowCount(), 0);
    EXPECT_EQ(grid().rowLimit(), 100);
    EXPECT_EQ(session.frameCaption.text(), "Titron - [a]");
}

TEST_F(CompareTest, EmptyDirectoryThenAddedFilesAndTheCursorChoosesTheComparisonRow) {
    compare.show();
    EXPECT_EQ(grid().rowLimit(), 0);
    EXPECT_EQ(compare.comparisonRow(), 0);
    platform.queueFileChoice(writeFile("A.tna", analysisText("A", "-2.99573", "0.1000")));
    compare.openFile();
    EXPECT_EQ(grid().cell(column::File, 1), path("A.tna"));
    EXPECT_TRUE(onlyRedRow(1));
    platform.queueFileChoice(writeFile("b.tna", analysisText("B", "-2.30259", "0.2500")));
    compare.openFile();
    platform.queueFileChoice(writeFile("none.tnc", "no results here"));
    compare.openFile();
    ASSERT_EQ(grid().rowLimit(), 2);
    EXPECT_TRUE(onlyRedRow(1));
    EXPECT_EQ(grid().rowHeight(2), 600); // an added row keeps the rows' height
    EXPECT_EQ(grid().cell(column::Ratio, 2), "0.50000");

    moveTo(2);
    EXPECT_TRUE(onlyRedRow(2));
    EXPECT_EQ(grid().cell(column::Ratio, 1), "1.99999");
    EXPECT_EQ(grid().cell(column::Ratio, 2), "");
    grid().userMoveTo(3, 2); // within the row: nothing changes
    EXPECT_TRUE(onlyRedRow(2));
}

TEST_F(CompareTest, DeletingRowsAsksAndMakesRowOneTheComparisonRow) {
    for (const char* name : {"a.tna", "b.tna", "c.tna"}) {
        writeFile(name, analysisText(name, "-2.00000", "0.1000"));
    }
    compare.show();
    moveTo(3);
    grid().userSelect({-1, 3, -1, 3});
    platform.queueAnswer(platform::Answer::No);
    compare.editDelete();
    EXPECT_EQ(boxes().back().request.text, "Delete 1 rows?");
    EXPECT_EQ(boxes().back().request.title, "DELETE ROWS?");
    EXPECT_EQ(grid().rowLimit(), 3);

    // Rows selected upwards count from the top: rows 2 and 3.
    grid().userSelect({-1, 3, -1, 2});
    platform.queueAnswer(platform::Answer::No);
    compare.editDelete();
    EXPECT_EQ(boxes().back().request.text, "Delete 2 rows?");

    grid().clearSelection();
    compare.editDelete(); // the current row, row 3, with the default Yes
    EXPECT_EQ(boxes().back().request.text, "Delete the current row?");
    EXPECT_EQ(grid().rowLimit(), 2);
    EXPECT_TRUE(onlyRedRow(1));

    // The Delete key takes whole rows without asking, and nothing else.
    const std::size_t asked = boxes().size();
    grid().userSelect({1, 1, 2, 2});
    grid().userKeyDown(entry::key::Delete, 0);
    EXPECT_EQ(grid().rowLimit(), 2);
    grid().userSelect({-1, 2, -1, 1});
    grid().userKeyDown(entry::key::Delete, 0);
    EXPECT_EQ(grid().rowLimit(), 0);
    EXPECT_EQ(boxes().size(), asked);
    compare.editDelete(); // nothing to delete
    EXPECT_EQ(grid().rowLimit(), 0);
}

TEST_F(CompareTest, SavePrintAndCopyTakeTheGridOut) {
    writeFile("a.tna", analysisText("A", "-2.99573", "0.1000"));
    writeFile("b.tna", analysisText("B", "-2.30259", "0.2500"));
    compare.show();
    moveTo(2);
    platform.queueFileChoice(path("cmp.tnc"));
    compare.saveFile();
    EXPECT_EQ(readFile("cmp.tnc"), buildReport(grid()) + "\r\n");
    EXPECT_NE(platform.transcript().end(),
              std::find(platform.transcript().begin(), platform.transcript().end(),
                        "save dialog [Titron Comparison File] flags 34822 ext tnc filter Titron "
                        "Comparison Files (*.tnc)|*.tnc|Text Files (*.txt)|*.txt|All Files "
                        "(*.*)|*.* file  -> " +
                            path("cmp.tnc")));
    // A cancelled save empties the dialog's name and writes nothing.
    compare.saveFile();
    EXPECT_EQ(compare.commonDialog().fileName, "");
    // A failed one says why, as the analysis's save does.
    std::filesystem::create_directory(path("taken.tnc"));
    platform.queueFileChoice(path("taken.tnc"));
    compare.saveFile();
    ASSERT_FALSE(boxes().empty());
    EXPECT_EQ(boxes().back().request.title, "SAVE FAILED");
    EXPECT_EQ(boxes().back().request.text, "The file " + path("taken.tnc") +
                                               " could not be written: a folder, not a regular "
                                               "file.");

    platform.clearTranscript();
    platform.queuePrinterChoice(true);
    compare.printFile();
    const auto& log = platform.transcript();
    ASSERT_GE(log.size(), 14U);
    const std::vector<std::string> head(log.begin() + 2, log.begin() + 10);
    EXPECT_EQ(head, (std::vector<std::string>{"printer left origin 0", "printer landscape",
                                              "printer font Arial", "printer size 16",
                                              "printer emphasis on",
                                              std::string("printer print ") + kCompareCaption,
                                              "printer size 10", "printer emphasis off"}));
    EXPECT_EQ(log[log.size() - 4], "printer print " + buildReport(grid()));

    compare.copyFile();
    EXPECT_EQ(platform.text().substr(0, 22), "Filename\tAnalysis Name");
    const std::string copied = platform.text();
    EXPECT_EQ(std::count(copied.begin(), copied.end(), '\n'), 3); // headings and two rows
    // The fixed cells copy with Ctrl+C but don't cut or paste.
    const std::string name = grid().cell(column::Name, 1); // rows stand as the scan listed them
    grid().userSelect({1, 1, 2, 1});
    grid().userKeyDown(entry::key::X, entry::CtrlKey);
    grid().userKeyDown(entry::key::V, entry::CtrlKey);
    EXPECT_EQ(grid().cell(column::Name, 1), name);
    grid().userKeyDown(entry::key::C, entry::CtrlKey);
    EXPECT_EQ(platform.text(), grid().cell(column::File, 1) + "\t" + name + "\r\n");
}

// More analyses than the grid has rows (files held in memory): the grid fills, the files
// beyond it are left out, and the window goes on.
TEST(CompareCapacityTest, ADirectoryBeyondTheGridsRowsFillsItAndLeavesTheRestOut) {
    fuzz::FuzzPlatform p;
    session::Session session;
    Compare compare(p.services, session);
    const std::string text = analysisText("Same", "-2.00000", "0.1000");
    char name[32];
    for (int i = 0; i <= entry::Grid::kMaxRowLimit; ++i) {
        std::snprintf(name, sizeof name, "/fuzz/a%05d.tna", i);
        p.files.writeAll(name, text);
    }
    ASSERT_NO_THROW(compare.show());
    EXPECT_EQ(compare.grid().dataRowCount(), entry::Grid::kMaxRowLimit);
    EXPECT_EQ(compare.grid().cell(2, entry::Grid::kMaxRowLimit), "Same");
    EXPECT_EQ(compare.addFile("/fuzz/a00000.tna"), AddOutcome::Full);
    EXPECT_FALSE(p.scripted.pointerBusy());
    compare.hide();
}

} // namespace
} // namespace titron::comparison
