// The assay table as the user meets it on Analyze: the typing rule, the Delete key, the
// growth of the table as the cursor nears its end, the row numbers, the column widths, the
// right-click menu and its block commands, and the row insert and delete commands.
#pragma once

#include <functional>

#include "entry/grid.h"
#include "platform/platform.h"
#include "session/session.h"

namespace titron::entry {

// The table grows by this many rows when the cursor enters one of its last rows...
inline constexpr int kRowGrowthStep = 100;
inline constexpr int kRowsNearEnd = 11;
// ...while it has fewer rows than this; once it has as many, entering this row in column 1
// brings a box.
inline constexpr int kMaxCursorRows = 1500;
// Typed length limits of the number columns and of the comments.
inline constexpr std::size_t kNumberTypedLimit = 30;
inline constexpr std::size_t kCommentsTypedLimit = 60;

class DataGrid {
  public:
    // resultsOutOfDate takes the report off the pane and marks the document changed.
    DataGrid(Grid& grid, platform::Platform& platform, session::Session& session,
             std::function<void()> resultsOutOfDate);
    DataGrid(const DataGrid&) = delete;
    DataGrid& operator=(const DataGrid&) = delete;

    // Writes the numbers 1 to the row limit into column 0.
    void numberRows();
    // Lays the columns out for the window's outer width W (twips): the number columns take
    // the widths of the settings, or a quarter each of W - 960; the comments take the rest,
    // at least 300. A window of 1000 or less keeps its widths.
    void resizeColumns(int outerWidth);

    // Row commands, each asking first if the settings say so.
    void editInsert();
    void editDelete();

    // The pop-up menu's block commands; none asks anything. Those that change cells raise
    // the grid's cell changed, as an edit does.
    void dropCut();
    void dropCopy();
    void dropPaste();
    void dropDelete();
    void dropFill();

  private:
    void onKeyPress(int& character);
    void onKeyDown(int keyCode, int shift);
    void onLeavingCell(int newCol, int newRow);
    void onRightClick(int x, int y);
    void onFocusGained();
    void onFocusLost();
    void addressRowsOf(const CellBlock& block);
    void colourDataCells();
    bool confirm(bool ask, const std::string& prompt, const std::string& title);

    Grid& m_grid;
    platform::Platform& m_platform;
    session::Session& m_session;
    std::function<void()> m_resultsOutOfDate;
};

} // namespace titron::entry
