// The assay table as the user meets it: typing rule, Delete key, growth, row numbers,
// column widths, focus, right-click enabling, and the pop-up menu's block commands.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "entry/data_grid.h"
#include "entry/key_codes.h"
#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

namespace key = entry::key;
using session::MenuItem;

class DataGridTest : public AnalyzeFixture {
  protected:
    entry::Grid& grid() { return analyze.grid(); }

    // Types keys into a cell as the user would: move there, press each key, then Enter.
    std::string typeInto(int col, int row, const std::string& keys) {
        grid().userMoveTo(col, row);
        for (char c : keys) {
            grid().userKeyPress(static_cast<unsigned char>(c));
        }
        grid().userKeyPress(key::Enter);
        return cell(col, row);
    }
    bool enabled(MenuItem item) const { return session.frame.item(item).enabled; }
};

TEST_F(DataGridTest, TypingTakesWhatEachColumnAllowsUpToItsLengthLimit) {
    EXPECT_EQ(typeInto(1, 1, "1.5x3"), "1.5E3");
    EXPECT_EQ(typeInto(1, 2, "1.5*3"), "1.5E3");
    EXPECT_EQ(typeInto(1, 3, "1.5^3"), "1.5E3");
    EXPECT_EQ(typeInto(2, 1, "1e2X3E"), "1E2E3E"); // nothing limits the number of E's
    EXPECT_EQ(typeInto(3, 1, "1,000"), "1,000");
    EXPECT_EQ(typeInto(3, 2, "1.2.3"), "1.23");
    EXPECT_EQ(typeInto(1, 4, "-2+3/ab7"), "-2+37");
    EXPECT_EQ(typeInto(2, 2, "1 2"), "1 2"); // the blank is a control-range key and passes
    EXPECT_EQ(typeInto(2, 3, "1\t2"), "12"); // Tab is the view's business, not the text's
    EXPECT_EQ(typeInto(4, 1, "x.y \"q\". 1/2"), "x.y q. 1/2"); // comments: all but the quote
    // Typing stops at the column's length limit.
    EXPECT_EQ(typeInto(1, 5, std::string(40, '7')), std::string(30, '7'));
    EXPECT_EQ(typeInto(4, 2, std::string(70, 'c')), std::string(60, 'c'));

    // The dot rule sees only what is typed into the edit: typing replaces the old text, so
    // its dot doesn't count, but during an edit opened with F2 the old text is part of it.
    grid().setCell(1, 6, "2.5");
    EXPECT_EQ(typeInto(1, 6, ".5"), ".5");
    grid().userMoveTo(1, 7);
    grid().setCell(1, 7, "2.5");
    grid().userKeyDown(key::F2, 0);
    EXPECT_TRUE(grid().editMode());
    for (int c : {int{'.'}, int{'1'}, key::Enter}) {
        grid().userKeyPress(c);
    }
    EXPECT_EQ(cell(1, 7), "2.51");
}

TEST_F(DataGridTest, CursorGrowsTheTableInStepsOfHundredUpTo1500WhereColumnOneShowsABox) {
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

    // At row 1,500 only column 1 shows the box; the move goes on, and nothing grows.
    grid().userMoveTo(2, 1500);
    grid().userMoveTo(3, 1500);
    EXPECT_TRUE(boxes().empty());
    grid().userMoveTo(1, 1500); // from column 3 of the same row
    expectBox("Maximum number of rows", "Reaching the maximum number of rows of data (1500).");
    EXPECT_EQ(boxes()[0].request.buttons, platform::Buttons::Ok);
    EXPECT_EQ(boxes()[0].request.icon, platform::Icon::None);
    EXPECT_EQ(grid().activeRow(), 1500);
    EXPECT_EQ(grid().rowLimit(), 1500);
    grid().userMoveTo(1, 1499);
    grid().userMoveTo(1, 1500);
    EXPECT_EQ(boxes().size(), 2u);
    // Above 1,500 rows (a loaded file) the cursor adds nothing.
    grid().setRowLimit(2000);
    grid().userMoveTo(1, 1995);
    EXPECT_EQ(grid().rowLimit(), 2000);

    // A limit off the hundreds, as row inserts leave one, takes its last step past 1,500.
    grid().userMoveTo(1, 1);
    grid().setRowLimit(1405);
    grid().userMoveTo(1, 1395);
    EXPECT_EQ(grid().rowLimit(), 1505);
    EXPECT_EQ(cell(0, 1505), "1505");
}

TEST_F(DataGridTest, DeleteKeyClearsTargetAndAlwaysMarksResultsOutOfDate) {
    analyze.resultsPane().setText(std::string(60, 'r'));
    // An empty cell: the report still goes and the document counts as changed.
    grid().userMoveTo(2, 3);
    grid().userKeyDown(key::Delete, 0);
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);

    // Whole rows: columns 1 to 4 of those rows, row numbers kept.
    type({{"1", "2", "3", "a"}, {"4", "5", "6", "b"}, {"7", "8", "9", "c"}});
    grid().userSelect({-1, 1, -1, 2});
    grid().userKeyDown(key::Delete, 0);
    EXPECT_EQ(grid().dataRowCount(), 3);
    EXPECT_EQ(cell(1, 1) + cell(4, 1) + cell(1, 2) + cell(4, 2), "");
    EXPECT_EQ(cell(4, 3), "c");
    EXPECT_EQ(cell(0, 1), "1");
    EXPECT_FALSE(grid().blockMode());

    // Inside an edit the key belongs to the editor.
    grid().userMoveTo(1, 3);
    grid().userKeyDown(key::F2, 0);
    grid().userKeyDown(key::Delete, 0);
    grid().userKeyPress(key::Enter);
    EXPECT_EQ(cell(1, 3), "7");
}

// Which commands the focus switches on is the window's test, with real focus changes; here
// what only the logic shows. A right click sets the pop-up's items: Fill for a block of one
// column, Paste while the clipboard holds text, Cut, Copy and Delete always.
TEST_F(DataGridTest, FocusAddressesTheActiveCellAndARightClickSetsThePopupsItems) {
    grid().userMoveTo(3, 7);
    grid().addressCell(1, 1);
    analyze.setFocus(Control::Grid);
    EXPECT_EQ(grid().col(), 3);
    EXPECT_EQ(grid().row(), 7);

    platform.setText("5");
    grid().userSelect({2, 3, 2, 8});
    grid().userRightClick(1, 5, 5, 40, 60);
    EXPECT_TRUE(enabled(MenuItem::DropFill) && enabled(MenuItem::DropPaste));
    platform.clear();
    grid().userSelect({2, 3, 3, 8});
    grid().userRightClick(1, 5, 5, 40, 60);
    EXPECT_FALSE(enabled(MenuItem::DropFill) || enabled(MenuItem::DropPaste));
    grid().userMoveTo(1, 1); // a single cell is no block
    grid().userRightClick(1, 1, 1, 0, 0);
    EXPECT_FALSE(enabled(MenuItem::DropFill));
    // Fill is offered only where it acts: neither on whole rows nor on a whole column.
    const entry::CellBlock wholeLines[] = {{-1, 2, -1, 5}, {2, -1, 2, -1}};
    for (const entry::CellBlock& whole : wholeLines) {
        grid().userSelect(whole);
        grid().userRightClick(1, 1, 1, 0, 0);
        EXPECT_FALSE(enabled(MenuItem::DropFill)) << whole.col;
    }
    EXPECT_TRUE(enabled(MenuItem::DropCut) && enabled(MenuItem::DropCopy) &&
                enabled(MenuItem::DropDelete));
}

// The name box and the comments take what the window gains, and a window of 1000 twips or
// less keeps its layout. The settings' widths stand, the comments keeping at least 300
// twips; without a width for column 1 the four columns share the width equally.
TEST_F(DataGridTest, ResizeLaysOutTheNameBoxAndColumns) {
    analyze.resize(9600);
    const int name = analyze.nameWidth();
    const int column = grid().colWidth(1);
    EXPECT_EQ(grid().colWidth(4), column);
    analyze.resize(1000);
    EXPECT_EQ(analyze.nameWidth(), name);
    EXPECT_EQ(grid().colWidth(1), column);
    analyze.resize(10600);
    EXPECT_EQ(analyze.nameWidth(), name + 1000);

    session.settings.ColWidth = {500, 3000, 2000, 1000, 9999};
    analyze.resize(9600);
    const int comments = grid().colWidth(4);
    analyze.resize(10600);
    EXPECT_EQ(grid().colWidth(1), 3000);
    EXPECT_EQ(grid().colWidth(3), 1000);
    EXPECT_EQ(grid().colWidth(4), comments + 1000);
    session.settings.ColWidth = {500, 5000, 5000, 5000, 0};
    analyze.resize(9600);
    EXPECT_EQ(grid().colWidth(4), 300);
    session.settings.ColWidth = {500, 0, 5000, 5000, 0};
    analyze.resize(5000);
    EXPECT_EQ(grid().colWidth(2), grid().colWidth(4));
}

// The pop-up menu's block commands work on the selection and ask nothing.
TEST_F(DataGridTest, FillCopiesTheTopCellDownTheBlockOnly) {
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

    // A block selected upwards fills from its top cell all the same.
    grid().setCell(2, 3, "24");
    grid().userSelect({2, 6, 2, 3});
    analyze.dropFill();
    EXPECT_EQ(cell(2, 6), "24");
    EXPECT_EQ(cell(2, 2), "");
}

TEST_F(DataGridTest, BlockCommandsWorkOnTheSelectionAndAskNothing) {
    type({{"1", "2", "3", "a"}, {"4", "5", "6", "b"}});
    grid().userSelect({1, 1, 2, 2});
    analyze.dropCopy();
    EXPECT_EQ(platform.text(), "1\t2\r\n4\t5\r\n");
    analyze.dropDelete();
    EXPECT_EQ(cell(1, 1) + cell(2, 2), "");
    EXPECT_EQ(cell(3, 1), "3");
    grid().userSelect({3, 1, 4, 1});
    analyze.dropCut();
    EXPECT_EQ(platform.text(), "3\ta\r\n");
    EXPECT_EQ(cell(4, 1), "");
    grid().userMoveTo(1, 5); // no block: paste goes to the active cell
    analyze.dropPaste();
    EXPECT_EQ(cell(1, 5), "3");
    EXPECT_EQ(cell(2, 5), "a");
    EXPECT_TRUE(boxes().empty());
}

// Every command that changes a cell takes the report of an opened analysis off the pane and
// marks the document changed, as typing does; copying changes nothing.
TEST_F(DataGridTest, EveryCommandThatChangesCellsMarksTheOpenedAnalysisChanged) {
    typeFourRowExample();
    analyze.analyze();
    const std::string file = path("saved.tna");
    ASSERT_TRUE(analyze.saveDocument(file));
    session.settings.ConfirmInsert = false;
    session.settings.ConfirmDelete = false;
    platform.setText("5000");
    const auto ctrl = [&](int keyCode) {
        return [&, keyCode] { grid().userKeyDown(keyCode, entry::CtrlKey); };
    };
    const std::vector<std::pair<const char*, std::function<void()>>> commands = {
        {"copy", [&] { analyze.dropCopy(); }},
        {"Ctrl+C", ctrl(key::C)},
        {"Ctrl+V", ctrl(key::V)},
        {"Ctrl+X", ctrl(key::X)},
        {"paste", [&] { analyze.dropPaste(); }},
        {"cut", [&] { analyze.dropCut(); }},
        {"delete", [&] { analyze.dropDelete(); }},
        {"fill", [&] { analyze.dropFill(); }},
        {"Delete key", [&] { grid().userKeyDown(key::Delete, 0); }},
        {"insert row", [&] { analyze.editInsert(); }},
        {"delete row", [&] { analyze.editDelete(); }},
    };
    for (const auto& [command, run] : commands) {
        ASSERT_EQ(analyze.openDocument(file), LoadOutcome::Loaded);
        ASSERT_EQ(session.AnalysisChanged, session::kUnchanged);
        grid().userMoveTo(1, 1);
        grid().userSelect({1, 1, 1, 3});
        run();
        if (command == std::string("copy") || command == std::string("Ctrl+C")) {
            EXPECT_TRUE(analyze.reportPresent()) << command;
            EXPECT_EQ(session.AnalysisChanged, session::kUnchanged) << command;
        } else {
            EXPECT_EQ(pane(), kEmptyResults) << command;
            EXPECT_EQ(session.AnalysisChanged, session::kChanged) << command;
        }
    }
}

TEST_F(DataGridTest, PastingAnyShapeOfTextStaysInsideTheGrid) {
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
