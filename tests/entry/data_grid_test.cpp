// The assay table as the user meets it: typing rule, Delete key, growth, row numbers,
// column widths, focus and right-click enabling.
#include <string>

#include <gtest/gtest.h>

#include "entry/data_grid.h"
#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

constexpr int kF2 = 113;
constexpr int kDelete = 46;
constexpr int kV = 86;

class DataGridTest : public AnalyzeFixture {
  protected:
    entry::Grid& grid() { return analyze.grid(); }

    // Types keys into a cell as the user would: move there, press each key, then Enter.
    std::string typeInto(int col, int row, const std::string& keys) {
        grid().userMoveTo(col, row);
        for (char c : keys) {
            grid().userKeyPress(static_cast<unsigned char>(c));
        }
        grid().userKeyPress(13);
        return cell(col, row);
    }

    void setCell(int col, int row, const std::string& text) { grid().setCell(col, row, text); }
};

TEST_F(DataGridTest, NumberColumnsTakeDigitsSignsOneDotAndExponentLetters) {
    EXPECT_EQ(typeInto(1, 1, "1.5x3"), "1.5E3");
    EXPECT_EQ(typeInto(1, 2, "1.5*3"), "1.5E3");
    EXPECT_EQ(typeInto(1, 3, "1.5^3"), "1.5E3");
    EXPECT_EQ(typeInto(2, 1, "1e2X3E"), "1E2E3E"); // nothing limits the number of E's
    EXPECT_EQ(typeInto(3, 1, "1,000"), "1,000");
    EXPECT_EQ(typeInto(3, 2, "1.2.3"), "1.23");
    EXPECT_EQ(typeInto(1, 4, "-2+3/ab7"), "-2+37");
    EXPECT_EQ(typeInto(2, 2, "1 2"), "1 2"); // the blank is a control-range key and passes
}

TEST_F(DataGridTest, CommentsTakeEverythingButTheDoubleQuote) {
    EXPECT_EQ(typeInto(4, 1, "x.y \"q\". 1/2"), "x.y q. 1/2");
}

TEST_F(DataGridTest, TheDotRuleSeesOnlyWhatIsTypedIntoTheEdit) {
    setCell(1, 1, "2.5");
    // Typing replaces the old text, so its dot doesn't count...
    EXPECT_EQ(typeInto(1, 1, ".5"), ".5");
    // ...but during an edit opened with F2 the old text is part of the edit.
    grid().userMoveTo(1, 2);
    setCell(1, 2, "2.5");
    grid().userKeyDown(kF2, 0);
    EXPECT_TRUE(grid().editMode());
    grid().userKeyPress('.');
    grid().userKeyPress('1');
    grid().userKeyPress(13);
    EXPECT_EQ(cell(1, 2), "2.51");
}

TEST_F(DataGridTest, TypedTextStopsAtTheColumnsLengthLimit) {
    EXPECT_EQ(typeInto(1, 1, std::string(40, '7')), std::string(30, '7'));
    EXPECT_EQ(typeInto(4, 1, std::string(70, 'c')), std::string(60, 'c'));
    // Code is not limited.
    setCell(4, 2, std::string(100, 'c'));
    EXPECT_EQ(cell(4, 2).size(), 100u);
}

TEST_F(DataGridTest, CursorGrowsTheTableInStepsOfHundredUpTo1500) {
    grid().userMoveTo(1, 89);
    EXPECT_EQ(grid().rowLimit(), 100);
    grid().userMoveTo(1, 90);
    EXPECT_EQ(grid().rowLimit(), 200);
    EXPECT_EQ(cell(0, 200), "200");
    EXPECT_EQ(cell(0, 101), "101");
    // Rows added by the cursor keep the control's own colour.
    EXPECT_EQ(grid().textColour(1, 150), entry::kDefaultTextColour);
    EXPECT_EQ(grid().textColour(1, 100), kDataTextColour);
    for (int row = 190; row < 1500; row += 100) {
        grid().userMoveTo(1, row);
    }
    EXPECT_EQ(grid().rowLimit(), 1500);
    EXPECT_EQ(cell(0, 1500), "1500");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(DataGridTest, MaximumRowsBoxOnlyAtRow1500Column1) {
    grid().setRowLimit(1500);
    grid().userMoveTo(2, 1490);
    grid().userMoveTo(2, 1500);
    grid().userMoveTo(3, 1500);
    EXPECT_TRUE(boxes().empty());
    grid().userMoveTo(1, 1500); // from column 3 of the same row
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Maximum number of rows");
    EXPECT_EQ(boxes()[0].request.text, "Reaching the maximum number of rows of data (1500).");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::Ok);
    EXPECT_EQ(boxes()[0].request.icon, platform::Icon::None);
    // The move goes on, and nothing grows.
    EXPECT_EQ(grid().activeRow(), 1500);
    EXPECT_EQ(grid().rowLimit(), 1500);
    grid().userMoveTo(1, 1499);
    grid().userMoveTo(1, 1500);
    EXPECT_EQ(boxes().size(), 2u);
}

TEST_F(DataGridTest, AboveFifteenHundredRowsTheCursorAddsNothing) {
    grid().setRowLimit(2000);
    grid().userMoveTo(1, 1995);
    grid().userMoveTo(1, 1500);
    EXPECT_EQ(grid().rowLimit(), 2000);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(DataGridTest, DeleteKeyClearsTargetAndAlwaysMarksResultsOutOfDate) {
    analyze.resultsPane().setText(std::string(60, 'r'));
    // An empty cell: the report still goes and the document counts as changed.
    grid().userMoveTo(2, 3);
    grid().userKeyDown(kDelete, 0);
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);

    // Whole rows: columns 1 to 4 of those rows, row numbers kept.
    type({{"1", "2", "3", "a"}, {"4", "5", "6", "b"}, {"7", "8", "9", "c"}});
    grid().userSelect({-1, 1, -1, 2});
    grid().userKeyDown(kDelete, 0);
    for (int col = 1; col <= 4; ++col) {
        EXPECT_EQ(cell(col, 1), "");
        EXPECT_EQ(cell(col, 2), "");
    }
    EXPECT_EQ(cell(4, 3), "c");
    EXPECT_EQ(cell(0, 1), "1");
    EXPECT_FALSE(grid().blockMode());

    // Inside an edit the key belongs to the editor.
    grid().userMoveTo(1, 3);
    grid().userKeyDown(kF2, 0);
    grid().userKeyDown(kDelete, 0);
    grid().userKeyPress(13);
    EXPECT_EQ(cell(1, 3), "7");
}

TEST_F(DataGridTest, CtrlVOnWholeRowsKeepsTheRowNumbers) {
    platform.setText("9\t9\t9\tz\r\n");
    grid().userSelect({-1, 2, -1, 2});
    grid().userKeyDown(kV, entry::CtrlKey);
    EXPECT_EQ(cell(1, 2), "9");
    EXPECT_EQ(cell(4, 2), "z");
    EXPECT_EQ(cell(0, 2), "2");
}

TEST_F(DataGridTest, FocusSwitchesTheRowCommandsAndAddressesTheActiveCell) {
    const session::FrameModel& frame = session.frame;
    EXPECT_FALSE(frame.item(session::MenuItem::EditInsert).enabled);
    grid().userMoveTo(3, 7);
    grid().addressCell(1, 1);
    analyze.setFocus(Control::Grid);
    EXPECT_EQ(grid().col(), 3);
    EXPECT_EQ(grid().row(), 7);
    EXPECT_TRUE(frame.item(session::MenuItem::EditInsert).enabled);
    EXPECT_TRUE(frame.item(session::MenuItem::EditDelete).enabled);
    for (const char* key : {"Insert", "Delete"}) {
        EXPECT_TRUE(frame.button(key).enabled) << key;
    }
    analyze.setFocus(Control::AnalysisName);
    EXPECT_FALSE(frame.item(session::MenuItem::EditInsert).enabled);
    EXPECT_FALSE(frame.item(session::MenuItem::EditDelete).enabled);
    EXPECT_FALSE(frame.button("Insert").enabled);
    EXPECT_FALSE(frame.button("Delete").enabled);
}

TEST_F(DataGridTest, RightClickEnablesFillForOneColumnBlocksAndPasteForText) {
    const session::FrameModel& frame = session.frame;
    grid().userSelect({2, 3, 2, 8});
    grid().userRightClick(1, 5, 5, 40, 60);
    EXPECT_TRUE(frame.item(session::MenuItem::DropFill).enabled);
    EXPECT_FALSE(frame.item(session::MenuItem::DropPaste).enabled); // empty clipboard
    ASSERT_EQ(frame.popupsOpened().size(), 1u);
    EXPECT_EQ(frame.popupsOpened()[0].x, 40);
    EXPECT_EQ(frame.popupsOpened()[0].y, 60);

    platform.setText("1");
    grid().userSelect({2, 3, 3, 8});
    grid().userRightClick(1, 5, 5, 0, 0);
    EXPECT_FALSE(frame.item(session::MenuItem::DropFill).enabled);
    EXPECT_TRUE(frame.item(session::MenuItem::DropPaste).enabled);

    grid().userMoveTo(1, 1); // a single cell is no block
    grid().userRightClick(1, 1, 1, 0, 0);
    EXPECT_FALSE(frame.item(session::MenuItem::DropFill).enabled);
    // Cut, copy and delete stay on.
    for (auto item : {session::MenuItem::DropCut, session::MenuItem::DropCopy, session::MenuItem::DropDelete}) {
        EXPECT_TRUE(frame.item(item).enabled) << static_cast<int>(item);
    }
}

TEST_F(DataGridTest, ResizeLaysOutTheNameBoxAndColumns) {
    analyze.resize(9600);
    EXPECT_EQ(analyze.nameWidth(), 9600 - 120 - 1260);
    for (int col = 1; col <= 4; ++col) {
        EXPECT_EQ(grid().colWidth(col), 2160) << col;
    }
    // A narrow window keeps its layout.
    analyze.resize(1000);
    EXPECT_EQ(analyze.nameWidth(), 9600 - 120 - 1260);
    EXPECT_EQ(grid().colWidth(1), 2160);

    // Widths from the settings; the last column takes the rest, at least 300.
    session.settings.ColWidth = {500, 3000, 2000, 1000, 9999};
    analyze.resize(9600);
    EXPECT_EQ(grid().colWidth(1), 3000);
    EXPECT_EQ(grid().colWidth(4), 9600 - 960 - 6000);
    session.settings.ColWidth = {500, 5000, 5000, 5000, 0};
    analyze.resize(9600);
    EXPECT_EQ(grid().colWidth(4), 300);
    // ColWidth 1 at 0 means four equal columns, whatever 2 and 3 say.
    session.settings.ColWidth = {500, 0, 5000, 5000, 0};
    analyze.resize(5000);
    EXPECT_EQ(grid().colWidth(2), (5000 - 960) / 4);
}

} // namespace
} // namespace titron::documents::testing
