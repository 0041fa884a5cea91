// Row insert and delete: how the selection sizes them, their questions, and what they leave.
#include <string>

#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

class RowCommandsTest : public AnalyzeFixture {
  protected:
    entry::Grid& grid() { return analyze.grid(); }

    // Rows 1..n with the dose "d<row>".
    void fillDoses(int rows) {
        for (int row = 1; row <= rows; ++row) {
            std::string dose = "d"; // appended: GCC 12 warns falsely on "d" + to_string
            dose += std::to_string(row);
            grid().setCell(1, row, dose);
        }
    }
    // The doses of rows first to last, separated by commas.
    std::string doses(int first, int last) const {
        std::string text = cell(1, first);
        for (int row = first + 1; row <= last; ++row) {
            text += ',';
            text += cell(1, row);
        }
        return text;
    }

    void expectNumberedAndBlue() {
        for (int row = 1; row <= grid().rowLimit(); ++row) {
            ASSERT_EQ(cell(0, row), std::to_string(row));
            ASSERT_EQ(grid().textColour(4, row), kDataTextColour) << row;
        }
    }

    void expectQuestion(const std::string& title, const std::string& text) {
        expectBox(title, text);
        const platform::MessageBoxRequest& box = boxes()[0].request;
        EXPECT_EQ(box.buttons, platform::Buttons::YesNo);
        EXPECT_EQ(box.icon, platform::Icon::Question);
        EXPECT_EQ(box.defaultButton, 1);
    }
};

TEST_F(RowCommandsTest, InsertAsksForOneRowOrTheBlocksRowsAndPutsThemBeforeTheActiveRow) {
    fillDoses(14);
    grid().userMoveTo(2, 3);
    analyze.editInsert();
    expectQuestion("INSERT ROW?", "Insert one row before the current row?");
    EXPECT_EQ(doses(1, 6), "d1,d2,,d3,d4,d5");
    expectNumberedAndBlue();
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);

    platform.clearTranscript();
    grid().userMoveTo(1, 13);
    grid().setSelection({2, 3, 4, 7}); // columns don't matter, only the row bounds
    analyze.editInsert();
    expectQuestion("INSERT ROWS?", "Insert 5 rows before the current row?");
    EXPECT_EQ(doses(12, 18), "d11,,,,,,d12");
    EXPECT_EQ(cell(1, 4), "d3");
    expectNumberedAndBlue();
}

TEST_F(RowCommandsTest, PromptsKeepThePluralForOneRowAndCountTenForWholeColumns) {
    grid().setSelection({1, 4, 1, 4});
    grid().userSelect({1, 4, 2, 4});
    analyze.editInsert();
    EXPECT_EQ(boxes().back().request.text, "Insert 1 rows before the current row?");
    grid().userSelect({2, -1, 2, -1});
    const int before = grid().rowLimit();
    platform.queueAnswer(platform::Answer::Yes);
    analyze.editInsert();
    EXPECT_EQ(boxes().back().request.text, "Insert 10 rows before the current row?");
    EXPECT_EQ(grid().rowLimit(), before + 10);
}

TEST_F(RowCommandsTest, NoLeavesGridAndResultsUntouched) {
    fillDoses(3);
    analyze.resultsPane().setText(std::string(60, 'r'));
    session.AnalysisChanged = session::kUnchanged;
    grid().userMoveTo(1, 2);
    platform.queueAnswer(platform::Answer::No);
    analyze.editInsert();
    platform.queueAnswer(platform::Answer::No);
    analyze.editDelete();
    EXPECT_EQ(doses(1, 3), "d1,d2,d3");
    EXPECT_EQ(grid().rowLimit(), 100);
    EXPECT_EQ(pane(), std::string(60, 'r'));
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
}

TEST_F(RowCommandsTest, DeleteRemovesTheActiveRowOrTheBlocksRowsOrEveryRow) {
    fillDoses(10);
    grid().userMoveTo(3, 2);
    analyze.editDelete();
    expectQuestion("DELETE ROW?", "Delete the current row?");
    EXPECT_EQ(doses(1, 3), "d1,d3,d4");
    EXPECT_EQ(grid().rowLimit(), 100);

    grid().userSelect({4, 3, 2, 5});
    platform.clearTranscript();
    analyze.editDelete();
    EXPECT_EQ(boxes().back().request.title, "DELETE ROWS?");
    EXPECT_EQ(boxes().back().request.text, "Delete 3 rows?");
    EXPECT_EQ(doses(1, 3), "d1,d3,d7");
    EXPECT_FALSE(grid().blockMode());
    expectNumberedAndBlue();

    // Whole columns: every row, counted after the cursor grew the table to 200 rows.
    grid().userMoveTo(1, 95);
    grid().userSelect({1, -1, 1, -1});
    analyze.editDelete();
    EXPECT_EQ(boxes().back().request.text, "Delete 200 rows?");
    EXPECT_EQ(grid().dataRowCount(), 0);
    expectNumberedAndBlue();
}

// A block dragged from row 7 up to row 3 counts and places its rows as one dragged down.
TEST_F(RowCommandsTest, UpwardBlocksCountTheirRowsAsDownwardOnes) {
    fillDoses(14);
    grid().userMoveTo(1, 12);
    grid().userSelect({1, 7, 1, 3});
    analyze.editInsert();
    expectQuestion("INSERT ROWS?", "Insert 5 rows before the current row?");
    EXPECT_EQ(doses(11, 18), "d11,,,,,,d12,d13");

    platform.clearTranscript();
    grid().userSelect({2, 7, 2, 3});
    analyze.editDelete();
    expectQuestion("DELETE ROWS?", "Delete 5 rows?");
    EXPECT_EQ(doses(1, 4), "d1,d2,d8,d9");
    expectNumberedAndBlue();
}

TEST_F(RowCommandsTest, SettingsCanTurnTheQuestionsOff) {
    session.settings.ConfirmInsert = false;
    session.settings.ConfirmDelete = false;
    fillDoses(2);
    grid().userMoveTo(1, 1);
    analyze.editInsert();
    EXPECT_EQ(doses(1, 3), ",d1,d2");
    analyze.editDelete();
    EXPECT_EQ(doses(1, 2), "d1,d2");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(RowCommandsTest, InsertNeverPushesDataBeyondTheNumberedRows) {
    grid().setRowLimit(32767);
    grid().setCell(1, 32760, "last");
    grid().userMoveTo(1, 10);
    grid().userSelect({1, -1, 1, -1}); // ten rows asked for, seven fit
    platform.queueAnswer(platform::Answer::Yes);
    analyze.editInsert();
    EXPECT_EQ(grid().rowLimit(), 32767);
    EXPECT_EQ(cell(1, 32767), "last");
    EXPECT_EQ(cell(0, 32767), "32767");
}

} // namespace
} // namespace titron::documents::testing
