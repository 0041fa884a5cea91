// The document's commands on screen: printing a report through the real print dialog and
// QPrinter into a PDF, and a save and an open through the real file dialog.
#include <QDate>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QPrintDialog>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "tests/gui/gui_helpers.h"
#include "tests/gui/pdf_words.h"
#include "tests/gui/qt_frame_fixture.h"

namespace titron::qt {
namespace {

using testing::whenModal;

class QtDocumentTest : public testing::QtFrameFixture {
  protected:
    ~QtDocumentTest() override { QDir::setCurrent(startDirectory); }

    QTemporaryDir directory;
    QString startDirectory = QDir::currentPath();
};

// Pages beyond the first are the printer's test; here the program's own print through the
// print dialog.
TEST_F(QtDocumentTest, CtrlPPrintsTheHeadTodayAndTheReport) {
    typeFourRowAssay(analyze.grid());
    analyze.nameBox().setText("Spleen A");
    analyze.analyze();
    ASSERT_TRUE(analyze.reportPresent());
    const std::string report = analyze.resultsPane().text();

    // A document without a file prints as "analysis", in the folder of the last file printed.
    const QString pdfPath = directory.filePath(QStringLiteral("analysis.pdf"));
    platform.qprinter().setOutputFormat(QPrinter::PdfFormat);
    platform.qprinter().setOutputFileName(directory.filePath(QStringLiteral("earlier.pdf")));
    bool printDialogShown = false;
    whenModal([&](QWidget* modal) {
        printDialogShown = qobject_cast<QPrintDialog*>(modal) != nullptr;
        QTest::keyClick(modal, Qt::Key_Return);
    });
    nameBox().setFocus();
    QTest::keyClick(&nameBox(), Qt::Key_P, Qt::ControlModifier);
    ASSERT_TRUE(printDialogShown);

    const testing::Pdf pdf = testing::readPdf(pdfPath);
    const QString today =
        QLocale(QLocale::English).toString(QDate::currentDate(), QStringLiteral("MMMM dd, yyyy"));
    // The words of the head and of the report's first and last lines, in order.
    const QStringList expected = {QStringLiteral("Titron"),   today.section(QLatin1Char(' '), 0, 0),
                                  QStringLiteral("Analysis"), QStringLiteral("Iterations:"),
                                  QStringLiteral("END"),      QStringLiteral("30000")};
    double top = -1;
    for (const QString& word : expected) {
        const testing::Word found = testing::find(pdf, word);
        EXPECT_GT(found.top, top) << word.toStdString();
        top = found.top;
    }
    EXPECT_TRUE(testing::has(pdf, today.section(QLatin1Char(' '), 1, 1)));
    EXPECT_EQ(analyze.resultsPane().text(), report); // the document is untouched
}

TEST_F(QtDocumentTest, SaveAndOpenGoThroughTheFileDialogAndFollowItsDirectory) {
    typeFourRowAssay(analyze.grid());
    analyze.nameBox().setText("Spleen A");
    analyze.analyze();
    const std::string report = analyze.resultsPane().text();
    QDir::setCurrent(directory.path());

    // The name typed without its extension gets ".tna".
    whenModal([&](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(QStringLiteral("spleen"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    QTest::keyClick(&nameBox(), Qt::Key_S, Qt::ControlModifier);
    const QString saved = directory.filePath(QStringLiteral("spleen.tna"));
    ASSERT_TRUE(QFile::exists(saved));
    EXPECT_EQ(session.frameCaption.text(), "Titron - [" + saved.toStdString() + "]");
    EXPECT_EQ(window.windowTitle(), QString::fromStdString(session.frameCaption.text()));

    analyze.newFile();
    QDir::setCurrent(startDirectory);
    // The offscreen platform doesn't hand the activation back after a dialog by itself.
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    whenModal([&](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(saved);
        QTest::keyClick(name, Qt::Key_Return);
    });
    QTest::keyClick(&nameBox(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(analyze.resultsPane().text(), report + "\r\n");
    EXPECT_EQ(QDir::currentPath(), directory.path());
    EXPECT_EQ(session.LastDirectory, directory.path().toStdString());
}

} // namespace
} // namespace titron::qt
