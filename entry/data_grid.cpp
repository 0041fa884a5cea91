#include "entry/data_grid.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "entry/key_codes.h"
#include "entry/key_filter.h"
#include "entry/row_numbers.h"

namespace titron::entry {

namespace {

constexpr int kDataColumns = 4;
constexpr Colour kBlue{0, 0, 255};

// Resize: below this outer width nothing is laid out; the columns share W minus this.
constexpr int kNarrowestLayout = 1000;
constexpr int kColumnMargin = 960;
constexpr int kNarrowestComments = 300;

// Whole columns selected: insert offers ten rows.
constexpr int kRowsForWholeColumns = 10;

constexpr const char* kMaxRowsTitle = "Maximum number of rows";
constexpr const char* kMaxRowsText = "Reaching the maximum number of rows of data (1500).";

int nonNegative(int twips) {
    return std::max(twips, 0);
}

} // namespace

DataGrid::DataGrid(Grid& grid, platform::Platform& platform, session::Session& session,
                   std::function<void()> resultsOutOfDate)
    : m_grid(grid), m_platform(platform), m_session(session),
      m_resultsOutOfDate(std::move(resultsOutOfDate)) {
    GridEvents& events = m_grid.events();
    events.keyPress = [this](int& character) { onKeyPress(character); };
    events.keyDown = [this](int keyCode, int shift) { onKeyDown(keyCode, shift); };
    events.leavingCell = [this](int, int, int newCol, int newRow, bool&) {
        onLeavingCell(newCol, newRow);
    };
    events.rightClick = [this](int, int, int, int x, int y) { onRightClick(x, y); };
    events.focusGained = [this] { onFocusGained(); };
    events.focusLost = [this] { onFocusLost(); };
    for (int col = 1; col < kCommentsColumn; ++col) {
        m_grid.setTypedLengthLimit(col, kNumberTypedLimit);
    }
    m_grid.setTypedLengthLimit(kCommentsColumn, kCommentsTypedLimit);
    m_grid.setClipboard(&m_platform.clipboard);
}

void DataGrid::numberRows() {
    entry::numberRows(m_grid);
}

// A negative width in the settings file counts as 0 rather than stopping the layout.
void DataGrid::resizeColumns(int outerWidth) {
    if (outerWidth <= kNarrowestLayout) {
        return;
    }
    const auto& widths = m_session.settings.ColWidth;
    m_grid.setRedraw(false);
    if (widths[1] != 0) {
        for (int col = 1; col <= 3; ++col) {
            m_grid.setColWidth(col, nonNegative(widths[static_cast<std::size_t>(col)]));
        }
    } else {
        m_grid.setColWidth(-1, (outerWidth - kColumnMargin) / 4);
    }
    const int rest =
        outerWidth - kColumnMargin - m_grid.colWidth(1) - m_grid.colWidth(2) - m_grid.colWidth(3);
    m_grid.setColWidth(kCommentsColumn, std::max(rest, kNarrowestComments));
    m_grid.setRedraw(true);
}

// Typing replaces a cell's text, so before an edit has begun there is no dot to count.
void DataGrid::onKeyPress(int& character) {
    const std::string soFar =
        m_grid.editMode() ? m_grid.cell(m_grid.activeCol(), m_grid.activeRow()) : std::string();
    character = filterDataKey(m_grid.activeCol(), character, soFar);
}

void DataGrid::onKeyDown(int keyCode, int shift) {
    if (keyCode == key::F2) {
        m_grid.setEditMode(true);
    } else if (keyCode == key::V && (shift & CtrlKey) != 0) {
        if (m_grid.selection().col == -1) {
            numberRows();
        }
    } else if (keyCode == key::Delete && !m_grid.editMode()) {
        if (m_grid.blockSelected()) {
            const CellBlock s = m_grid.selection();
            m_grid.setBlockMode(true);
            if (s.col == -1) {
                m_grid.setCol(1);
                m_grid.setCol2(kDataColumns);
            } else {
                m_grid.setCol(s.col);
                m_grid.setCol2(s.col2);
            }
            addressRowsOf(s);
        } else {
            m_grid.addressCell(m_grid.activeCol(), m_grid.activeRow());
        }
        m_grid.clear();
        m_resultsOutOfDate();
        m_grid.setBlockMode(false);
    }
}

// The block's rows, or all rows 1 to the row limit when its row bound is -1.
void DataGrid::addressRowsOf(const CellBlock& block) {
    if (block.row == -1) {
        m_grid.setRow(1);
        m_grid.setRow2(m_grid.rowLimit());
    } else {
        m_grid.setRow(block.row);
        m_grid.setRow2(block.row2);
    }
}

// The table grows as soon as the cursor enters one of its last 11 rows, by 100 rows while it
// has fewer than 1500. Row inserts can leave a limit off the hundreds (1405), which then
// grows past 1500 (to 1505) with its last step.
void DataGrid::onLeavingCell(int newCol, int newRow) {
    m_grid.addressCell(newCol, newRow);
    const int limit = m_grid.rowLimit();
    if (newRow <= limit - kRowsNearEnd) {
        return;
    }
    if (limit < kMaxCursorRows) {
        m_grid.setRowLimit(limit + kRowGrowthStep);
        numberRows();
    } else if (newRow == kMaxCursorRows && newCol == 1) {
        m_platform.dialogs.messageBox({kMaxRowsTitle, kMaxRowsText});
    }
}

// Fill acts on a block of one column with rows of its own: whole rows or a whole column
// give it no cell to copy, so it is not offered there.
void DataGrid::onRightClick(int x, int y) {
    session::FrameModel& frame = m_session.frame;
    const CellBlock s = m_grid.selection();
    const bool fillActs = m_grid.blockSelected() && s.col == s.col2 && s.col != -1 && s.row != -1;
    frame.setItemEnabled(session::MenuItem::DropFill, fillActs);
    frame.setItemEnabled(session::MenuItem::DropPaste, m_platform.clipboard.hasText());
    frame.openPopup({x, y});
}

void DataGrid::onFocusGained() {
    m_grid.setCol(m_grid.activeCol());
    m_grid.setRow(m_grid.activeRow());
    m_session.frame.gridFocusGained();
}

void DataGrid::onFocusLost() {
    m_session.frame.gridFocusLost();
}

// --- Row commands -----------------------------------------------------------------------------

bool DataGrid::confirm(bool ask, const std::string& prompt, const std::string& title) {
    if (!ask) {
        return true;
    }
    const platform::Answer answer = m_platform.dialogs.messageBox(
        {title, prompt, platform::Buttons::YesNo, platform::Icon::Question, 1});
    return answer == platform::Answer::Yes;
}

void DataGrid::colourDataCells() {
    m_grid.addressBlock(1, 1, kDataColumns, m_grid.rowLimit());
    m_grid.setBlockMode(true);
    m_grid.setTextColour(kBlue);
    m_grid.setBlockMode(false);
}

// The active row decides where the blank rows go, the selection only how many. The table
// stays within 32,767 numbered rows: an insert that would push data beyond inserts only as
// many rows as fit, and empty rows at the end of the table make room for the rest.
void DataGrid::editInsert() {
    int rows = 1;
    std::string prompt = "Insert one row before the current row?";
    std::string title = "INSERT ROW?";
    if (m_grid.blockSelected()) {
        const CellBlock s = m_grid.selection();
        rows = s.row == -1 ? kRowsForWholeColumns : s.row2 - s.row + 1;
        prompt = "Insert " + std::to_string(rows) + " rows before the current row?";
        title = "INSERT ROWS?";
    }
    if (!confirm(m_session.settings.ConfirmInsert, prompt, title)) {
        return;
    }
    const int activeRow = m_grid.activeRow();
    const int lastData = m_grid.dataRowCount();
    if (lastData >= activeRow) {
        rows = std::min(rows, kMaxNumberedRows - lastData);
    }
    m_grid.setRow(activeRow);
    m_grid.insertRow(rows);
    if (m_grid.rowLimit() > kMaxNumberedRows) {
        m_grid.setRowLimit(std::max(kMaxNumberedRows, m_grid.dataRowCount()));
    }
    colourDataCells();
    m_platform.events.processQueuedEvents();
    numberRows();
    m_grid.refresh();
    m_resultsOutOfDate();
}

void DataGrid::editDelete() {
    std::string prompt = "Delete the current row?";
    std::string title = "DELETE ROW?";
    const CellBlock s = m_grid.selection();
    const bool block = m_grid.blockSelected();
    if (block) {
        const int rows = s.row == -1 ? m_grid.rowLimit() : s.row2 - s.row + 1;
        prompt = "Delete " + std::to_string(rows) + " rows?";
        title = "DELETE ROWS?";
    }
    if (!confirm(m_session.settings.ConfirmDelete, prompt, title)) {
        m_grid.setBlockMode(false);
        return;
    }
    if (block) {
        m_grid.setBlockMode(true);
        m_grid.setCol(1);
        m_grid.setCol2(1);
        addressRowsOf(s);
    } else {
        m_grid.setRow(m_grid.activeRow());
    }
    m_grid.deleteRow();
    colourDataCells();
    numberRows();
    m_platform.events.processQueuedEvents();
    m_grid.refresh();
    m_resultsOutOfDate();
}

// --- Block commands ---------------------------------------------------------------------------

// The commands that change cells count as the user's changes, as typing does.
void DataGrid::dropCut() {
    m_grid.clipboardCut(m_platform.clipboard);
    m_grid.userChangedCells();
}

void DataGrid::dropCopy() {
    m_grid.clipboardCopy(m_platform.clipboard);
}

void DataGrid::dropPaste() {
    if (!m_platform.clipboard.hasText()) {
        return;
    }
    m_grid.clipboardPaste(m_platform.clipboard);
    if (m_grid.selection().col == -1) {
        numberRows();
    }
    m_grid.userChangedCells();
}

// The selection's bounds go to the grid as they are, -1 included.
void DataGrid::dropDelete() {
    const CellBlock s = m_grid.selection();
    m_grid.setBlockMode(true);
    m_grid.addressBlock(s.col, s.row, s.col2, s.row2);
    m_grid.clear();
    m_grid.setBlockMode(false);
    m_grid.userChangedCells();
}

// Copies the block's top cell down the block: a constant, never a series.
void DataGrid::dropFill() {
    const CellBlock s = m_grid.selection();
    const std::string value = m_grid.cell(s.col, s.row);
    for (int row = s.row; row <= s.row2; ++row) {
        m_grid.setCell(s.col, row, value);
    }
    m_grid.userChangedCells();
}

} // namespace titron::entry
