// Print Setup: the printer and the paper that the next print uses. It offers the printers
// of the print dialog, print to a PDF file included; the orientation is each print's own.
#pragma once

#include <QDialog>

class QComboBox;
class QPrinter;

namespace titron::qt {

class QtPrintSetupDialog : public QDialog {
  public:
    QtPrintSetupDialog(QPrinter& printer, QWidget* parent);

    // Gives the printer the chosen device and paper.
    void accept() override;

  private:
    bool toFile() const;
    // The papers of the chosen printer, the printer's present paper chosen if it is one.
    void listPapers();

    QPrinter& m_printer;
    QComboBox* m_printers;
    QComboBox* m_papers;
};

} // namespace titron::qt
