#include "platform/qt/qt_print_setup_dialog.h"

#include <algorithm>

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>

namespace titron::qt {

namespace {

// Qt's print dialog names its entry for a PDF file so, in the desktop's language.
QString printToFileEntry() {
    return QCoreApplication::translate("QPrintDialog", "Print to File (PDF)");
}

// A PDF file takes any paper; these are the usual ones.
const QPageSize::PageSizeId kFilePapers[] = {
    QPageSize::A4, QPageSize::Letter, QPageSize::Legal,     QPageSize::A3,
    QPageSize::A5, QPageSize::B5,     QPageSize::Executive, QPageSize::Tabloid};

} // namespace

QtPrintSetupDialog::QtPrintSetupDialog(QPrinter& printer, QWidget* parent)
    : QDialog(parent), m_printer(printer) {
    setWindowTitle(QStringLiteral("Print Setup"));
    m_printers = new QComboBox(this);
    m_printers->setObjectName(QStringLiteral("printers"));
    m_printers->addItems(QPrinterInfo::availablePrinterNames());
    m_printers->addItem(printToFileEntry());
    const int current = printer.outputFormat() == QPrinter::PdfFormat
                            ? m_printers->count() - 1
                            : m_printers->findText(printer.printerName());
    m_printers->setCurrentIndex(std::max(current, 0));
    m_papers = new QComboBox(this);
    m_papers->setObjectName(QStringLiteral("papers"));
    listPapers();
    connect(m_printers, &QComboBox::currentIndexChanged, this, [this] { listPapers(); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("&Printer:"), m_printers);
    layout->addRow(QStringLiteral("P&aper:"), m_papers);
    layout->addRow(buttons);
}

bool QtPrintSetupDialog::toFile() const {
    return m_printers->currentIndex() == m_printers->count() - 1;
}

void QtPrintSetupDialog::listPapers() {
    QList<QPageSize> papers;
    if (toFile()) {
        for (const QPageSize::PageSizeId id : kFilePapers) {
            papers.append(QPageSize(id));
        }
    } else {
        papers = QPrinterInfo::printerInfo(m_printers->currentText()).supportedPageSizes();
    }
    const QPageSize present = m_printer.pageLayout().pageSize();
    m_papers->clear();
    for (const QPageSize& paper : papers) {
        m_papers->addItem(paper.name(), QVariant::fromValue(paper));
        if (paper.isEquivalentTo(present)) {
            m_papers->setCurrentIndex(m_papers->count() - 1);
        }
    }
}

void QtPrintSetupDialog::accept() {
    if (toFile()) {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
    } else {
        m_printer.setOutputFormat(QPrinter::NativeFormat);
        m_printer.setPrinterName(m_printers->currentText());
    }
    if (m_papers->currentIndex() >= 0) {
        m_printer.setPageSize(m_papers->currentData().value<QPageSize>());
    }
    QDialog::accept();
}

} // namespace titron::qt
