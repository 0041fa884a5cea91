#include "platform/qt/qt_path_delegate.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetrics>
#include <QStyle>

namespace titron::qt {

QString elidedPath(const QString& path, const QFontMetrics& metrics, int width) {
    if (metrics.horizontalAdvance(path) <= width) {
        return path;
    }
    const qsizetype slash = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    const QString separatorAndName = path.mid(slash);
    if (slash > 0) {
        const QString folder = metrics.elidedText(
            path.left(slash), Qt::ElideRight, width - metrics.horizontalAdvance(separatorAndName));
        if (!folder.isEmpty()) {
            return folder + separatorAndName;
        }
    }
    // Not even "…/" and the name fit: an ellipsis and the name's end, where the names of
    // a series differ.
    return metrics.elidedText(QChar(0x2026) + path.mid(slash + 1), Qt::ElideLeft, width);
}

// The text is shortened here, for the room the style leaves it inside the cell; without a
// cell's rect (asked for the size the text wants) it stays whole.
void QtPathDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->rect.width() <= 0 || option->text.isEmpty()) {
        return;
    }
    const QStyle* style =
        option->widget != nullptr ? option->widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, option, option->widget) + 1;
    const QRect textRect =
        style->subElementRect(QStyle::SE_ItemViewItemText, option, option->widget);
    option->text = elidedPath(option->text, option->fontMetrics, textRect.width() - 2 * margin);
}

} // namespace titron::qt
