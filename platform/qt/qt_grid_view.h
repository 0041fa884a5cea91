// The grid on screen. The view draws the core Grid through QtGridModel and hands every key
// and click to the grid's user* entry points; the grid, and the window's handlers behind its
// events, decide what they do. Qt's own selection and editors stay unused.
#pragma once

#include <functional>

#include <QTableView>

#include "entry/grid.h"

namespace titron::qt {

class QtGridModel;

class QtGridView : public QTableView {
    Q_OBJECT

  public:
    explicit QtGridView(entry::Grid& grid, QWidget* parent = nullptr);

    QtGridModel& gridModel() const { return *m_model; }

    // Column widths, row heights and the heading row's height from the grid (twips).
    void applyGridLayout();
    // Text placed by column, centred or at the left as centred(col) says, and vertically
    // centred. The headings wrap inside their cells; a cell's text stands on one line, so
    // that no figure is broken, shortened with an ellipsis where the column is too narrow
    // and whole in the cell's tip. Without it, text stands on one line at the left.
    void setCentredColumns(std::function<bool(int col)> centred);
    // The user widens or narrows a data column by dragging its heading's right border, and
    // fits it to its text by double-clicking the border; the width goes into the grid.
    void setResizableColumns();
    // The column's cells hold file paths, drawn with the file name in sight.
    void setPathColumn(int col);

  signals:
    // The keyboard focus came or went; a pop-up menu or a box over the window doesn't count.
    void focusEntered();
    void focusLeft();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Cell {
        int col;
        int row;
    };

    void navigate(int key, Qt::KeyboardModifiers modifiers);
    Cell navigationTarget(int key, bool ctrl, Cell from) const;
    // The corner that stays put while Shift grows the selection: the cursor's where the
    // block starts or ends at it.
    Cell selectionAnchor() const;
    void extendSelection(Cell anchor, Cell to);
    void openPopupAtCursor();
    void typeText(const QString& text);
    int rowsPerPage() const;
    Cell cellAt(const QPoint& viewportPos) const;

    void onHeaderPressed(int section);
    void onHeaderEntered(int section);
    void showActiveCell();
    void showFirstVisibleRow();
    void onScrolled(int value);
    void onModelReset();
    void onColumnResized(int col, int oldPixels, int newPixels);

    entry::Grid& m_grid;
    QtGridModel* m_model;

    // A left-button drag in progress: its anchor, and whether it selects whole rows.
    enum class Drag { None, Cells, Rows, Columns };
    Drag m_drag = Drag::None;
    Cell m_anchor{1, 1};
    Cell m_dragEnd{1, 1};
    // Set while the view scrolls itself to the grid's first visible row.
    bool m_applyingScroll = false;
    // Set while the view takes the grid's column widths, which are then no user's change.
    bool m_applyingLayout = false;
};

} // namespace titron::qt
