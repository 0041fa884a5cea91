#include "entry/grid.h"

#include "platform/scripted_platform.h"
#include "tests/failure_of.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace titron::entry {
namespace {

constexpr Colour kBlue{0, 0, 255};

using titron::testing::failureOf;

TEST(GridTest, ClipEndsEveryRowReadWithCrLfAndWritesRowsEndedByCrLfLoneCrOrLoneLf) {
    Grid grid(4, 3);
    grid.addressCell(0, 0);
    grid.setClip("Row\tDose\tResp\tTested\tNote\r\n1\t10\t2\t5\tx\r\n2\t20\t3\t5\r\n");
    grid.addressBlock(0, 0, 4, 2); // headings included, block mode off
    EXPECT_EQ(grid.clip(), "Row\tDose\tResp\tTested\tNote\r\n1\t10\t2\t5\tx\r\n2\t20\t3\t5\t\r\n");
    grid.addressBlock(-1, -1, -1, -1); // data cells only, all rows up to the limit
    EXPECT_EQ(grid.clip(), "10\t2\t5\tx\r\n20\t3\t5\t\r\n\t\t\t\r\n");
    grid.addressBlock(2, 2, 1, 1); // bounds in any order
    EXPECT_EQ(grid.clip(), "10\t2\r\n20\t3\r\n");

    Grid other(2, 6);
    other.addressCell(1, 1);
    other.setClip("a\tb\r\nc\rd\ne\t\r\n"); // no extra row after the last line end
    other.addressBlock(1, 1, 2, 5);
    EXPECT_EQ(other.clip(), "a\tb\r\nc\t\r\nd\t\r\ne\t\r\n\t\r\n");
    EXPECT_EQ(other.dataRowCount(), 4);
}

TEST(GridTest, DataRowCountIgnoresRowNumbersAndFollowsClearing) {
    Grid grid(4, 10);
    for (int r = 1; r <= 10; ++r) {
        grid.setCell(0, r, std::to_string(r));
    }
    EXPECT_EQ(grid.dataRowCount(), 0);
    grid.setCell(4, 7, "note");
    grid.setCell(1, 3, "5");
    EXPECT_EQ(grid.dataRowCount(), 7);
    grid.setCell(4, 7, "");
    EXPECT_EQ(grid.dataRowCount(), 3);
    grid.setCell(2, 3, "x");
    grid.addressCell(1, 3);
    grid.clear(); // one of two filled cells of row 3
    EXPECT_EQ(grid.dataRowCount(), 3);
    grid.addressBlock(1, -1, 4, -1);
    grid.setBlockMode(true);
    grid.clear();
    EXPECT_EQ(grid.dataRowCount(), 0);
    EXPECT_EQ(grid.cell(0, 10), "10");
}

TEST(GridTest, ClearAndTextColourActOnTheBlockOnlyInBlockMode) {
    Grid grid(3, 3);
    grid.addressCell(1, 1);
    grid.setClip("a\tb\tc\r\nd\te\tf\r\n");
    grid.addressBlock(1, 1, 2, 2);
    grid.setTextColour(kBlue);
    grid.clear();
    EXPECT_EQ(grid.cell(1, 1), "");
    EXPECT_EQ(grid.cell(2, 2), "e");
    EXPECT_EQ(grid.textColour(1, 1), kBlue);
    EXPECT_EQ(grid.textColour(2, 2), kDefaultTextColour);
    grid.setBlockMode(true);
    grid.setTextColour(kBlue);
    grid.clear();
    EXPECT_EQ(grid.cell(2, 2), "");
    EXPECT_EQ(grid.cell(3, 1), "c");
    EXPECT_EQ(grid.textColour(2, 2), kBlue);
    EXPECT_EQ(grid.textColour(3, 2), kDefaultTextColour);
}

TEST(GridTest, RowLimitAndColumnWidthsStayWithinTheGrid) {
    Grid grid(2, 3);
    grid.setCell(1, 3, "x");
    grid.setRowLimit(2);
    EXPECT_EQ(grid.dataRowCount(), 0);
    grid.setRowLimit(5);
    EXPECT_EQ(grid.cell(1, 3), "");
    EXPECT_EQ(failureOf([&] { grid.setRowLimit(Grid::kMaxRowLimit + 1); }), 6);
    EXPECT_EQ(failureOf([&] { grid.setRowLimit(-1); }), 5);
    EXPECT_EQ(grid.rowLimit(), 5);
    grid.setRowLimit(Grid::kMaxRowLimit);
    grid.addressCell(1, 1);
    EXPECT_EQ(failureOf([&] { grid.insertRow(); }), 6);
    // A width for all columns leaves the row numbers' column; there is no column beyond.
    grid.setColWidth(0, 500);
    grid.setColWidth(-1, 2160);
    EXPECT_EQ(grid.colWidth(0), 500);
    EXPECT_EQ(grid.colWidth(2), 2160);
    EXPECT_EQ(failureOf([&] { grid.setColWidth(3, 100); }), 5);
}

// Typing, Backspace, Enter and Escape on a cell are the grid view's test with real keys; here
// cell changed comes for a changed text however the edit ends (Enter, a move, the focus
// loss), and never for a write by code.
TEST(GridTest, EditsRaiseCellChangedOnlyWhenTheUserChangedTheText) {
    Grid grid(2, 3);
    std::vector<std::string> log;
    grid.events().cellChanged = [&](int col, int row) {
        log.push_back("changed " + std::to_string(col) + "," + std::to_string(row));
    };
    grid.events().leavingCell = [&](int, int, int, int, bool&) { log.push_back("leaving"); };
    grid.events().focusLost = [&] { log.push_back("focus lost"); };
    grid.setCell(1, 1, "5");
    grid.addressCell(1, 1);
    grid.setClip("7\r\n");
    grid.setEditMode(true);
    grid.setEditMode(false); // nothing typed
    grid.userKeyPress('7');
    grid.userCommitEdit(); // same text
    grid.userKeyPress('9');
    grid.userCancelEdit();
    EXPECT_TRUE(log.empty());
    grid.userKeyPress('4');
    grid.userKeyPress(13);
    grid.userKeyPress('a');
    grid.userMoveTo(1, 2);
    grid.userEditText("b");
    grid.userFocusLost();
    EXPECT_EQ(log, (std::vector<std::string>{"changed 1,1", "changed 1,1", "leaving", "changed 1,2",
                                             "focus lost"}));
    EXPECT_EQ(grid.cell(1, 2), "b");
}

// A move is clipped to the table before the leaving-cell event sees it; the event may grow
// the table, as the data grid does near its end.
TEST(GridTest, MovesAreClippedToTheTableAndTheCursorStaysInside) {
    Grid grid(4, 10);
    std::vector<int> seenRows;
    grid.events().leavingCell = [&](int, int, int, int newRow, bool&) {
        seenRows.push_back(newRow);
        if (newRow > grid.rowLimit() - 2) {
            grid.setRowLimit(grid.rowLimit() + 10);
        }
    };
    grid.userMoveTo(9, 40); // beyond both edges
    EXPECT_EQ(grid.activeCol(), 4);
    EXPECT_EQ(grid.activeRow(), 10);
    EXPECT_EQ(grid.rowLimit(), 20);
    grid.userMoveTo(4, 10); // onto itself
    grid.setRowLimit(4);    // the cursor stays inside
    EXPECT_EQ(grid.activeRow(), 4);
    EXPECT_EQ(seenRows, (std::vector<int>{10}));
}

// A selection made upwards or leftwards keeps its bounds in order, and a whole-line bound
// holds on both sides, so that every command can count from first to last.
TEST(GridTest, SelectionBoundsStayOrderedWhateverTheDirection) {
    Grid grid(4, 20);
    grid.userSelect({3, 7, 1, 3});
    EXPECT_EQ(grid.selection(), (CellBlock{1, 3, 3, 7}));
    EXPECT_TRUE(grid.blockSelected());
    grid.userSelect({-1, 7, -1, 3});
    EXPECT_EQ(grid.selection(), (CellBlock{-1, 3, -1, 7}));
    grid.setSelection({2, -1, 4, 9});
    EXPECT_EQ(grid.selection(), (CellBlock{2, -1, 4, -1}));
    grid.setSelection({2, 5, 2, 5}); // one cell is still no block
    EXPECT_FALSE(grid.blockSelected());
}

// Cut, copy and paste of blocks are the block commands' tests; here where whole rows start.
TEST(GridTest, WholeRowsPasteFromColumnOne) {
    Grid grid(3, 4);
    platform::ScriptedPlatform clipboard;
    clipboard.setText("b\tc\r\ne\tf\r\n");
    grid.userSelect({-1, 3, -1, 4});
    grid.clipboardPaste(clipboard);
    EXPECT_EQ(grid.cell(1, 3), "b");
    EXPECT_EQ(grid.cell(2, 4), "f");
}

} // namespace
} // namespace titron::entry
