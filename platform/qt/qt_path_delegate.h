// Cells that hold file paths. A path too long for its cell is shortened in the folder, not
// in the file name: "/home/ann/ass…/spleen-a.tna", so that rows from one folder still read
// apart. The whole path stays the cell's text; only the drawing is shortened.
#pragma once

#include <QStyledItemDelegate>

class QFontMetrics;

namespace titron::qt {

// The path as it fits in width pixels: whole if it fits, else the folder's start, an
// ellipsis and the file name whole; where not even "…/" and the name fit, an ellipsis and
// the end of the name.
QString elidedPath(const QString& path, const QFontMetrics& metrics, int width);

class QtPathDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace titron::qt
