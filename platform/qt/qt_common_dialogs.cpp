#include "platform/qt/qt_common_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

#include "platform/qt/qt_print_setup_dialog.h"
#include "platform/qt/qt_text.h"

namespace titron::qt {

namespace {

namespace flag = platform::dialog_flag;

bool has(const platform::CommonDialog& dialog, long which) {
    return (dialog.flags & which) != 0;
}

// Why a chosen file can't be taken, or the empty text if it can.
QString refusal(const platform::CommonDialog& dialog, const QFileInfo& file) {
    const QString shown = QDir::toNativeSeparators(file.absoluteFilePath());
    if (has(dialog, flag::PathMustExist) && !file.absoluteDir().exists()) {
        return shown + QStringLiteral("\nPath does not exist.\nCheck the path and try again.");
    }
    // Read-only: the file is marked so (its owner's write permission is off, whoever asks),
    // or this user can't write it.
    const bool readOnly =
        file.exists() && (!file.isWritable() || !file.permissions().testFlag(QFile::WriteOwner));
    if (has(dialog, flag::NoReadOnlyReturn) && readOnly) {
        return shown +
               QStringLiteral(
                   "\nThis file is set to read-only.\nTry again with a different file name.");
    }
    return {};
}

// Qt separates the patterns of a filter with spaces, not ";", and matches all files with
// "*": "*.*" would want a dot in the name.
QString qtPattern(const QString& pattern) {
    QStringList globs = pattern.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (QString& glob : globs) {
        glob = glob.trimmed();
        if (glob == QStringLiteral("*.*")) {
            glob = QStringLiteral("*");
        }
    }
    return globs.join(QLatin1Char(' '));
}

// The job takes the document's name. A print to a file offers that name with ".pdf", in the
// folder of the file printed last or else the current one, so that one document never
// offers to overwrite the file of another.
void nameJob(QPrinter& printer, const std::string& name) {
    if (name.empty()) {
        return;
    }
    const QString job = QFile::decodeName(name.c_str());
    printer.setDocName(job);
    if (printer.outputFormat() != QPrinter::PdfFormat) {
        return;
    }
    const QString last = printer.outputFileName();
    const QDir folder = last.isEmpty() ? QDir::current() : QFileInfo(last).absoluteDir();
    printer.setOutputFileName(folder.absoluteFilePath(job + QStringLiteral(".pdf")));
}

} // namespace

QStringList qtNameFilters(const std::string& filter) {
    const QStringList parts = fromLatin1(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString label = parts[i];
        const QString given = QLatin1Char('(') + parts[i + 1] + QLatin1Char(')');
        // A label that shows its pattern shows Qt's form of it instead.
        if (label.endsWith(given)) {
            label.chop(given.size());
        } else {
            label.append(QLatin1Char(' '));
        }
        filters.append(label + QLatin1Char('(') + qtPattern(parts[i + 1]) + QLatin1Char(')'));
    }
    return filters;
}

void configureFileDialog(QFileDialog& fileDialog, const platform::CommonDialog& dialog,
                         QFileDialog::AcceptMode mode) {
    fileDialog.setOption(QFileDialog::DontUseNativeDialog);
    fileDialog.setWindowTitle(fromLatin1(dialog.dialogTitle));
    fileDialog.setAcceptMode(mode);
    const bool mustExist = mode == QFileDialog::AcceptOpen && has(dialog, flag::FileMustExist);
    fileDialog.setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    fileDialog.setOption(QFileDialog::DontConfirmOverwrite,
                         mode == QFileDialog::AcceptSave && !has(dialog, flag::OverwritePrompt));
    fileDialog.setNameFilters(qtNameFilters(dialog.filter));
    fileDialog.setDefaultSuffix(fromLatin1(dialog.defaultExt));
    fileDialog.setDirectory(QDir::currentPath());
    if (!dialog.fileName.empty()) {
        fileDialog.selectFile(QFile::decodeName(dialog.fileName.c_str()));
    }
}

bool QtCommonDialogs::showOpen(platform::CommonDialog& dialog) {
    return showFileDialog(dialog, QFileDialog::AcceptOpen);
}

bool QtCommonDialogs::showSave(platform::CommonDialog& dialog) {
    return showFileDialog(dialog, QFileDialog::AcceptSave);
}

bool QtCommonDialogs::showFileDialog(platform::CommonDialog& dialog, QFileDialog::AcceptMode mode) {
    QFileDialog fileDialog(QApplication::activeWindow());
    configureFileDialog(fileDialog, dialog, mode);
    // A file that can't be taken is explained and the same dialog asks again.
    for (;;) {
        if (fileDialog.exec() != QDialog::Accepted || fileDialog.selectedFiles().isEmpty()) {
            return false;
        }
        const QFileInfo file(fileDialog.selectedFiles().constFirst());
        const QString why = refusal(dialog, file);
        if (why.isEmpty()) {
            // Paths are the file system's bytes, as the program's files take them.
            dialog.fileName = QFile::encodeName(file.absoluteFilePath()).toStdString();
            QDir::setCurrent(file.absolutePath());
            return true;
        }
        QMessageBox::warning(&fileDialog, fromLatin1(dialog.dialogTitle), why);
    }
}

bool QtCommonDialogs::showPrinter(platform::CommonDialog& dialog) {
    if (has(dialog, flag::PrintSetup)) {
        QtPrintSetupDialog setup(m_printer, QApplication::activeWindow());
        return setup.exec() == QDialog::Accepted;
    }
    nameJob(m_printer, dialog.documentName);
    // Qt's own title, "Print": the file dialogs' title is theirs alone.
    QPrintDialog printDialog(&m_printer, QApplication::activeWindow());
    return printDialog.exec() == QDialog::Accepted;
}

} // namespace titron::qt
