// The spreadsheet model behind grid on Analyze and on Compare. A cell holds text.
// Data columns and rows count from 1; column 0 and row 0 are headings, written like
// cells. Code addresses a cell or block and then acts on it; the user acts through the
// user* entry points, which raise the grid's events as a spreadsheet control would.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace titron::platform {
class Clipboard;
}

namespace titron::entry {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Colour&, const Colour&) = default;
};

// The control's own text colour, which cells have until code colours them.
inline constexpr Colour kDefaultTextColour{0, 0, 0};

// A rectangle of cells. A bound of -1 (either of the two) means all data columns (1 to the
// last) or all data rows (1 to the row limit); the headings then stay out.
struct CellBlock {
    int col = 1;
    int row = 1;
    int col2 = 1;
    int row2 = 1;
    friend bool operator==(const CellBlock&, const CellBlock&) = default;
};

// Shift state of a key-down event, as flags.
enum KeyShift : int { ShiftNone = 0, ShiftKey = 1, CtrlKey = 2, AltKey = 4 };

// The events of the grid, set by the window that owns it.
struct GridEvents {
    // After the user changed a cell: an edit, or a command that changes cells (cut, paste,
    // and the window's own block commands); for a block, its top left cell. Never when code
    // writes a cell.
    std::function<void(int col, int row)> cellChanged;
    // Before the cursor moves; setting cancel keeps it where it is.
    std::function<void(int col, int row, int newCol, int newRow, bool& cancel)> leavingCell;
    // A typed character; the handler may change it, 0 drops the key.
    std::function<void(int& character)> keyPress;
    std::function<void(int keyCode, int shift)> keyDown;
    std::function<void(int clickType, int col, int row, int x, int y)> rightClick;
    std::function<void()> focusGained;
    std::function<void()> focusLost;
};

// What a view needs to repaint after a change.
enum class GridChangeKind { Cells, Rows, Layout, ActiveCell, Selection, Scroll, EditMode, All };
struct GridChange {
    GridChangeKind kind;
    CellBlock block; // the cells concerned, for Cells
};

class Grid {
  public:
    // The largest row limit the grid takes; setting more throws Failure 6 (Overflow).
    static constexpr int kMaxRowLimit = 65536;
    // Width of every column until code sets it, in twips.
    static constexpr int kDefaultColWidth = 1200;

    // maxCols: data columns (4 on Analyze, 9 on Compare); rowLimit: rows that exist.
    Grid(int maxCols, int rowLimit);

    GridEvents& events() { return m_events; }
    // The view's listener; called at once on every change while redraw is on.
    void setChangeListener(std::function<void(const GridChange&)> listener);

    int maxCols() const { return m_maxCols; }

    // --- Addressing -------------------------------------------------------------------
    // Addresses are kept as given: a cell outside the grid reads as empty text, writes to it
    // are dropped, and a block is cut to the cells that exist.
    void setCol(int col) { m_col = col; }
    void setRow(int row) { m_row = row; }
    void setCol2(int col2) { m_col2 = col2; }
    void setRow2(int row2) { m_row2 = row2; }
    void addressCell(int col, int row) {
        m_col = col;
        m_row = row;
    }
    void addressBlock(int col, int row, int col2, int row2) {
        addressCell(col, row);
        m_col2 = col2;
        m_row2 = row2;
    }
    void setBlockMode(bool on) { m_blockMode = on; }
    int col() const { return m_col; }
    int row() const { return m_row; }
    int col2() const { return m_col2; }
    int row2() const { return m_row2; }
    bool blockMode() const { return m_blockMode; }

    // --- Text -------------------------------------------------------------------------
    // The addressed cell's text; during an edit of that cell, what is typed so far.
    std::string text() const;
    void setText(std::string_view text);
    // The same without moving the address.
    std::string cell(int col, int row) const;
    // What the cell holds, without an edit in progress: the text clip() gives for it.
    // Valid until the cell next changes.
    std::string_view storedText(int col, int row) const;
    void setCell(int col, int row, std::string_view text);
    // Whether cell(col, row) is text, without copying it.
    bool cellHolds(int col, int row, std::string_view text) const;
    // The block col..col2, row..row2 (always the rectangle, block mode or not) as one
    // text: Tab between cells, CR LF behind every row, the last included.
    std::string clip() const;
    // Writes such a text from the addressed cell on. A row ends at CR LF, and also at a
    // lone CR or LF; cells beyond the last column or the row limit are dropped.
    void setClip(std::string_view text);

    // --- Cursor, selection, scrolling ---------------------------------------------------
    int activeCol() const { return m_activeCol; }
    int activeRow() const { return m_activeRow; }
    // The addressed cell, moved into the data cells, becomes the active cell; a block
    // selection goes. Raises no leaving cell.
    void activate();
    int firstVisibleRow() const { return m_firstVisibleRow; }
    void setFirstVisibleRow(int row);
    bool blockSelected() const { return m_blockSelected; }
    // The bounds stand in order (col <= col2, row <= row2) whichever way the block was made,
    // and a -1 stands on both sides of its pair.
    CellBlock selection() const { return m_selection; }
    // A single cell (no -1 bound) is no block: block selected is then false.
    void setSelection(const CellBlock& block);
    void clearSelection();

    // --- Changes --------------------------------------------------------------------------
    // Empties the addressed cell, or in block mode the addressed block.
    void clear();
    // Blank rows (count of them, as many single inserts would) before the addressed row; the
    // rows below move down and the row limit grows with them, so that no row falls off the
    // end. Beyond kMaxRowLimit throws Failure 6; an addressed row outside 1..row limit
    // inserts nothing.
    void insertRow(int count = 1);
    // Removes the addressed row, or in block mode the block's rows (never row 0); the rows
    // below move up and blank rows come in at the end, so that the row limit stays.
    void deleteRow();
    // Text colour of the addressed cell, or in block mode of the addressed block.
    void setTextColour(Colour colour);
    Colour textColour(int col, int row) const;

    // Clipboard verbs on the selection (or the active cell when no block is selected), in
    // the clip layout. Paste writes all of the clipboard's text from the block's top left
    // cell, cut off at the grid's edges. None of them raises cell changed: the user's keys
    // do (userKeyDown), as userChangedCells does for a window's command.
    void clipboardCopy(platform::Clipboard& clipboard) const;
    void clipboardCut(platform::Clipboard& clipboard);
    void clipboardPaste(platform::Clipboard& clipboard);

    // --- Size and look -----------------------------------------------------------------
    // The last row that holds text in a data column; 0 if none.
    int dataRowCount() const;
    int rowLimit() const { return m_rowLimit; }
    // Shrinking drops the rows beyond; below 0 throws Failure 5, above kMaxRowLimit 6.
    void setRowLimit(int rows);
    // Widths in twips. Index -1 sets all data columns (not the heading column 0). An index
    // outside the columns or a negative width throws Failure 5.
    int colWidth(int col) const;
    void setColWidth(int index, int twips);
    // Heights in twips, 0 for the control's default; row -1 sets all data rows, and the
    // rows that come later (by a larger row limit or inserts) too.
    int rowHeight(int row) const;
    void setRowHeight(int row, int twips);
    // Off during bulk changes: the view hears nothing until redraw goes on again, and then
    // one All change if anything changed meanwhile.
    void setRedraw(bool on);
    bool redraw() const { return m_redraw; }
    void refresh();

    // --- Typing -------------------------------------------------------------------------
    // The most characters the user can type into a cell of the column; code writes more.
    void setTypedLengthLimit(int col, std::size_t characters);
    std::size_t typedLengthLimit(int col) const;
    // The clipboard that Ctrl+C, Ctrl+X and Ctrl+V use outside an edit; none by default.
    void setClipboard(platform::Clipboard* clipboard) { m_clipboard = clipboard; }

    // --- Editing -------------------------------------------------------------------------
    // A locked grid is fixed text: the user selects and moves, never types or edits.
    void setLocked(bool locked) { m_locked = locked; }
    bool locked() const { return m_locked; }
    bool editMode() const { return m_editMode; }
    // Setting it opens the active cell for editing with its text; clearing it keeps what
    // was typed (raising cell changed when the text differs).
    void setEditMode(bool on);

    // --- The user's actions, as the view reports them --------------------------------------
    // Moves the cursor: ends an edit, raises leaving cell, and moves unless cancelled. The
    // target is moved into the data cells before the event and again after it (the handler
    // may change the row limit); a move onto the active cell itself raises nothing.
    void userMoveTo(int newCol, int newRow);
    // A typed character: key press may change or drop it; an accepted character (32..255)
    // starts an edit of the active cell (replacing its text) or is appended to the edit.
    // Control codes only act on an open edit: Backspace (8) removes the last character,
    // Enter (13) commits, Escape (27) cancels; others are ignored.
    void userKeyPress(int character);
    // A key went down: raises key down, then does the clipboard keys (see setClipboard).
    void userKeyDown(int keyCode, int shift);
    // The editor's whole text, when the view edits in place.
    void userEditText(std::string_view text);
    void userCommitEdit();
    void userCancelEdit();
    void userSelect(const CellBlock& block);
    // A command of the window changed the cells of the selection (or of the active cell)
    // for the user (clear, fill, the pop-up's cut and paste): raises cell changed for its
    // top left cell.
    void userChangedCells();
    void userRightClick(int clickType, int col, int row, int x, int y);
    void userFocusGained();
    void userFocusLost();

  private:
    struct Cell {
        std::string text;
        Colour colour = kDefaultTextColour;
    };

    // Resolved, clamped bounds of an addressed rectangle (-1 expanded).
    struct Bounds {
        int col, row, col2, row2;
    };
    Bounds resolve(int col, int row, int col2, int row2) const;
    Bounds addressedTarget() const;
    Bounds selectionTarget() const;
    bool inRange(int col, int row) const;
    Cell& at(int col, int row);
    const Cell& at(int col, int row) const;
    void store(int col, int row, std::string_view text);
    std::string blockText(const Bounds& bounds) const;
    void writeClip(int col, int row, std::string_view text);
    void clearBlock(const Bounds& bounds);
    void removeRows(int first, int last);
    void notify(GridChangeKind kind, CellBlock block = {});
    void startEdit(std::string text);
    void endEdit(bool keep);

    int m_maxCols;
    int m_rowLimit;
    std::vector<Cell> m_cells;      // (m_rowLimit + 1) rows of (m_maxCols + 1) cells
    std::vector<int> m_filledInRow; // data cells (columns 1..) holding text, per row
    std::vector<int> m_colWidths;
    std::vector<int> m_rowHeights; // 0 = the control's default

    int m_col = 1, m_row = 1, m_col2 = 1, m_row2 = 1;
    bool m_blockMode = false;
    int m_activeCol = 1, m_activeRow = 1;
    int m_firstVisibleRow = 1;
    bool m_blockSelected = false;
    CellBlock m_selection{};
    bool m_redraw = true;
    bool m_changedWhileHidden = false;
    bool m_editMode = false;
    bool m_locked = false;
    int m_newRowHeight = 0;
    std::string m_editText;
    std::vector<std::size_t> m_typedLimits; // per column; npos for no limit
    platform::Clipboard* m_clipboard = nullptr;

    GridEvents m_events;
    std::function<void(const GridChange&)> m_listener;
};

} // namespace titron::entry
