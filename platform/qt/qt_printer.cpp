#include "platform/qt/qt_printer.h"

#include <algorithm>

#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPrinter>

#include "platform/qt/qt_text.h"
#include "platform/qt/qt_twips.h"

namespace titron::qt {

namespace {

constexpr int kTabColumns = 8;
// The least top and bottom margin. A device that reports less (a PDF file has none) would
// put lines on the paper's very edge; half an inch keeps them clear of it.
constexpr int kLeastMarginTwips = 720;
// The least side margin, for a left origin of 0 on such a device: 700 twips, where a left
// origin of -700 has always put its lines.
constexpr int kLeastSideMarginTwips = 700;

// Each Tab becomes the spaces up to the next stop of eight characters.
QString expandTabs(const QString& line) {
    QString expanded;
    expanded.reserve(line.size());
    for (const QChar c : line) {
        if (c == QLatin1Char('\t')) {
            expanded.append(QString(kTabColumns - expanded.size() % kTabColumns, QLatin1Char(' ')));
        } else {
            expanded.append(c);
        }
    }
    return expanded;
}

} // namespace

QtPrinter::QtPrinter(QPrinter& printer) : m_printer(printer) {
}

void QtPrinter::setFontName(const std::string& name) {
    m_fontName = name;
    m_fontChanged = true;
}

void QtPrinter::setFontSize(double points) {
    m_fontSize = points;
    m_fontChanged = true;
}

void QtPrinter::setEmphasis(bool on) {
    m_bold = on;
    m_fontChanged = true;
}

qreal QtPrinter::twipsToDevice(double twips) const {
    return twips * m_printer.resolution() / kTwipsPerInch;
}

bool QtPrinter::begin() {
    if (m_begun) {
        return !m_failed;
    }
    m_begun = true;
    // Positions count from the paper's corner, not from the printable area.
    m_printer.setFullPage(true);
    m_printer.setPageOrientation(m_orientation == platform::Orientation::Landscape
                                     ? QPageLayout::Landscape
                                     : QPageLayout::Portrait);
    if (!m_painter.begin(&m_printer)) {
        m_failed = true;
        return false;
    }
    const QPageLayout layout = m_printer.pageLayout();
    const int resolution = m_printer.resolution();
    const QMarginsF margins = QMarginsF(layout.marginsPixels(resolution));
    const qreal least = twipsToDevice(kLeastMarginTwips);
    m_left = std::max(margins.left(), twipsToDevice(kLeastSideMarginTwips));
    m_top = std::max(margins.top(), least);
    m_bottom = layout.fullRectPixels(resolution).height() - std::max(margins.bottom(), least);
    m_y = m_top;
    m_fontChanged = true;
    return true;
}

void QtPrinter::printLine(const QString& line) {
    if (m_fontChanged) {
        QFont font(fromLatin1(m_fontName));
        font.setPointSizeF(m_fontSize);
        font.setBold(m_bold);
        // Made for the printer, so that the metrics are the printer's and not the screen's.
        m_painter.setFont(QFont(font, &m_printer));
        m_fontChanged = false;
    }
    const QFontMetricsF metrics = m_painter.fontMetrics();
    const qreal spacing = metrics.lineSpacing();
    if (m_y + spacing > m_bottom && m_y > m_top) {
        if (!m_printer.newPage()) {
            m_failed = true;
            return;
        }
        m_y = m_top;
    }
    if (!line.isEmpty()) {
        // Never left of the printable area, whatever the origin.
        const qreal x = std::max(twipsToDevice(-m_leftOrigin), m_left);
        m_painter.drawText(QPointF(x, m_y + metrics.ascent()), expandTabs(line));
    }
    m_y += spacing;
}

void QtPrinter::printText(const std::string& text) {
    // A printer that fails prints nothing more of the document; nothing reaches the caller.
    try {
        if (!begin()) {
            return;
        }
        for (const QString& line : fromLatin1(text).split(QStringLiteral("\r\n"))) {
            printLine(line);
            if (m_failed) {
                return;
            }
        }
    } catch (...) {
        m_failed = true;
    }
}

void QtPrinter::endDocument() {
    if (m_painter.isActive()) {
        m_painter.end();
    }
    m_begun = false;
    m_failed = false;
}

} // namespace titron::qt
