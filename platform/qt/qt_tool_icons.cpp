#include "platform/qt/qt_tool_icons.h"

#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace titron::qt {

namespace {

enum class Drawing { None, Copy, Print, InsertRows, DeleteRows, Analyze, Compare, Chart };

struct IconSource {
    std::string_view key;
    const char* themeName;
    QStyle::StandardPixmap standard; // SP_CustomBase: draw instead
    Drawing drawing;
};

constexpr QStyle::StandardPixmap kDrawn = QStyle::SP_CustomBase;

constexpr IconSource kSources[] = {
    {"New", "document-new", QStyle::SP_FileIcon, Drawing::None},
    {"Open", "document-open", QStyle::SP_DialogOpenButton, Drawing::None},
    {"Save", "document-save", QStyle::SP_DialogSaveButton, Drawing::None},
    {"Copy", "edit-copy", kDrawn, Drawing::Copy},
    {"Print", "document-print", kDrawn, Drawing::Print},
    {"Insert", "edit-table-insert-row-above", kDrawn, Drawing::InsertRows},
    {"Delete", "edit-table-delete-row", kDrawn, Drawing::DeleteRows},
    {"Analyze", "accessories-calculator", kDrawn, Drawing::Analyze},
    {"Compare", "view-split-left-right", kDrawn, Drawing::Compare},
    {"Chart", "x-office-spreadsheet", kDrawn, Drawing::Chart},
    {"Help", "help-contents", QStyle::SP_DialogHelpButton, Drawing::None},
};

constexpr int kSide = 32;

void drawRows(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.5));
    p.setBrush(Qt::white);
    for (int row = 0; row < 3; ++row) {
        p.drawRect(QRectF(3, 4 + row * 8, 18, 8));
    }
}

void drawSign(QPainter& p, bool plus) {
    p.setPen(QPen(plus ? QColor(0, 128, 0) : QColor(192, 0, 0), 3.5, Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QPointF(20, 24), QPointF(30, 24));
    if (plus) {
        p.drawLine(QPointF(25, 19), QPointF(25, 29));
    }
}

QPixmap drawn(Drawing drawing) {
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::black, 1.5));
    switch (drawing) {
    case Drawing::Copy:
        p.setBrush(Qt::white);
        p.drawRect(QRectF(4, 3, 15, 19));
        p.drawRect(QRectF(12, 10, 15, 19));
        break;
    case Drawing::Print:
        p.setBrush(Qt::white);
        p.drawRect(QRectF(9, 3, 14, 10));
        p.setBrush(QColor(160, 160, 160));
        p.drawRoundedRect(QRectF(3, 12, 26, 12), 2, 2);
        p.setBrush(Qt::white);
        p.drawRect(QRectF(9, 20, 14, 9));
        break;
    case Drawing::InsertRows:
        drawRows(p);
        drawSign(p, true);
        break;
    case Drawing::DeleteRows:
        drawRows(p);
        drawSign(p, false);
        break;
    case Drawing::Analyze:
        // A response curve rising with the dose.
        p.drawLine(QPointF(4, 4), QPointF(4, 28));
        p.drawLine(QPointF(4, 28), QPointF(28, 28));
        p.setPen(QPen(QColor(0, 0, 128), 2.5));
        p.drawPolyline(QPolygonF(
            {QPointF(6, 25), QPointF(12, 23), QPointF(17, 15), QPointF(22, 8), QPointF(28, 6)}));
        break;
    case Drawing::Compare:
        p.setBrush(QColor(0, 0, 128));
        p.drawRect(QRectF(5, 10, 9, 18));
        p.setBrush(QColor(128, 0, 0));
        p.drawRect(QRectF(18, 4, 9, 24));
        break;
    case Drawing::Chart:
        p.drawLine(QPointF(4, 28), QPointF(28, 28));
        p.setBrush(QColor(0, 128, 128));
        p.drawRect(QRectF(6, 18, 5, 10));
        p.drawRect(QRectF(13, 10, 5, 18));
        p.drawRect(QRectF(20, 14, 5, 14));
        break;
    case Drawing::None:
        break;
    }
    return pixmap;
}

} // namespace

QIcon toolIcon(std::string_view key, const QStyle& style) {
    for (const IconSource& source : kSources) {
        if (source.key != key) {
            continue;
        }
        const QIcon fallback = source.standard == kDrawn ? QIcon(drawn(source.drawing))
                                                         : style.standardIcon(source.standard);
        return QIcon::fromTheme(QString::fromLatin1(source.themeName), fallback);
    }
    return style.standardIcon(QStyle::SP_FileIcon);
}

} // namespace titron::qt
