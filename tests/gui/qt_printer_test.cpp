// The print device on the program's QPrinter, writing PDF files that are read back word by
// word with their places on the page.
#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/qt/qt_platform.h"
#include "tests/gui/pdf_words.h"

namespace titron::qt {
namespace {

using testing::find;
using testing::has;
using testing::Pdf;
using testing::readPdf;
using testing::Word;

class QtPrinterTest : public ::testing::Test {
  protected:
    // One document as the program prints it: the head, the date, then the body in Courier.
    Pdf print(const QString& name, const std::string& body,
              platform::Orientation orientation = platform::Orientation::Portrait,
              int leftOrigin = -700) {
        platform.qprinter().setOutputFormat(QPrinter::PdfFormat);
        platform.qprinter().setOutputFileName(directory.filePath(name));
        platform::Printer& printer = platform.services().printer;
        printer.setLeftOrigin(leftOrigin);
        printer.setOrientation(orientation);
        printer.setFontName("Arial");
        printer.setFontSize(16);
        printer.setEmphasis(true);
        printer.printText("\r\nTitron");
        printer.setFontSize(10);
        printer.setEmphasis(false);
        printer.printText("November 23, 2026\r\n\r\n\r\n");
        printer.setFontName("Courier New");
        printer.printText(body);
        printer.endDocument();
        return QFile::exists(directory.filePath(name)) ? readPdf(directory.filePath(name)) : Pdf();
    }

    QTemporaryDir directory;
    QtPlatform platform;
};

TEST_F(QtPrinterTest, LinesStandInOrderFromTheLeftOriginWithTabStopsOfEight) {
    const Pdf pdf = print("table.pdf", "Four rows\r\nRow\t\tDose\t\tResponses\tTested\t\tComments"
                                       "\r\n1\t\t1000\t\t2\t\t24\r\n12345678\tx");
    const Word head = find(pdf, "Titron"), date = find(pdf, "November");
    const Word body = find(pdf, "Four"), row = find(pdf, "Row"), eight = find(pdf, "12345678");
    EXPECT_TRUE(head.top < date.top && date.top < body.top && body.top < row.top);
    // 700 twips are 35 points; the head stands an empty line below the half-inch margin.
    EXPECT_NEAR(head.left, 35, 1);
    EXPECT_NEAR(body.left, 35, 1);
    EXPECT_GT(head.top, 36 + 16);
    // Columns of the monospaced body, in characters from the line's start.
    const double character = (eight.right - eight.left) / 8;
    const std::vector<std::pair<QString, int>> columns = {
        {"Dose", 16}, {"Responses", 32}, {"Tested", 48}, {"Comments", 64}, {"1", 0},
        {"1000", 16}, {"2", 32},         {"24", 48},     {"x", 16}};
    for (const auto& [text, column] : columns) {
        EXPECT_NEAR((find(pdf, text).left - row.left) / character, column, 0.05)
            << text.toStdString();
    }
}

// Lines that pass the printable area go on to the next page, which carries the body alone:
// no head and no page number.
TEST_F(QtPrinterTest, LongBodyRunsOnOverPagesHalfAnInchClearOfTheEdges) {
    std::string body;
    for (int line = 1; line <= 200; ++line) {
        body += "Line " + std::to_string(line) + "\r\n";
    }
    const Pdf pdf = print("long.pdf", body);
    EXPECT_GE(pdf.pages, 2);
    std::vector<int> lines, laterLines;
    for (const Word& w : pdf.words) {
        EXPECT_GE(w.top, 36 - 0.5);
        EXPECT_LE(w.bottom, pdf.height - 36);
        if (w.text != "Line" && (w.page > 1 || w.top > find(pdf, "Line").top - 1)) {
            (w.page > 1 ? laterLines : lines).push_back(w.text.toInt());
        }
    }
    lines.insert(lines.end(), laterLines.begin(), laterLines.end());
    std::vector<int> expected(200);
    std::iota(expected.begin(), expected.end(), 1);
    EXPECT_EQ(lines, expected);
    EXPECT_FALSE(laterLines.empty());
}

// A left origin of 0 on a device without margins of its own (a PDF file) starts the lines
// inside the paper's edge, and a landscape line of 120 characters ends inside it too.
TEST_F(QtPrinterTest, LeftOriginZeroKeepsTheLinesInsideThePrintableArea) {
    const std::string wide = "First" + std::string(111, ' ') + "Last";
    const Pdf pdf = print("wide.pdf", wide, platform::Orientation::Landscape, 0);
    ASSERT_EQ(pdf.pages, 1);
    for (const char* word : {"Titron", "November", "First"}) {
        EXPECT_NEAR(find(pdf, word).left, 35, 1) << word;
    }
    EXPECT_LE(find(pdf, "Last").right, pdf.width - 35);
}

// After endDocument the next document begins afresh, in another file and orientation; a
// printer that can't begin prints nothing and keeps nothing for the next one.
TEST_F(QtPrinterTest, EachDocumentStartsAfresh) {
    const Pdf first = print("first.pdf", "First body");
    EXPECT_EQ(print("missing-dir/never.pdf", "Lost body").pages, 0);
    const Pdf second = print("second.pdf", "Second body", platform::Orientation::Landscape);
    EXPECT_TRUE(first.pages == 1 && first.width < first.height && has(first, "First"));
    EXPECT_TRUE(second.pages == 1 && second.width > second.height && has(second, "Second"));
    EXPECT_TRUE(has(second, "Titron") && !has(second, "First") && !has(second, "Lost"));
}

} // namespace
} // namespace titron::qt
