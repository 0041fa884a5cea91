// A window that starts afresh is, in everything its getters show, the window that load()
// leaves new: the command line relies on it to open file after file into one window.
#include <sstream>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

// Everything of the window that can be read from outside, one value after another.
std::string state(Analyze& analyze) {
    std::ostringstream out;
    const auto put = [&out](const auto&... values) { ((out << values << '|'), ...) << '\n'; };
    const entry::Grid& g = analyze.grid();
    for (int row = 0; row <= g.rowLimit(); ++row) {
        for (int col = 0; col <= g.maxCols(); ++col) {
            const entry::Colour c = g.textColour(col, row);
            put(g.cell(col, row), int(c.red), int(c.green), int(c.blue), g.rowHeight(row),
                g.colWidth(col), g.typedLengthLimit(col));
        }
    }
    const entry::CellBlock s = g.selection();
    put(g.rowLimit(), g.dataRowCount(), g.col(), g.row(), g.col2(), g.row2(), g.blockMode(),
        g.activeCol(), g.activeRow(), g.firstVisibleRow(), g.blockSelected(), s.col, s.row, s.col2,
        s.row2, g.editMode(), g.redraw(), g.locked());
    const ResultsPane& pane = analyze.resultsPane();
    const platform::CommonDialog& dialog = analyze.commonDialog();
    put(analyze.nameBox().text(), pane.text(), pane.look().formatted, pane.look().colour.blue,
        pane.look().tabStopsTwips.size(), pane.visible(), pane.caret(), int(analyze.focus()),
        analyze.nameWidth(), dialog.flags, dialog.filter, dialog.defaultExt, dialog.dialogTitle,
        dialog.fileName);
    return out.str();
}

class StartAfreshTest : public AnalyzeFixture {};

TEST_F(StartAfreshTest, LeavesNothingOfTheDocumentsBefore) {
    FreshDocument newWindow;
    const std::string fresh = state(newWindow.analyze);

    // A file of its own headings that grows the grid beyond its first rows, with a name
    // that the name check points out, and a report.
    std::string big = "Analysis Name: Big, with a comma\r\n\r\nNr\tD\tR\tT\tNote\r\n";
    for (int row = 1; row <= 250; ++row) {
        big += std::to_string(row + 7) + "\t" + std::to_string(100 * row) + "\t1\t24\tx\r\n";
    }
    ASSERT_EQ(analyze.openDocument(writeFile("big.txt", big)), LoadOutcome::Loaded);
    analyze.resize(9000);
    analyze.setFocus(Control::Results);
    analyze.setFocus(Control::AnalysisName);
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);
    analyze.saveDocument(path("saved.tna"));
    // A table with a word in it: the cursor lands on it, the focus in the grid, and an
    // edit is left open there.
    analyze.startAfresh();
    ASSERT_EQ(analyze.openDocument(writeFile("word.txt", "100\t5\t10\r\n200\tfive\t10\r\n")),
              LoadOutcome::Loaded);
    EXPECT_EQ(analyze.runAnalysis().box.title, "INVALID ENTRY");
    analyze.grid().userKeyPress('7');
    ASSERT_TRUE(analyze.grid().editMode());
    analyze.grid().setFirstVisibleRow(2);
    analyze.grid().userSelect({1, 1, 3, 2});
    EXPECT_NE(state(analyze), fresh);

    analyze.startAfresh();
    EXPECT_EQ(state(analyze), fresh);

    // And after a file that could not be loaded.
    EXPECT_EQ(analyze.openDocument(path("none.tna")), LoadOutcome::Failed);
    analyze.startAfresh();
    EXPECT_EQ(state(analyze), fresh);
}

} // namespace
} // namespace titron::documents::testing
