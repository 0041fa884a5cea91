// The pop-up menu's block commands: they work on the selection and ask nothing.
#include <string>

#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

class BlockCommandsTest : public AnalyzeFixture {
  protected:
    entry::Grid& grid() { return analyze.grid(); }
};

TEST_F(BlockCommandsTest, FillCopiesTheTopCellDownTheBlockOnly) {
    grid().setCell(1, 2, "100");
    grid().setCell(1, 4, "7");
    grid().setCell(1, 7, "under");
    grid().userSelect({1, 2, 1, 6});
    analyze.dropFill();
    for (int row = 2; row <= 6; ++row) {
        EXPECT_EQ(cell(1, row), "100") << row;
    }
    EXPECT_EQ(cell(1, 7), "under");
    EXPECT_EQ(cell(2, 3), "");

    // An empty top cell empties the rows under it.
    grid().userSelect({1, 1, 1, 4});
    analyze.dropFill();
    EXPECT_EQ(cell(1, 3), "");
    EXPECT_EQ(cell(1, 6), "100");
}

TEST_F(BlockCommandsTest, NoneOfThemMarksTheDocumentOrTouchesTheReport) {
    const std::string report(60, 'r');
    analyze.resultsPane().setText(report);
    session.AnalysisChanged = session::kUnchanged;
    type({{"1", "2", "3", "a"}, {"4", "5", "6", "b"}});
    grid().userSelect({1, 1, 2, 2});
    analyze.dropCopy();
    EXPECT_EQ(platform.text(), "1\t2\r\n4\t5\r\n");
    analyze.dropDelete();
    EXPECT_EQ(cell(1, 1), "");
    EXPECT_EQ(cell(2, 2), "");
    EXPECT_EQ(cell(3, 1), "3");
    grid().userSelect({3, 1, 4, 1});
    analyze.dropCut();
    EXPECT_EQ(platform.text(), "3\ta\r\n");
    EXPECT_EQ(cell(4, 1), "");
    grid().userMoveTo(1, 5); // no block: paste goes to the active cell
    analyze.dropPaste();
    EXPECT_EQ(cell(1, 5), "3");
    EXPECT_EQ(cell(2, 5), "a");
    grid().userSelect({1, 5, 1, 6});
    analyze.dropFill();
    EXPECT_EQ(pane(), report);
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(BlockCommandsTest, PasteOverWholeRowsKeepsTheRowNumbers) {
    platform.setText("1\t2\t3\tc\r\n4\t5\t6\td\r\n");
    grid().userSelect({-1, 3, -1, 4});
    analyze.dropPaste();
    EXPECT_EQ(cell(1, 3), "1");
    EXPECT_EQ(cell(4, 4), "d");
    EXPECT_EQ(cell(0, 3), "3");
    EXPECT_EQ(cell(0, 4), "4");
}

TEST_F(BlockCommandsTest, PastingAnyShapeOfTextStaysInsideTheGrid) {
    // Ragged rows, lone CR and LF, far too many columns and rows, an empty last line.
    std::string text = "a\tb\tc\td\te\tf\tg\rh\n\n\t\t\t\t\t\t\t\t\t\tz\r\n";
    for (int row = 0; row < 500; ++row) {
        text += std::to_string(row) + "\t\xff\t\r\n";
    }
    platform.setText(text);
    grid().userMoveTo(3, 98);
    analyze.dropPaste();
    EXPECT_EQ(grid().rowLimit(), 200); // the move to row 98 grew the table; paste doesn't
    EXPECT_EQ(cell(3, 98), "a");
    EXPECT_EQ(cell(4, 98), "b");
    EXPECT_EQ(cell(3, 99), "h");
    EXPECT_EQ(cell(3, 100), "");
    EXPECT_EQ(cell(3, 200), "98");
    EXPECT_EQ(cell(4, 200), "\xff");
    EXPECT_EQ(cell(0, 98), "98");
}

} // namespace
} // namespace titron::documents::testing
