#include "entry/grid.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "entry/key_codes.h"
#include "platform/platform.h"
#include "vocabulary/failure.h"

namespace titron::entry {

namespace {

void checkRowLimit(int rows) {
    if (rows < 0) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    if (rows > Grid::kMaxRowLimit) {
        throw vocabulary::Failure(vocabulary::failure::Overflow);
    }
}

bool isEmpty(int first, int last) {
    return first > last;
}

// A span of a selection made in either direction, as bounds: first <= last, and -1 on both
// sides when either side is -1 (all of that line).
void orderSpan(int& first, int& last) {
    if (first == -1 || last == -1) {
        first = last = -1;
    } else if (first > last) {
        std::swap(first, last);
    }
}

CellBlock ordered(CellBlock block) {
    orderSpan(block.col, block.col2);
    orderSpan(block.row, block.row2);
    return block;
}

} // namespace

Grid::Grid(int maxCols, int rowLimit) : m_maxCols(maxCols), m_rowLimit(rowLimit) {
    if (maxCols < 1) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    checkRowLimit(rowLimit);
    const auto rows = static_cast<std::size_t>(rowLimit) + 1;
    m_cells.resize(rows * static_cast<std::size_t>(maxCols + 1));
    m_filledInRow.assign(rows, 0);
    m_colWidths.assign(static_cast<std::size_t>(maxCols) + 1, kDefaultColWidth);
    m_rowHeights.assign(rows, 0);
    m_typedLimits.assign(static_cast<std::size_t>(maxCols) + 1, std::string::npos);
    m_selection = CellBlock{1, 1, 1, 1};
}

void Grid::setChangeListener(std::function<void(const GridChange&)> listener) {
    m_listener = std::move(listener);
}

// --- Text ---------------------------------------------------------------------------------

std::string Grid::text() const {
    return cell(m_col, m_row);
}

void Grid::setText(std::string_view text) {
    setCell(m_col, m_row, text);
}

std::string Grid::cell(int col, int row) const {
    if (m_editMode && col == m_activeCol && row == m_activeRow) {
        return m_editText;
    }
    return inRange(col, row) ? at(col, row).text : std::string();
}

std::string_view Grid::storedText(int col, int row) const {
    return inRange(col, row) ? std::string_view(at(col, row).text) : std::string_view();
}

bool Grid::cellHolds(int col, int row, std::string_view text) const {
    if (m_editMode && col == m_activeCol && row == m_activeRow) {
        return m_editText == text;
    }
    if (!inRange(col, row)) {
        return text.empty();
    }
    // Cells are short: a plain loop beats the call that a general comparison makes.
    const std::string& stored = at(col, row).text;
    if (stored.size() != text.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (stored[i] != text[i]) {
            return false;
        }
    }
    return true;
}

void Grid::setCell(int col, int row, std::string_view text) {
    if (!inRange(col, row)) {
        return;
    }
    store(col, row, text);
    notify(GridChangeKind::Cells, CellBlock{col, row, col, row});
}

std::string Grid::clip() const {
    return blockText(resolve(m_col, m_row, m_col2, m_row2));
}

void Grid::setClip(std::string_view text) {
    writeClip(m_col == -1 ? 1 : m_col, m_row == -1 ? 1 : m_row, text);
}

std::string Grid::blockText(const Bounds& b) const {
    if (isEmpty(b.col, b.col2) || isEmpty(b.row, b.row2)) {
        return {};
    }
    // Measured first, so that a table of tens of thousands of rows is built in one buffer.
    std::size_t size = 0;
    for (int r = b.row; r <= b.row2; ++r) {
        for (int c = b.col; c <= b.col2; ++c) {
            size += at(c, r).text.size() + 1; // the cell and a Tab, or CR of CR LF
        }
        size += 1;
    }
    std::string out;
    out.reserve(size);
    for (int r = b.row; r <= b.row2; ++r) {
        for (int c = b.col; c <= b.col2; ++c) {
            if (c > b.col) {
                out += '\t';
            }
            out += at(c, r).text;
        }
        out += "\r\n";
    }
    return out;
}

void Grid::writeClip(int startCol, int startRow, std::string_view text) {
    const std::size_t n = text.size();
    std::size_t pos = 0;
    int row = startRow;
    int lastCol = startCol;
    bool wrote = false;
    while (pos < n && row <= m_rowLimit) {
        std::size_t end = text.find_first_of("\r\n", pos);
        if (end == std::string_view::npos) {
            end = n;
        }
        const std::string_view line = text.substr(pos, end - pos);
        int col = startCol;
        std::size_t cellStart = 0;
        while (col <= m_maxCols) {
            const std::size_t tab = line.find('\t', cellStart);
            const std::size_t cellEnd = tab == std::string_view::npos ? line.size() : tab;
            if (inRange(col, row)) {
                store(col, row, line.substr(cellStart, cellEnd - cellStart));
                wrote = true;
            }
            lastCol = std::max(lastCol, col);
            ++col;
            if (tab == std::string_view::npos) {
                break;
            }
            cellStart = tab + 1;
        }
        ++row;
        // CR LF, a lone CR and a lone LF each end one row.
        pos = end;
        if (pos < n) {
            pos += (text[pos] == '\r' && pos + 1 < n && text[pos + 1] == '\n') ? 2 : 1;
        }
    }
    if (wrote) {
        notify(GridChangeKind::Cells, CellBlock{startCol, startRow, lastCol, row - 1});
    }
}

// --- Cursor, selection, scrolling -------------------------------------------------------------

void Grid::activate() {
    endEdit(true);
    m_activeCol = std::clamp(m_col, 1, m_maxCols);
    m_activeRow = std::clamp(m_row, 1, std::max(m_rowLimit, 1));
    m_selection = CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow};
    m_blockSelected = false;
    notify(GridChangeKind::ActiveCell);
}

void Grid::setFirstVisibleRow(int row) {
    m_firstVisibleRow = std::clamp(row, 1, std::max(m_rowLimit, 1));
    notify(GridChangeKind::Scroll);
}

void Grid::setSelection(const CellBlock& block) {
    m_selection = ordered(block);
    const CellBlock& s = m_selection;
    const bool oneCell = s.col == s.col2 && s.row == s.row2 && s.col != -1 && s.row != -1;
    m_blockSelected = !oneCell;
    notify(GridChangeKind::Selection, m_selection);
}

void Grid::clearSelection() {
    m_selection = CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow};
    m_blockSelected = false;
    notify(GridChangeKind::Selection, m_selection);
}

// --- Changes ----------------------------------------------------------------------------------

void Grid::clear() {
    clearBlock(addressedTarget());
}

void Grid::clearBlock(const Bounds& b) {
    if (isEmpty(b.col, b.col2) || isEmpty(b.row, b.row2)) {
        return;
    }
    for (int r = b.row; r <= b.row2; ++r) {
        // A row without text in its data cells has nothing to clear there, unless it holds
        // the cell being edited (clearing that cell empties the edit too).
        const bool nothingToClear = b.col >= 1 && m_filledInRow[static_cast<std::size_t>(r)] == 0 &&
                                    !(m_editMode && r == m_activeRow);
        if (nothingToClear) {
            continue;
        }
        for (int c = b.col; c <= b.col2; ++c) {
            store(c, r, {});
        }
    }
    notify(GridChangeKind::Cells, CellBlock{b.col, b.row, b.col2, b.row2});
}

void Grid::insertRow(int count) {
    const int row = m_row;
    if (row < 1 || row > m_rowLimit || count < 1) {
        return;
    }
    if (count > kMaxRowLimit - m_rowLimit) {
        throw vocabulary::Failure(vocabulary::failure::Overflow);
    }
    endEdit(true);
    const auto width = static_cast<std::ptrdiff_t>(m_maxCols + 1);
    const auto before = static_cast<std::ptrdiff_t>(row);
    const auto n = static_cast<std::size_t>(count);
    m_cells.insert(m_cells.begin() + before * width, n * static_cast<std::size_t>(width), Cell{});
    m_filledInRow.insert(m_filledInRow.begin() + before, n, 0);
    m_rowHeights.insert(m_rowHeights.begin() + before, n, m_newRowHeight);
    m_rowLimit += count;
    notify(GridChangeKind::Rows);
}

void Grid::deleteRow() {
    const Bounds b = addressedTarget();
    const int first = std::max(b.row, 1); // the heading row never goes
    if (isEmpty(first, b.row2)) {
        return;
    }
    endEdit(true);
    removeRows(first, b.row2);
    notify(GridChangeKind::Rows);
}

void Grid::removeRows(int first, int last) {
    const auto width = static_cast<std::ptrdiff_t>(m_maxCols + 1);
    const auto count = static_cast<std::size_t>(last - first + 1);
    m_cells.erase(m_cells.begin() + first * width, m_cells.begin() + (last + 1) * width);
    m_cells.resize(m_cells.size() + count * static_cast<std::size_t>(width));
    m_filledInRow.erase(m_filledInRow.begin() + first, m_filledInRow.begin() + last + 1);
    m_filledInRow.resize(m_filledInRow.size() + count, 0);
    m_rowHeights.erase(m_rowHeights.begin() + first, m_rowHeights.begin() + last + 1);
    m_rowHeights.resize(m_rowHeights.size() + count, m_newRowHeight);
}

void Grid::setTextColour(Colour colour) {
    const Bounds b = addressedTarget();
    if (isEmpty(b.col, b.col2) || isEmpty(b.row, b.row2)) {
        return;
    }
    for (int r = b.row; r <= b.row2; ++r) {
        for (int c = b.col; c <= b.col2; ++c) {
            at(c, r).colour = colour;
        }
    }
    notify(GridChangeKind::Cells, CellBlock{b.col, b.row, b.col2, b.row2});
}

Colour Grid::textColour(int col, int row) const {
    return inRange(col, row) ? at(col, row).colour : kDefaultTextColour;
}

void Grid::clipboardCopy(platform::Clipboard& clipboard) const {
    clipboard.clear();
    clipboard.setText(blockText(selectionTarget()));
}

void Grid::clipboardCut(platform::Clipboard& clipboard) {
    endEdit(true);
    clipboardCopy(clipboard);
    clearBlock(selectionTarget());
}

void Grid::clipboardPaste(platform::Clipboard& clipboard) {
    if (!clipboard.hasText()) {
        return;
    }
    endEdit(true);
    const Bounds b = selectionTarget();
    writeClip(b.col, b.row, clipboard.text());
}

// --- Size and look ----------------------------------------------------------------------------

int Grid::dataRowCount() const {
    for (int r = m_rowLimit; r >= 1; --r) {
        if (m_filledInRow[static_cast<std::size_t>(r)] > 0) {
            return r;
        }
    }
    return 0;
}

void Grid::setRowLimit(int rows) {
    checkRowLimit(rows);
    if (rows == m_rowLimit) {
        return;
    }
    if (m_editMode && m_activeRow > rows) {
        endEdit(false); // the edited row is gone
    }
    const auto count = static_cast<std::size_t>(rows) + 1;
    m_cells.resize(count * static_cast<std::size_t>(m_maxCols + 1));
    m_filledInRow.resize(count, 0);
    m_rowHeights.resize(count, m_newRowHeight);
    m_rowLimit = rows;
    m_activeRow = std::min(m_activeRow, std::max(rows, 1));
    m_firstVisibleRow = std::min(m_firstVisibleRow, std::max(rows, 1));
    notify(GridChangeKind::Rows);
}

int Grid::colWidth(int col) const {
    if (col < 0 || col > m_maxCols) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    return m_colWidths[static_cast<std::size_t>(col)];
}

void Grid::setColWidth(int index, int twips) {
    if (index < -1 || index > m_maxCols || twips < 0) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    if (index == -1) {
        std::fill(m_colWidths.begin() + 1, m_colWidths.end(), twips);
    } else {
        m_colWidths[static_cast<std::size_t>(index)] = twips;
    }
    notify(GridChangeKind::Layout);
}

int Grid::rowHeight(int row) const {
    if (row < 0 || row > m_rowLimit) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    return m_rowHeights[static_cast<std::size_t>(row)];
}

void Grid::setRowHeight(int row, int twips) {
    if (row < -1 || row > m_rowLimit || twips < 0) {
        throw vocabulary::Failure(vocabulary::failure::InvalidCall);
    }
    if (row == -1) {
        std::fill(m_rowHeights.begin() + 1, m_rowHeights.end(), twips);
        m_newRowHeight = twips;
    } else {
        m_rowHeights[static_cast<std::size_t>(row)] = twips;
    }
    notify(GridChangeKind::Layout);
}

void Grid::setRedraw(bool on) {
    if (on == m_redraw) {
        return;
    }
    m_redraw = on;
    if (!on) {
        m_changedWhileHidden = false;
    } else if (m_changedWhileHidden) {
        m_changedWhileHidden = false;
        notify(GridChangeKind::All);
    }
}

void Grid::refresh() {
    notify(GridChangeKind::All);
}

// --- Editing ----------------------------------------------------------------------------------

void Grid::setEditMode(bool on) {
    if (on) {
        if (!m_locked && !m_editMode && inRange(m_activeCol, m_activeRow)) {
            startEdit(at(m_activeCol, m_activeRow).text);
        }
    } else {
        endEdit(true);
    }
}

void Grid::startEdit(std::string text) {
    m_editMode = true;
    m_editText = std::move(text);
    notify(GridChangeKind::EditMode, CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow});
}

void Grid::endEdit(bool keep) {
    if (!m_editMode) {
        return;
    }
    m_editMode = false; // first, so that store() leaves the edit text alone
    const std::string edited = std::move(m_editText);
    m_editText.clear();
    const int col = m_activeCol;
    const int row = m_activeRow;
    const bool changed = keep && inRange(col, row) && at(col, row).text != edited;
    if (changed) {
        store(col, row, edited);
    }
    notify(GridChangeKind::EditMode, CellBlock{col, row, col, row});
    if (changed && m_events.cellChanged) {
        m_events.cellChanged(col, row);
    }
}

// --- The user's actions -------------------------------------------------------------------------

void Grid::userMoveTo(int newCol, int newRow) {
    endEdit(true);
    // The handler of leaving cell sees a cell that exists; it may change the row limit, so
    // the target is clipped again afterwards.
    newCol = std::clamp(newCol, 1, m_maxCols);
    newRow = std::clamp(newRow, 1, std::max(m_rowLimit, 1));
    if (newCol == m_activeCol && newRow == m_activeRow) {
        return;
    }
    bool cancel = false;
    if (m_events.leavingCell) {
        m_events.leavingCell(m_activeCol, m_activeRow, newCol, newRow, cancel);
    }
    if (cancel) {
        return;
    }
    m_activeCol = std::clamp(newCol, 1, m_maxCols);
    m_activeRow = std::clamp(newRow, 1, std::max(m_rowLimit, 1));
    m_selection = CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow};
    m_blockSelected = false;
    notify(GridChangeKind::ActiveCell);
}

void Grid::userKeyPress(int character) {
    if (m_events.keyPress) {
        m_events.keyPress(character);
    }
    if (character == 0 || m_locked) {
        return;
    }
    if (character < 32) {
        // Control keys only act on an open edit; the view moves the cursor for them.
        if (!m_editMode) {
            return;
        }
        if (character == key::Backspace && !m_editText.empty()) {
            m_editText.pop_back();
            notify(GridChangeKind::Cells,
                   CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow});
        } else if (character == key::Enter) {
            endEdit(true);
        } else if (character == key::Escape) {
            endEdit(false);
        }
        return;
    }
    // Cell text is single-byte; a code beyond it cannot be stored.
    if (character > 255 || !inRange(m_activeCol, m_activeRow)) {
        return;
    }
    if (!m_editMode) {
        startEdit({}); // typing replaces the cell's text
    }
    if (m_editText.size() >= typedLengthLimit(m_activeCol)) {
        return;
    }
    m_editText += static_cast<char>(static_cast<unsigned char>(character));
    notify(GridChangeKind::Cells, CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow});
}

void Grid::userKeyDown(int keyCode, int shift) {
    if (m_events.keyDown) {
        m_events.keyDown(keyCode, shift);
    }
    // The control's own clipboard keys, after the window has seen them; fixed text is only
    // copied.
    if (m_clipboard == nullptr || m_editMode || (shift & CtrlKey) == 0 ||
        (m_locked && keyCode != key::C)) {
        return;
    }
    switch (keyCode) {
    case key::C:
        clipboardCopy(*m_clipboard);
        break;
    case key::X:
        clipboardCut(*m_clipboard);
        userChangedCells();
        break;
    case key::V:
        if (m_clipboard->hasText()) {
            clipboardPaste(*m_clipboard);
            userChangedCells();
        }
        break;
    default:
        break;
    }
}

void Grid::userChangedCells() {
    const Bounds b = selectionTarget();
    if (m_events.cellChanged) {
        m_events.cellChanged(b.col, b.row);
    }
}

void Grid::setTypedLengthLimit(int col, std::size_t characters) {
    if (col >= 0 && col <= m_maxCols) {
        m_typedLimits[static_cast<std::size_t>(col)] = characters;
    }
}

std::size_t Grid::typedLengthLimit(int col) const {
    return col >= 0 && col <= m_maxCols ? m_typedLimits[static_cast<std::size_t>(col)]
                                        : std::string::npos;
}

void Grid::userEditText(std::string_view text) {
    if (m_locked || !inRange(m_activeCol, m_activeRow)) {
        return;
    }
    text = text.substr(0, std::min(text.size(), typedLengthLimit(m_activeCol)));
    if (!m_editMode) {
        startEdit(std::string(text));
    } else {
        m_editText.assign(text);
        notify(GridChangeKind::Cells,
               CellBlock{m_activeCol, m_activeRow, m_activeCol, m_activeRow});
    }
}

void Grid::userCommitEdit() {
    endEdit(true);
}

void Grid::userCancelEdit() {
    endEdit(false);
}

void Grid::userSelect(const CellBlock& block) {
    endEdit(true);
    setSelection(block);
}

void Grid::userRightClick(int clickType, int col, int row, int x, int y) {
    if (m_events.rightClick) {
        m_events.rightClick(clickType, col, row, x, y);
    }
}

void Grid::userFocusGained() {
    if (m_events.focusGained) {
        m_events.focusGained();
    }
}

void Grid::userFocusLost() {
    endEdit(true);
    if (m_events.focusLost) {
        m_events.focusLost();
    }
}

// --- Internals ----------------------------------------------------------------------------------

// A bound of -1 on either side stands for all data columns (rows); other bounds are put in
// order and clipped to the cells that exist, headings included. A clipped-away block comes
// out with first > last.
Grid::Bounds Grid::resolve(int col, int row, int col2, int row2) const {
    Bounds b{};
    if (col == -1 || col2 == -1) {
        b.col = 1;
        b.col2 = m_maxCols;
    } else {
        b.col = std::max(std::min(col, col2), 0);
        b.col2 = std::min(std::max(col, col2), m_maxCols);
    }
    if (row == -1 || row2 == -1) {
        b.row = 1;
        b.row2 = m_rowLimit;
    } else {
        b.row = std::max(std::min(row, row2), 0);
        b.row2 = std::min(std::max(row, row2), m_rowLimit);
    }
    return b;
}

Grid::Bounds Grid::addressedTarget() const {
    return m_blockMode ? resolve(m_col, m_row, m_col2, m_row2)
                       : resolve(m_col, m_row, m_col, m_row);
}

Grid::Bounds Grid::selectionTarget() const {
    if (!m_blockSelected) {
        return resolve(m_activeCol, m_activeRow, m_activeCol, m_activeRow);
    }
    return resolve(m_selection.col, m_selection.row, m_selection.col2, m_selection.row2);
}

bool Grid::inRange(int col, int row) const {
    return col >= 0 && col <= m_maxCols && row >= 0 && row <= m_rowLimit;
}

Grid::Cell& Grid::at(int col, int row) {
    return m_cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_maxCols + 1) +
                   static_cast<std::size_t>(col)];
}

const Grid::Cell& Grid::at(int col, int row) const {
    return m_cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_maxCols + 1) +
                   static_cast<std::size_t>(col)];
}

// Every text write goes through here, so that the filled-cell count per row stays right.
void Grid::store(int col, int row, std::string_view text) {
    Cell& cell = at(col, row);
    if (col >= 1 && cell.text.empty() != text.empty()) {
        m_filledInRow[static_cast<std::size_t>(row)] += text.empty() ? -1 : 1;
    }
    cell.text.assign(text);
    if (m_editMode && col == m_activeCol && row == m_activeRow) {
        m_editText.assign(text); // code overwrote the cell being edited
    }
}

void Grid::notify(GridChangeKind kind, CellBlock block) {
    if (!m_redraw) {
        m_changedWhileHidden = true;
        return;
    }
    if (m_listener) {
        m_listener(GridChange{kind, block});
    }
}

} // namespace titron::entry
