#include "entry/grid.h"

#include "vocabulary/failure.h"
#include "platform/platform.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace titron::entry {
namespace {

constexpr Colour kBlue{0, 0, 255};

class FakeClipboard : public platform::Clipboard {
  public:
    void clear() override { m_text.reset(); }
    void setText(const std::string& text) override { m_text = text; }
    bool hasText() override { return m_text.has_value(); }
    std::string text() override { return m_text.value_or(""); }

  private:
    std::optional<std::string> m_text;
};

int failureNumber(const std::function<void()>& action) {
    try {
        action();
    } catch (const vocabulary::Failure& failure) {
        return failure.number();
    }
    return 0;
}

TEST(GridTest, ReadClipEndsEveryRowWithCrLfIncludingTheLast) {
    Grid grid(4, 3);
    grid.addressCell(0, 0);
    grid.setClip("Row\tDose\tResp\tTested\tNote\r\n1\t10\t2\t5\tx\r\n2\t20\t3\t5\r\n");
    grid.addressBlock(0, 0, 4, 2); // headings included, block mode off
    EXPECT_EQ(grid.clip(), "Row\tDose\tResp\tTested\tNote\r\n1\t10\t2\t5\tx\r\n2\t20\t3\t5\t\r\n");
    grid.addressBlock(-1, -1, -1, -1); // data cells only, all rows up to the limit
    EXPECT_EQ(grid.clip(), "10\t2\t5\tx\r\n20\t3\t5\t\r\n\t\t\t\r\n");
    grid.addressBlock(2, 2, 1, 1); // bounds in any order
    EXPECT_EQ(grid.clip(), "10\t2\r\n20\t3\r\n");
}

TEST(GridTest, WriteClipEndsRowsAtCrLfLoneCrAndLoneLfWithoutAnExtraRow) {
    Grid grid(2, 6);
    grid.addressCell(1, 1);
    grid.setClip("a\tb\r\nc\rd\ne\t\r\n");
    grid.addressBlock(1, 1, 2, 5);
    EXPECT_EQ(grid.clip(), "a\tb\r\nc\t\r\nd\t\r\ne\t\r\n\t\r\n");
    EXPECT_EQ(grid.dataRowCount(), 4);
}

TEST(GridTest, WriteClipDropsCellsBeyondTheLastColumnAndTheRowLimit) {
    Grid grid(2, 2);
    grid.addressCell(2, 1);
    grid.setClip("a\tb\tc\r\nd\r\ne\r\nf");
    EXPECT_EQ(grid.rowLimit(), 2);
    grid.addressBlock(0, 0, 2, 2);
    EXPECT_EQ(grid.clip(), "\t\t\r\n\t\ta\r\n\t\td\r\n");
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

TEST(GridTest, InsertAndDeleteRowMoveTextAndColourAndSetTheRowLimit) {
    Grid grid(2, 4);
    grid.addressCell(1, 1);
    grid.setClip("1\r\n2\r\n3\r\n4\r\n");
    grid.addressCell(1, 2);
    grid.setTextColour(kBlue);
    grid.insertRow();
    EXPECT_EQ(grid.rowLimit(), 5);
    grid.addressBlock(1, 1, 1, 5);
    EXPECT_EQ(grid.clip(), "1\r\n\r\n2\r\n3\r\n4\r\n");
    EXPECT_EQ(grid.textColour(1, 2), kDefaultTextColour);
    EXPECT_EQ(grid.textColour(1, 3), kBlue);

    grid.setBlockMode(true);
    grid.addressBlock(2, 2, 2, 3); // whole rows go, whatever the columns
    grid.deleteRow();
    grid.setBlockMode(false);
    EXPECT_EQ(grid.rowLimit(), 5);
    EXPECT_EQ(grid.dataRowCount(), 3);
    grid.setCell(1, 0, "Dose");
    grid.addressCell(1, 0);
    grid.setRow2(1);
    grid.setBlockMode(true);
    grid.deleteRow(); // the heading row stays
    grid.addressBlock(1, 0, 1, 5);
    EXPECT_EQ(grid.clip(), "Dose\r\n3\r\n4\r\n\r\n\r\n\r\n");
}

TEST(GridTest, RowLimitGrowsBlankAndShrinksWithinItsCap) {
    Grid grid(2, 3);
    grid.setCell(1, 3, "x");
    grid.setRowLimit(2);
    EXPECT_EQ(grid.dataRowCount(), 0);
    grid.setRowLimit(5);
    EXPECT_EQ(grid.cell(1, 3), "");
    EXPECT_EQ(failureNumber([&] { grid.setRowLimit(Grid::kMaxRowLimit + 1); }), 6);
    EXPECT_EQ(failureNumber([&] { grid.setRowLimit(-1); }), 5);
    EXPECT_EQ(grid.rowLimit(), 5);
    grid.setRowLimit(Grid::kMaxRowLimit);
    grid.addressCell(1, 1);
    EXPECT_EQ(failureNumber([&] { grid.insertRow(); }), 6);
}

TEST(GridTest, ColumnWidthForAllSetsOnlyDataColumns) {
    Grid grid(4, 1);
    grid.setColWidth(0, 500);
    grid.setColWidth(-1, 2160);
    EXPECT_EQ(grid.colWidth(0), 500);
    EXPECT_EQ(grid.colWidth(4), 2160);
    EXPECT_EQ(failureNumber([&] { grid.setColWidth(5, 100); }), 5);
}

TEST(GridTest, UserEditRaisesCellChangedOnlyOnChangeAndCodeWritesNever) {
    Grid grid(2, 3);
    std::vector<std::pair<int, int>> changed;
    grid.events().cellChanged = [&](int col, int row) { changed.emplace_back(col, row); };
    grid.setCell(1, 1, "5");
    grid.addressCell(1, 1);
    grid.setClip("7\r\n");
    grid.setEditMode(true);
    grid.setEditMode(false); // nothing typed
    grid.userKeyPress('7');
    grid.userCommitEdit(); // same text
    EXPECT_TRUE(changed.empty());

    grid.userKeyPress('4');
    EXPECT_EQ(grid.text(), "4"); // typing replaced the text
    EXPECT_EQ(grid.cell(1, 1), "4");
    grid.userKeyPress('2');
    grid.userKeyPress(8);
    grid.userKeyPress('3');
    EXPECT_EQ(grid.text(), "43");
    grid.userKeyPress(13);
    EXPECT_FALSE(grid.editMode());
    grid.userKeyPress('9');
    grid.userCancelEdit();
    EXPECT_EQ(grid.text(), "43");
    ASSERT_EQ(changed.size(), 1u);
    EXPECT_EQ(changed[0], std::make_pair(1, 1));
}

TEST(GridTest, EndingAnEditByMoveOrFocusLossKeepsTheText) {
    Grid grid(2, 3);
    std::vector<std::string> log;
    grid.events().cellChanged = [&](int, int row) {
        log.push_back("changed " + std::to_string(row));
    };
    grid.events().leavingCell = [&](int, int, int, int, bool&) { log.push_back("leaving"); };
    grid.events().focusLost = [&] { log.push_back("focus lost"); };
    grid.userKeyPress('a');
    grid.userMoveTo(1, 2);
    grid.userEditText("b");
    grid.userFocusLost();
    EXPECT_EQ(log, (std::vector<std::string>{"changed 1", "leaving", "changed 2", "focus lost"}));
    EXPECT_EQ(grid.cell(1, 2), "b");
}

TEST(GridTest, LeavingCellCancelKeepsTheCursorAndTheTargetIsClippedAfterTheEvent) {
    Grid grid(4, 10);
    bool cancel = true;
    std::vector<int> seenRows;
    grid.events().leavingCell = [&](int, int, int, int newRow, bool& stop) {
        seenRows.push_back(newRow);
        stop = cancel;
        if (newRow > grid.rowLimit() - 2) {
            grid.setRowLimit(grid.rowLimit() + 10);
        }
    };
    grid.userMoveTo(2, 5);
    EXPECT_EQ(grid.activeRow(), 1);
    cancel = false;
    grid.userMoveTo(9, 40); // beyond both edges
    EXPECT_EQ(grid.activeCol(), 4);
    EXPECT_EQ(grid.activeRow(), 10);
    grid.userMoveTo(4, 10); // onto itself
    grid.setRowLimit(4);    // the cursor stays inside
    EXPECT_EQ(grid.activeRow(), 4);
    EXPECT_EQ(seenRows, (std::vector<int>{5, 10}));
}

TEST(GridTest, KeyPressHandlerChangesOrDropsCharacters) {
    Grid grid(2, 2);
    grid.events().keyPress = [&](int& c) {
        if (c == 'x') {
            c = 'E';
        } else if (c == '.' && grid.text().find('.') != std::string::npos) {
            c = 0;
        }
    };
    grid.addressCell(1, 1);
    for (char c : std::string("1.5x3.")) {
        grid.userKeyPress(c);
    }
    EXPECT_EQ(grid.text(), "1.5E3");
    grid.userKeyPress(9); // Tab is the view's business
    grid.setEditMode(false);
    EXPECT_EQ(grid.cell(1, 1), "1.5E3");
}

TEST(GridTest, RedrawOffHoldsNotificationsThenSendsOneAll) {
    Grid grid(2, 2);
    std::vector<GridChangeKind> kinds;
    grid.setChangeListener([&](const GridChange& change) { kinds.push_back(change.kind); });
    grid.setCell(1, 1, "a");
    grid.setRedraw(false);
    grid.setCell(1, 2, "b");
    grid.setColWidth(-1, 900);
    grid.setRowLimit(40);
    grid.setRedraw(true);
    grid.setRedraw(false);
    grid.setRedraw(true); // nothing changed meanwhile
    EXPECT_EQ(kinds, (std::vector<GridChangeKind>{GridChangeKind::Cells, GridChangeKind::All}));
}

TEST(GridTest, ClipboardVerbsWorkOnTheSelectionOrTheActiveCell) {
    Grid grid(3, 4);
    FakeClipboard clipboard;
    grid.addressCell(0, 1);
    grid.setClip("1\ta\tb\tc\r\n2\td\te\tf\r\n");
    grid.userSelect({2, 1, 3, 2});
    EXPECT_TRUE(grid.blockSelected());
    grid.clipboardCut(clipboard);
    EXPECT_EQ(clipboard.text(), "b\tc\r\ne\tf\r\n");
    EXPECT_EQ(grid.cell(3, 2), "");

    grid.userSelect({-1, 3, -1, 4}); // whole rows: pasted from column 1 on
    grid.clipboardPaste(clipboard);
    EXPECT_EQ(grid.cell(0, 3), "");
    EXPECT_EQ(grid.cell(1, 3), "b");
    EXPECT_EQ(grid.cell(2, 4), "f");

    grid.userSelect({1, 2, 1, 2}); // one cell is no block
    EXPECT_FALSE(grid.blockSelected());
    grid.userMoveTo(1, 2);
    grid.clipboardCopy(clipboard);
    EXPECT_EQ(clipboard.text(), "d\r\n");
}

} // namespace
} // namespace titron::entry
