#include "platform/qt/qt_grid_view.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <QFocusEvent>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>

#include "entry/key_codes.h"
#include "platform/qt/qt_grid_model.h"
#include "platform/qt/qt_path_delegate.h"
#include "platform/qt/qt_twips.h"

namespace titron::qt {

namespace {

// A row whose height the grid leaves at 0 gets the control's own height, as does the
// heading row; never less than a line of the view's font.
constexpr int kDefaultRowTwips = 270;

// A typed character outside Latin-1 reaches the grid as this.
constexpr int kCodeUnknownCharacter = '?';

struct KeyCode {
    int qtKey;
    int code;
};

// Keys whose code doesn't follow from Qt's key value. A shifted symbol is reported by the
// key that carries it on a US keyboard, as the classic codes name keys, not characters.
constexpr KeyCode kKeyCodes[] = {
    {Qt::Key_Backspace, entry::key::Backspace},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Return, entry::key::Enter},
    {Qt::Key_Enter, entry::key::Enter},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, entry::key::Escape},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_ParenRight, 48},
    {Qt::Key_Exclam, 49},
    {Qt::Key_At, 50},
    {Qt::Key_NumberSign, 51},
    {Qt::Key_Dollar, 52},
    {Qt::Key_Percent, 53},
    {Qt::Key_AsciiCircum, 54},
    {Qt::Key_Ampersand, 55},
    {Qt::Key_Asterisk, 56},
    {Qt::Key_ParenLeft, 57},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Colon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_AsciiTilde, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_Bar, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, 222},
    {Qt::Key_QuoteDbl, 222},
};

// The keypad's own keys have codes apart from the main keyboard's.
constexpr KeyCode kKeypadCodes[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
};

int lookUp(const KeyCode* first, const KeyCode* last, int key) {
    const KeyCode* found =
        std::find_if(first, last, [key](const KeyCode& k) { return k.qtKey == key; });
    return found == last ? 0 : found->code;
}

// 0 for a key without a classic code.
int classicKeyCode(int key, Qt::KeyboardModifiers modifiers) {
    const bool keypad = (modifiers & Qt::KeypadModifier) != 0;
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return key; // 65..90, the upper-case letters
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return keypad ? entry::key::Keypad0 + (key - Qt::Key_0) : key; // 48..57 on the main keys
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return entry::key::F1 + (key - Qt::Key_F1);
    }
    if (keypad) {
        if (const int code = lookUp(std::begin(kKeypadCodes), std::end(kKeypadCodes), key)) {
            return code;
        }
    }
    return lookUp(std::begin(kKeyCodes), std::end(kKeyCodes), key);
}

int shiftFlags(Qt::KeyboardModifiers modifiers) {
    int flags = entry::ShiftNone;
    if (modifiers & Qt::ShiftModifier) {
        flags |= entry::ShiftKey;
    }
    if (modifiers & Qt::ControlModifier) {
        flags |= entry::CtrlKey;
    }
    if (modifiers & Qt::AltModifier) {
        flags |= entry::AltKey;
    }
    return flags;
}

// Ctrl or Alt alone make a command, not text; both together are AltGr on Windows, which
// types characters.
bool typingModifiers(Qt::KeyboardModifiers modifiers) {
    return ((modifiers & Qt::ControlModifier) != 0) == ((modifiers & Qt::AltModifier) != 0);
}

bool printable(const QString& text) {
    if (text.isEmpty()) {
        return false;
    }
    const auto codes = text.toUcs4();
    return std::all_of(codes.begin(), codes.end(),
                       [](char32_t c) { return c >= U' ' && c != U'\x7f'; });
}

bool isNavigationKey(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return false;
    }
}

// Shift+F10 and the Menu key ask for the pop-up menu, as a right click does.
bool isMenuKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers =
        event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    return (event.key() == Qt::Key_Menu && modifiers == Qt::NoModifier) ||
           (event.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier);
}

// Where a selection's span stays put while Shift and the mouse grow it: at the cursor's line
// when the span starts or ends there, else at its first line. A whole span (-1) has none of
// its own: the cursor's line stands for it.
int fixedEnd(int first, int last, int cursor) {
    if (first == -1) {
        return cursor;
    }
    return cursor == last ? last : first;
}

// The span's other end, the one that grows.
int movingEnd(int first, int last, int fixed) {
    if (first == -1) {
        return fixed;
    }
    return fixed == first ? last : first;
}

// The keys the grid takes. Everything else (Alt+letter for the menus, Ctrl+A, Ctrl+N and
// the other commands, F1) passes on to the window and its shortcuts.
bool isGridKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool ctrl = (modifiers & Qt::ControlModifier) != 0;
    const bool alt = (modifiers & Qt::AltModifier) != 0;
    if (alt && !ctrl) {
        return false;
    }
    const int key = event.key();
    if (isNavigationKey(key) || isMenuKey(event)) {
        return true;
    }
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_F2:
        return true;
    case Qt::Key_C: // the grid's clipboard keys
    case Qt::Key_X:
    case Qt::Key_V:
        if (ctrl && !alt) {
            return true;
        }
        break;
    default:
        break;
    }
    return typingModifiers(modifiers) && printable(event.text());
}

// The horizontal header at the height the grid gives its heading row, which may be lower
// than the style's own header.
class HeadingRow : public QHeaderView {
  public:
    explicit HeadingRow(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

    void setRowHeight(int pixels) {
        m_height = pixels;
        updateGeometry();
    }
    QSize sizeHint() const override {
        QSize size = QHeaderView::sizeHint();
        size.setHeight(m_height);
        return size;
    }

  protected:
    // A heading that wraps asks only for the room of its widest word: fitting a column to
    // its text then fits its figures, and the heading wraps over them.
    QSize sectionSizeFromContents(int section) const override {
        QSize size = QHeaderView::sectionSizeFromContents(section);
        const int place =
            model()->headerData(section, orientation(), Qt::TextAlignmentRole).toInt();
        if ((place & Qt::TextWordWrap) == 0) {
            return size;
        }
        const QString text = model()->headerData(section, orientation()).toString();
        const QFontMetrics metrics = fontMetrics();
        int widest = 0;
        for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
            widest = std::max(widest, metrics.horizontalAdvance(word));
        }
        // The label's margins on both sides, and a pixel each for rounding.
        const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this) + 1;
        size.setWidth(widest + 2 * margin);
        return size;
    }

  private:
    int m_height = 0;
};

} // namespace

QtGridView::QtGridView(entry::Grid& grid, QWidget* parent)
    : QTableView(parent), m_grid(grid), m_model(new QtGridModel(grid, this)) {
    auto* heading = new HeadingRow(this);
    heading->setSectionsClickable(true);
    heading->setHighlightSections(false);
    heading->setSectionResizeMode(QHeaderView::Fixed);
    heading->setMinimumSectionSize(0);
    setHorizontalHeader(heading);
    setModel(m_model);

    // The grid keeps the selection and the edit; Qt's are off.
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    // The view scrolls to the grid's cursor itself, not to every current index.
    setAutoScroll(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setFocusPolicy(Qt::StrongFocus);
    // The window opens the grid's pop-up menu when the grid asks for it.
    setContextMenuPolicy(Qt::PreventContextMenu);

    QHeaderView* rows = verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(
        std::max(twipsToPixelsY(kDefaultRowTwips, *this), fontMetrics().height() + 2));

    // A press on a heading selects through the grid; Qt's column selection would also
    // move the current index off the grid's cursor.
    disconnect(heading, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(heading, &QHeaderView::sectionEntered, this, nullptr);
    connect(heading, &QHeaderView::sectionPressed, this, &QtGridView::onHeaderPressed);
    connect(heading, &QHeaderView::sectionEntered, this, &QtGridView::onHeaderEntered);

    connect(m_model, &QtGridModel::activeCellChanged, this, &QtGridView::showActiveCell);
    connect(m_model, &QtGridModel::firstVisibleRowChanged, this, &QtGridView::showFirstVisibleRow);
    connect(m_model, &QtGridModel::gridLayoutChanged, this, &QtGridView::applyGridLayout);
    connect(m_model, &QAbstractItemModel::modelReset, this, &QtGridView::onModelReset);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &QtGridView::onScrolled);

    onModelReset();
}

void QtGridView::applyGridLayout() {
    auto* heading = static_cast<HeadingRow*>(horizontalHeader());
    m_applyingLayout = true;
    for (int col = 0; col <= m_grid.maxCols(); ++col) {
        heading->resizeSection(col, twipsToPixelsX(m_grid.colWidth(col), *this));
    }
    m_applyingLayout = false;
    const int headingTwips = m_grid.rowHeight(0);
    heading->setRowHeight(
        twipsToPixelsY(headingTwips > 0 ? headingTwips : kDefaultRowTwips, *this));

    // Only the rows whose height differs are touched: resizing all 32,767 sections takes
    // Qt about a third of a second.
    QHeaderView* rows = verticalHeader();
    const int count = std::min(m_model->rowCount(), m_grid.rowLimit());
    for (int row = 1; row <= count; ++row) {
        const int twips = m_grid.rowHeight(row);
        const int pixels = twips > 0 ? twipsToPixelsY(twips, *this) : rows->defaultSectionSize();
        if (rows->sectionSize(row - 1) != pixels) {
            rows->resizeSection(row - 1, pixels);
        }
    }
    updateGeometries();
}

void QtGridView::setCentredColumns(std::function<bool(int col)> centred) {
    m_model->setCentredColumns(std::move(centred));
    m_model->setWholeTextTips(true);
    setWordWrap(false);
    // An elided heading would be cut to one line before it could wrap.
    horizontalHeader()->setTextElideMode(Qt::ElideNone);
}

void QtGridView::setResizableColumns() {
    QHeaderView* heading = horizontalHeader();
    for (int col = 1; col <= m_grid.maxCols(); ++col) {
        heading->setSectionResizeMode(col, QHeaderView::Interactive);
    }
    // A double click on a border fits the column (QTableView's own answer to it).
    connect(heading, &QHeaderView::sectionResized, this, &QtGridView::onColumnResized);
}

void QtGridView::setPathColumn(int col) {
    setItemDelegateForColumn(col, new QtPathDelegate(this));
}

// The grid keeps the user's width, so that the next layout from the grid (new rows, a
// deletion) shows it again.
void QtGridView::onColumnResized(int col, int /*oldPixels*/, int newPixels) {
    if (!m_applyingLayout && col >= 1) {
        m_grid.setColWidth(col, pixelsToTwipsX(newPixels, *this));
    }
}

// --- Keys -------------------------------------------------------------------------------------

bool QtGridView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // Taking the keys the grid uses keeps them from shortcuts; the others stay free.
        auto* key = static_cast<QKeyEvent*>(event);
        if (isGridKey(*key)) {
            key->accept();
            return true;
        }
        return QTableView::event(event);
    }
    if (event->type() == QEvent::KeyPress) {
        // Tab moves between cells, not to the next control; QWidget would drop the Shift.
        auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
            (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0) {
            keyPressEvent(key);
            return true;
        }
    }
    return QTableView::event(event);
}

void QtGridView::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (const int code = classicKeyCode(event->key(), modifiers); code != 0) {
        m_grid.userKeyDown(code, shiftFlags(modifiers));
    }
    if (!isGridKey(*event)) {
        event->ignore();
        return;
    }
    event->accept();
    const int key = event->key();
    if (isNavigationKey(key)) {
        navigate(key, modifiers);
        return;
    }
    if (isMenuKey(*event)) {
        openPopupAtCursor();
        return;
    }
    switch (key) {
    case Qt::Key_Tab:
        m_grid.userMoveTo(m_grid.activeCol() + 1, m_grid.activeRow());
        break;
    case Qt::Key_Backtab:
        m_grid.userMoveTo(m_grid.activeCol() - 1, m_grid.activeRow());
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_grid.userKeyPress(entry::key::Enter);
        m_grid.userMoveTo(m_grid.activeCol(), m_grid.activeRow() + 1);
        break;
    case Qt::Key_Escape:
        m_grid.userKeyPress(entry::key::Escape);
        break;
    case Qt::Key_Backspace:
        m_grid.userKeyPress(entry::key::Backspace);
        break;
    case Qt::Key_Delete:
    case Qt::Key_F2:
        break; // the key-down handler acts on them
    default:
        if (typingModifiers(modifiers)) {
            typeText(event->text());
        }
        break;
    }
}

// Text composed by an input method arrives here instead of as key presses.
void QtGridView::inputMethodEvent(QInputMethodEvent* event) {
    if (printable(event->commitString())) {
        typeText(event->commitString());
    }
    event->accept();
}

void QtGridView::typeText(const QString& text) {
    for (const char32_t c : text.toUcs4()) {
        // Cells hold Latin-1; a character beyond it types as '?'.
        m_grid.userKeyPress(c <= 0xff ? static_cast<int>(c) : kCodeUnknownCharacter);
    }
}

// Shift moves the selection's growing corner, whichever way the block was made; an axis
// selected whole (-1) stays so.
void QtGridView::navigate(int key, Qt::KeyboardModifiers modifiers) {
    const bool ctrl = (modifiers & Qt::ControlModifier) != 0;
    if ((modifiers & Qt::ShiftModifier) == 0) {
        const Cell to = navigationTarget(key, ctrl, {m_grid.activeCol(), m_grid.activeRow()});
        m_grid.userMoveTo(to.col, to.row);
        return;
    }
    const entry::CellBlock s = m_grid.selection();
    const Cell anchor = selectionAnchor();
    const Cell corner{movingEnd(s.col, s.col2, anchor.col), movingEnd(s.row, s.row2, anchor.row)};
    extendSelection(anchor, navigationTarget(key, ctrl, corner));
}

QtGridView::Cell QtGridView::selectionAnchor() const {
    const entry::CellBlock s = m_grid.selection();
    return {fixedEnd(s.col, s.col2, m_grid.activeCol()),
            fixedEnd(s.row, s.row2, m_grid.activeRow())};
}

QtGridView::Cell QtGridView::navigationTarget(int key, bool ctrl, Cell from) const {
    switch (key) {
    case Qt::Key_Left:
        return {from.col - 1, from.row};
    case Qt::Key_Right:
        return {from.col + 1, from.row};
    case Qt::Key_Up:
        return {from.col, from.row - 1};
    case Qt::Key_Down:
        return {from.col, from.row + 1};
    case Qt::Key_PageUp:
        return {from.col, from.row - rowsPerPage()};
    case Qt::Key_PageDown:
        return {from.col, from.row + rowsPerPage()};
    case Qt::Key_Home:
        return ctrl ? Cell{1, 1} : Cell{1, from.row};
    case Qt::Key_End:
        return ctrl ? Cell{m_grid.maxCols(), m_grid.dataRowCount()}
                    : Cell{m_grid.maxCols(), from.row};
    default:
        return from;
    }
}

void QtGridView::extendSelection(Cell anchor, Cell to) {
    entry::CellBlock s = m_grid.selection();
    if (s.col != -1) {
        s.col = anchor.col;
        s.col2 = std::clamp(to.col, 1, m_grid.maxCols());
    }
    if (s.row != -1) {
        s.row = anchor.row;
        s.row2 = std::clamp(to.row, 1, std::max(m_grid.rowLimit(), 1));
    }
    m_grid.userSelect(s);
}

// The pop-up menu at the middle of the cursor's cell, as a right click there would open it.
void QtGridView::openPopupAtCursor() {
    const QModelIndex index = m_model->cellIndex(m_grid.activeCol(), m_grid.activeRow());
    if (!index.isValid()) {
        return;
    }
    scrollTo(index);
    const QPoint at = visualRect(index).center();
    m_grid.userRightClick(1, m_grid.activeCol(), m_grid.activeRow(), at.x(), at.y());
}

// The rows a page key moves: those in view, less one kept for context.
int QtGridView::rowsPerPage() const {
    const int first = rowAt(0);
    int last = rowAt(viewport()->height() - 1);
    if (last < 0) {
        last = m_model->rowCount() - 1;
    }
    return std::max(1, last - first);
}

// --- Mouse ------------------------------------------------------------------------------------

// The grid cell under a point of the viewport; -1 for a coordinate outside the cells.
QtGridView::Cell QtGridView::cellAt(const QPoint& viewportPos) const {
    const int row = rowAt(viewportPos.y());
    return {columnAt(viewportPos.x()), row < 0 ? -1 : row + 1};
}

void QtGridView::mousePressEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    const Cell cell = cellAt(pos);
    event->accept();
    if (event->button() == Qt::RightButton) {
        // The selection stays: the pop-up menu acts on it.
        m_grid.userRightClick(1, cell.col, cell.row, pos.x(), pos.y());
        return;
    }
    if (event->button() != Qt::LeftButton || cell.col < 0 || cell.row < 1) {
        return;
    }
    // Shift extends the selection from where it stays put, as in a spreadsheet; a plain press
    // starts afresh at the cursor.
    const bool extend = (event->modifiers() & Qt::ShiftModifier) != 0;
    if (cell.col == 0) {
        // A row heading takes the cursor to the row's first cell, as a spreadsheet does, so
        // that the row commands act where the rows are selected.
        if (!extend) {
            m_grid.userMoveTo(1, cell.row);
        }
        m_drag = Drag::Rows;
        m_anchor = {0, extend ? selectionAnchor().row : cell.row};
        m_dragEnd = {-1, cell.row};
        m_grid.userSelect({-1, m_anchor.row, -1, cell.row});
        return;
    }
    m_drag = Drag::Cells;
    if (extend) {
        m_anchor = selectionAnchor();
        m_dragEnd = cell;
        m_grid.userSelect({m_anchor.col, m_anchor.row, cell.col, cell.row});
        return;
    }
    m_grid.userMoveTo(cell.col, cell.row);
    // The drag selects from wherever the cursor ended up.
    m_anchor = {m_grid.activeCol(), m_grid.activeRow()};
    m_dragEnd = m_anchor;
}

void QtGridView::mouseMoveEvent(QMouseEvent* event) {
    if (m_drag == Drag::None || (event->buttons() & Qt::LeftButton) == 0) {
        QTableView::mouseMoveEvent(event);
        return;
    }
    event->accept();
    Cell cell = cellAt(event->position().toPoint());
    if (cell.col < 0 || cell.row < 1) {
        return;
    }
    cell.col = std::max(cell.col, 1);
    if (m_drag == Drag::Rows) {
        cell.col = -1;
    }
    if (cell.col == m_dragEnd.col && cell.row == m_dragEnd.row) {
        return;
    }
    m_dragEnd = cell;
    if (m_drag == Drag::Rows) {
        m_grid.userSelect({-1, m_anchor.row, -1, cell.row});
    } else {
        m_grid.userSelect({m_anchor.col, m_anchor.row, cell.col, cell.row});
    }
}

void QtGridView::mouseReleaseEvent(QMouseEvent* event) {
    m_drag = Drag::None;
    event->accept();
}

// A double click opens the cell for editing, as F2 does.
void QtGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
    const Cell cell = cellAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && cell.col >= 1 && cell.row >= 1) {
        m_grid.setEditMode(true);
    }
}

void QtGridView::onHeaderPressed(int section) {
    if (section < 0) {
        return;
    }
    m_drag = Drag::Columns;
    m_anchor = {section, -1};
    if (section == 0) {
        m_grid.userSelect({-1, -1, -1, -1}); // the corner: everything
    } else {
        m_grid.userSelect({section, -1, section, -1});
    }
}

void QtGridView::onHeaderEntered(int section) {
    if (m_drag != Drag::Columns || m_anchor.col == 0 || section < 0) {
        return;
    }
    m_grid.userSelect({m_anchor.col, -1, std::max(section, 1), -1});
}

// --- Focus, painting, following the grid ------------------------------------------------------

void QtGridView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        emit focusEntered();
    }
}

void QtGridView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        emit focusLeft();
    }
}

// With the grid's redraw off the model may be behind the grid; the cells are painted
// again when redraw comes back on.
void QtGridView::paintEvent(QPaintEvent* event) {
    if (m_grid.redraw()) {
        QTableView::paintEvent(event);
    }
}

void QtGridView::showActiveCell() {
    const QModelIndex index = m_model->cellIndex(m_grid.activeCol(), m_grid.activeRow());
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (index.isValid()) {
        executeDelayedItemsLayout(); // the scroll range of rows just added
        scrollTo(index);
    }
}

void QtGridView::showFirstVisibleRow() {
    executeDelayedItemsLayout();
    m_applyingScroll = true;
    verticalScrollBar()->setValue(m_grid.firstVisibleRow() - 1);
    m_applyingScroll = false;
}

// The user's scrolling is kept in the grid, so that a later reset shows the same rows.
void QtGridView::onScrolled(int value) {
    if (!m_applyingScroll) {
        m_grid.setFirstVisibleRow(value + 1);
    }
}

// After new rows the current index and the custom row heights have gone with the old rows.
void QtGridView::onModelReset() {
    applyGridLayout();
    showFirstVisibleRow();
    selectionModel()->setCurrentIndex(m_model->cellIndex(m_grid.activeCol(), m_grid.activeRow()),
                                      QItemSelectionModel::NoUpdate);
}

} // namespace titron::qt
