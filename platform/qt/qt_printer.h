// The print device on a QPrinter: lines of text go down the page in the current font, from
// a fixed left position inside the printable area, and a line that would pass the printable
// area starts a new page.
#pragma once

#include <string>

#include <QPainter>

#include "platform/printer.h"

class QPrinter;

namespace titron::qt {

class QtPrinter : public platform::Printer {
  public:
    explicit QtPrinter(QPrinter& printer);
    QtPrinter(const QtPrinter&) = delete;
    QtPrinter& operator=(const QtPrinter&) = delete;

    void setLeftOrigin(int twips) override { m_leftOrigin = twips; }
    // Takes effect when the next document begins; a page already begun keeps its own.
    void setOrientation(platform::Orientation orientation) override { m_orientation = orientation; }
    void setFontName(const std::string& name) override;
    void setFontSize(double points) override;
    void setEmphasis(bool on) override;
    void printText(const std::string& text) override;
    void endDocument() override;

  private:
    // Starts the document at the first text; false if the printer can't take it.
    bool begin();
    void printLine(const QString& line);
    qreal twipsToDevice(double twips) const;

    QPrinter& m_printer;
    QPainter m_painter;
    int m_leftOrigin = 0;
    platform::Orientation m_orientation = platform::Orientation::Portrait;
    std::string m_fontName;
    double m_fontSize = 10;
    bool m_bold = false;
    bool m_fontChanged = true;
    // The document: whether it has begun, whether it failed, where the next line goes and
    // the printable area's left, top and bottom, in device units.
    bool m_begun = false;
    bool m_failed = false;
    qreal m_y = 0;
    qreal m_left = 0;
    qreal m_top = 0;
    qreal m_bottom = 0;
};

} // namespace titron::qt
