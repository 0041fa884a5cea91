// The print commands through Qt's dialogs: their titles, the printers and papers that Print
// Setup offers, and the file that a print to PDF proposes for each document.
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPageSize>
#include <QPrinter>

#include "tests/gui/gui_helpers.h"
#include "tests/gui/pdf_words.h"
#include "tests/gui/qt_frame_fixture.h"
#include "tests/scratch_directory.h"

namespace titron::qt {
namespace {

QStringList entries(const QWidget* dialog, const char* name) {
    QStringList texts;
    if (const auto* box = dialog->findChild<QComboBox*>(QString::fromLatin1(name))) {
        for (int i = 0; i < box->count(); ++i) {
            texts << box->itemText(i);
        }
    }
    texts.removeAll(QString()); // Qt's separators
    return texts;
}

class QtPrintDialogsTest : public testing::QtFrameFixture {
  protected:
    QtPrintDialogsTest() {
        std::filesystem::current_path(scratch.path);
        platform.qprinter().setOutputFormat(QPrinter::PdfFormat);
    }
    QString inScratch(const char* name) const {
        return QString::fromStdString((scratch.path / name).string());
    }

    // Ctrl+P; the print dialog is read, then accepted if it offers the file expected (another
    // would be overwritten) and cancelled otherwise. Gives its title, printers and file.
    QStringList ctrlP(const QString& expectedFile = {}) {
        window.activateWindow(); // offscreen, a closed dialog doesn't hand it back
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QStringList shown;
        testing::whenModal([&](QWidget* modal) {
            const auto* file = modal->findChild<QLineEdit*>(QStringLiteral("filename"));
            shown << modal->windowTitle() << (file != nullptr ? file->text() : QString())
                  << entries(modal, "printers");
            const bool accept = !expectedFile.isEmpty() && shown[1] == expectedFile;
            QTest::keyClick(modal, accept ? Qt::Key_Return : Qt::Key_Escape);
        });
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
        return shown;
    }

    titron::testing::ScratchDirectory scratch;
};

// Print is titled "Print" whatever file dialog came before; Print Setup offers the same
// printers, the PDF file among them, and the papers, and gives the printer its choice.
TEST_F(QtPrintDialogsTest, PrintAndPrintSetupShowTheirOwnTitlesAndTheSamePrinters) {
    typeFourRowAssay(analyze.grid());
    analyze.commonDialog().dialogTitle = "Titron Analysis File"; // as a file dialog leaves it
    nameBox().setFocus();
    const QStringList print = ctrlP();
    ASSERT_GE(print.size(), 3);
    EXPECT_EQ(print[0], QStringLiteral("Print"));
    EXPECT_TRUE(print.contains(QStringLiteral("Print to File (PDF)")));

    platform.qprinter().setPageSize(QPageSize(QPageSize::A4));
    const QString letter = QPageSize(QPageSize::Letter).name();
    QStringList setup;
    testing::whenModal([&](QWidget* modal) {
        setup << modal->windowTitle() << entries(modal, "printers");
        auto* papers = modal->findChild<QComboBox*>(QStringLiteral("papers"));
        if (papers != nullptr && papers->currentText() == QPageSize(QPageSize::A4).name()) {
            papers->setCurrentIndex(papers->findText(letter));
        }
        QTest::keyClick(modal, Qt::Key_Return);
    });
    window.menuAction(session::MenuItem::FilePrintSetup)->trigger();
    EXPECT_EQ(setup, QStringList{"Print Setup"} + print.mid(2));
    EXPECT_EQ(platform.qprinter().pageLayout().pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(platform.qprinter().outputFormat(), QPrinter::PdfFormat);
}

// The analysis and the comparison each offer a file of their own, in the folder of the last
// one, so that neither overwrites the other; the landscape page stays inside the paper.
TEST_F(QtPrintDialogsTest, ComparisonPrintsToAFileOfItsOwnInsideThePage) {
    headlessReport("Spleen A", {"2", "6", "14", "22"}, "spleen-a.tna");
    headlessReport("Spleen B", {"1", "3", "8", "15"}, "spleen-b.tna");
    ASSERT_EQ(analyze.openDocument((scratch.path / "spleen-a.tna").string()),
              documents::LoadOutcome::Loaded);
    nameBox().setFocus();
    ctrlP(inScratch("spleen-a.pdf"));
    ASSERT_TRUE(QFile::exists(inScratch("spleen-a.pdf")));

    window.findChild<QAction*>(QStringLiteral("Compare"))->trigger();
    const QStringList comparison = ctrlP(inScratch("comparison.pdf"));
    EXPECT_EQ(comparison.value(1), inScratch("comparison.pdf"));
    EXPECT_TRUE(testing::has(testing::readPdf(inScratch("spleen-a.pdf")), "Iterations:"));

    const testing::Pdf pdf = testing::readPdf(inScratch("comparison.pdf"));
    EXPECT_TRUE(testing::has(pdf, QStringLiteral("Comparison")) && pdf.width > pdf.height);
    for (const testing::Word& word : pdf.words) {
        EXPECT_GE(word.left, 35 - 0.5) << word.text.toStdString();
        EXPECT_LE(word.right, pdf.width - 35) << word.text.toStdString();
    }
}

} // namespace
} // namespace titron::qt
