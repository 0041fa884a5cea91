#include "platform/qt/qt_grid_model.h"

#include <algorithm>
#include <utility>

#include <QBrush>
#include <QColor>

namespace titron::qt {

namespace {

// The row-number column looks like a heading; the grid's block selection and the cell
// being edited stand out in light colours that keep the text readable.
const QColor kHeadingBackground(224, 224, 224);
const QColor kSelectionBackground(204, 228, 255);
const QColor kEditBackground(255, 255, 204);

// A bound of -1 on either side covers every data column (row); the headings stay out.
bool inSpan(int value, int bound, int bound2) {
    if (bound == -1 || bound2 == -1) {
        return value >= 1;
    }
    return value >= std::min(bound, bound2) && value <= std::max(bound, bound2);
}

} // namespace

QtGridModel::QtGridModel(entry::Grid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_rows(grid.rowLimit()) {
    m_grid.setChangeListener([this](const entry::GridChange& change) { onGridChange(change); });
}

QtGridModel::~QtGridModel() {
    m_grid.setChangeListener({});
}

void QtGridModel::setCentredColumns(std::function<bool(int col)> centred) {
    m_centred = std::move(centred);
    if (m_rows > 0) {
        emit dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1),
                         {Qt::TextAlignmentRole});
    }
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

int QtGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int QtGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_grid.maxCols() + 1;
}

QModelIndex QtGridModel::cellIndex(int col, int row) const {
    return index(row - 1, col);
}

bool QtGridModel::shows(const QModelIndex& index) const {
    return index.isValid() && index.model() == this && index.row() < m_rows &&
           index.column() < columnCount();
}

QVariant QtGridModel::data(const QModelIndex& index, int role) const {
    if (!shows(index)) {
        return {};
    }
    const int col = index.column();
    const int row = gridRow(index);
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromLatin1(m_grid.cell(col, row));
    case Qt::ForegroundRole: {
        const entry::Colour c = m_grid.textColour(col, row);
        return QBrush(QColor(c.red, c.green, c.blue));
    }
    case Qt::BackgroundRole:
        if (col == 0) {
            return QBrush(kHeadingBackground);
        }
        if (m_grid.editMode() && col == m_grid.activeCol() && row == m_grid.activeRow()) {
            return QBrush(kEditBackground);
        }
        if (inSelection(col, row)) {
            return QBrush(kSelectionBackground);
        }
        return {};
    case Qt::TextAlignmentRole:
        return alignment(col, false);
    case Qt::ToolTipRole:
        return wholeTextTip(m_grid.cell(col, row));
    default:
        return {};
    }
}

QVariant QtGridModel::wholeTextTip(std::string_view text) const {
    if (!m_tips || text.empty()) {
        return {};
    }
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// A heading wraps only when its alignment says so; the cells wrap by the view's setting.
QVariant QtGridModel::alignment(int col, bool heading) const {
    if (!m_centred) {
        return {};
    }
    const Qt::Alignment place =
        (m_centred(col) ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
    return place.toInt() | (heading ? Qt::TextWordWrap : 0);
}

QVariant QtGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < columnCount()) {
        return QString::fromLatin1(m_grid.cell(section, 0));
    }
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section >= 0 &&
        section < columnCount()) {
        return alignment(section, true);
    }
    if (orientation == Qt::Horizontal && role == Qt::ToolTipRole && section >= 0 &&
        section < columnCount()) {
        return wholeTextTip(m_grid.cell(section, 0));
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

// No cell is editable in Qt's sense: typing goes through the grid, which keeps the edit.
Qt::ItemFlags QtGridModel::flags(const QModelIndex& index) const {
    if (!shows(index)) {
        return Qt::NoItemFlags;
    }
    return index.column() == 0 ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

bool QtGridModel::inSelection(int col, int row) const {
    if (!m_grid.blockSelected()) {
        return false;
    }
    const entry::CellBlock s = m_grid.selection();
    return inSpan(col, s.col, s.col2) && inSpan(row, s.row, s.row2);
}

void QtGridModel::onGridChange(const entry::GridChange& change) {
    switch (change.kind) {
    case entry::GridChangeKind::Cells:
        cellsChanged(change.block);
        break;
    case entry::GridChangeKind::Rows:
    case entry::GridChangeKind::All:
        resetFromGrid();
        break;
    case entry::GridChangeKind::Layout:
        emit gridLayoutChanged();
        break;
    case entry::GridChangeKind::ActiveCell:
        // Moving the cursor also drops a block selection.
        backgroundChanged();
        emit activeCellChanged();
        break;
    case entry::GridChangeKind::Selection:
        backgroundChanged();
        break;
    case entry::GridChangeKind::EditMode:
        // Ending an edit may put the cell's old text back (Escape).
        cellsChanged(change.block);
        backgroundChanged();
        break;
    case entry::GridChangeKind::Scroll:
        emit firstVisibleRowChanged();
        break;
    }
}

// A block may reach into row 0 (the headings) and is cut to the cells the model shows.
void QtGridModel::cellsChanged(const entry::CellBlock& block) {
    const int lastCol = columnCount() - 1;
    const int col = std::max(std::min(block.col, block.col2), 0);
    const int col2 = std::min(std::max(block.col, block.col2), lastCol);
    const int row = std::min(block.row, block.row2);
    const int row2 = std::max(block.row, block.row2);
    if (col > col2) {
        return;
    }
    if (row <= 0 && row2 >= 0) {
        emit headerDataChanged(Qt::Horizontal, col, col2);
    }
    const int first = std::max(row, 1);
    const int last = std::min(row2, m_rows);
    if (first <= last) {
        emit dataChanged(cellIndex(col, first), cellIndex(col2, last));
    }
}

void QtGridModel::backgroundChanged() {
    if (m_rows > 0) {
        emit dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1), {Qt::BackgroundRole});
    }
}

void QtGridModel::resetFromGrid() {
    beginResetModel();
    m_rows = m_grid.rowLimit();
    endResetModel();
}

} // namespace titron::qt
