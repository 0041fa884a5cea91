// The grid's cells as a Qt table model. Nothing is copied: every query reads the core
// Grid, so a table of 32,767 rows costs no more than one of 100. Model row r is grid row
// r + 1; model column c is grid column c, column 0 holding the row numbers.
#pragma once

#include <functional>
#include <string_view>

#include <QAbstractTableModel>

#include "entry/grid.h"

namespace titron::qt {

class QtGridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit QtGridModel(entry::Grid& grid, QObject* parent = nullptr);
    ~QtGridModel() override;

    entry::Grid& grid() const { return m_grid; }

    // Where text stands in the cells and headings. Unset, the view decides (Analyze's look);
    // set, each column's text is centred or at the left as centred(col) says, vertically
    // centred, and the headings wrap inside their cells.
    void setCentredColumns(std::function<bool(int col)> centred);
    // Each cell and heading with text shows its whole text as its tip.
    void setWholeTextTips(bool on) { m_tips = on; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // The model index of a grid cell (col, row >= 1); invalid for a cell the model lacks.
    QModelIndex cellIndex(int col, int row) const;
    static int gridRow(const QModelIndex& index) { return index.row() + 1; }

  signals:
    void activeCellChanged();
    void firstVisibleRowChanged();
    // Column widths or row heights changed; the cells did not.
    void gridLayoutChanged();

  private:
    bool shows(const QModelIndex& index) const;
    void onGridChange(const entry::GridChange& change);
    void cellsChanged(const entry::CellBlock& block);
    void backgroundChanged();
    void resetFromGrid();
    bool inSelection(int col, int row) const;
    QVariant alignment(int col, bool heading) const;
    QVariant wholeTextTip(std::string_view text) const;

    entry::Grid& m_grid;
    // The row count the views were last told of. While the grid's redraw is off the grid
    // may have grown or shrunk unheard; the model keeps answering for what was announced.
    int m_rows = 0;
    std::function<bool(int col)> m_centred;
    bool m_tips = false;
};

} // namespace titron::qt
