// The file and printer dialogs of the dialog object, as Qt's own dialogs: the same on every
// desktop and usable from the keyboard.
#pragma once

#include <string>

#include <QFileDialog>
#include <QStringList>

#include "platform/common_dialog.h"

class QPrinter;

namespace titron::qt {

// "Label|pattern|..." as Qt name filters "Label (pattern)"; "*.*" means all files, "*".
QStringList qtNameFilters(const std::string& filter);

// Sets up a file dialog for opening or saving as the dialog object asks: title, filters,
// default extension, modes and options, the current directory and the offered name.
void configureFileDialog(QFileDialog& fileDialog, const platform::CommonDialog& dialog,
                         QFileDialog::AcceptMode mode);

class QtCommonDialogs : public platform::CommonDialogs {
  public:
    // The printer dialogs choose for this printer, which the print device prints on.
    explicit QtCommonDialogs(QPrinter& printer) : m_printer(printer) {}

    bool showOpen(platform::CommonDialog& dialog) override;
    bool showSave(platform::CommonDialog& dialog) override;
    bool showPrinter(platform::CommonDialog& dialog) override;

  private:
    bool showFileDialog(platform::CommonDialog& dialog, QFileDialog::AcceptMode mode);

    QPrinter& m_printer;
};

} // namespace titron::qt
