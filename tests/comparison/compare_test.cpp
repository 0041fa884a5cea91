// The Compare window on the scripted platform: the scan of the current directory, adding
// files, the comparison row following the cursor, deleting rows, and the outputs.
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

// An analysis file's name line and results line, the figures in their fixed columns.
std::string analysisText(const std::string& name, const std::string& logProportion,
                         const std::string& standardError) {
    std::string line = "    Log Proportion:";
    line += std::string(23 - logProportion.size(), ' ') + logProportion;
    line += "  S.E. of Log Prop.: " + standardError;
    return "Analysis Name: " + name + "\r\n\r\n" + line + "\r\n\r\nEND\r\n";
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
// in the order the directory lists them; row 1 is the comparison row.
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
    session.frameCaption.setText("Titron - [a]");
    compare.show();
    ASSERT_EQ(grid().dataRowCount(), kFiles);
    EXPECT_EQ(grid().rowLimit(), kFiles);
    std::vector<std::string> listed = platform::LocalFiles().list("*.tna");
    listed.erase(std::find(listed.begin(), listed.end(), "table-only.tna"));
    ASSERT_EQ(listed.size(), static_cast<std::size_t>(kFiles));
    for (int row : {1, 2, kFiles / 2, kFiles - 1, kFiles}) {
        const std::string& name = listed[static_cast<std::size_t>(row - 1)];
        EXPECT_EQ(grid().cell(column::File, row),
                  vocabulary::lowerCase(directory.string()) + "/" + name);
        std::string expectedName("Run ");
        expectedName.append(name, 3, name.size() - 7);
        EXPECT_EQ(grid().cell(column::Name, row), expectedName);
        const int i = std::stoi(name.substr(3));
        EXPECT_EQ(grid().cell(column::LogProportion, row), joined("-", 2 + i % 7, ".50000"));
        EXPECT_EQ(grid().cell(column::StandardError, row), joined("0.1", i % 10, "00"));
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
    platform.queueFileChoice(writeFile("a.tna", analysisText("A", "-2.99573", "0.1000")));
    compare.openFile();
    EXPECT_EQ(grid().cell(column::File, 1), vocabulary::lowerCase(path("a.tna")));
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
    grid().userSelect({-1, 1, -1, 2});
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

TEST_F(CompareTest, ResizeSharesTheWidthAboveThreeThousandTwips) {
    const int before = grid().colWidth(1);
    compare.resize(3000);
    EXPECT_EQ(grid().colWidth(1), before);
    compare.resize(15000);
    const std::vector<int> expected{2142, 1875, 1000, 1000, 1500, 1500, 1875, 1500, 1500};
    for (int col = 1; col <= 9; ++col) {
        EXPECT_EQ(grid().colWidth(col), expected[static_cast<std::size_t>(col - 1)]) << col;
    }
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
