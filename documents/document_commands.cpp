// New, Open and Save: the document's life through the File menu, with the save question
// and the window's file dialog.
#include <algorithm>
#include <utility>

#include "documents/analyze.h"
#include "documents/save_question.h"
#include "session/save_failed_box.h"

namespace titron::documents {

namespace {

constexpr const char* kDialogTitle = "Titron Analysis File";
constexpr const char* kFilter =
    "Titron Analysis Files (*.tna)|*.tna|Text Files (*.txt)|*.txt|All Files (*.*)|*.*";
constexpr const char* kExtension = "tna";
constexpr long kOpenFlags = platform::dialog_flag::HideReadOnly |
                            platform::dialog_flag::PathMustExist |
                            platform::dialog_flag::FileMustExist; // 6148
constexpr long kSaveFlags =
    platform::dialog_flag::OverwritePrompt | platform::dialog_flag::HideReadOnly |
    platform::dialog_flag::PathMustExist | platform::dialog_flag::NoReadOnlyReturn; // 34822
constexpr int kNewRowLimit = 100;

void setUpFileDialog(platform::CommonDialog& dialog, long flags) {
    dialog.flags = flags;
    dialog.filter = kFilter;
    dialog.defaultExt = kExtension;
    dialog.dialogTitle = kDialogTitle;
}

// The name a save offers for a document with a file: its stem with ".tna"
// ("/data/run.3.txt" offers "run.tna").
std::string offeredName(const std::string& path) {
    return fileStem(path) + "." + kExtension;
}

} // namespace

std::string fileStem(const std::string& path) {
    std::string name = path.substr(path.rfind('/') + 1); // npos + 1 is 0: the whole path
    name.erase(std::min(name.find('.'), name.size()));
    return name;
}

bool Analyze::settleChanges(const char* question) {
    if (m_session.AnalysisChanged == session::kUnchanged) {
        return true;
    }
    switch (askSaveQuestion(m_platform.dialogs, question)) {
    case platform::Answer::Cancel:
        return false;
    case platform::Answer::Yes:
        saveFile();
        // A cancelled or failed save empties the dialog's file name; so does nothing else.
        return !m_dialog.fileName.empty();
    default:
        return true;
    }
}

void Analyze::newFile() {
    if (!settleChanges(kSaveQuestion)) {
        return;
    }
    m_session.frameCaption.setText(session::kProgramTitle);
    m_session.AnalysisFile.clear();
    m_name.setText("");
    const auto& headings = m_session.settings.ColHeading;
    for (int col = 0; col <= kDataColumns; ++col) {
        m_grid.addressCell(col, 0);
        m_grid.setText(headings[static_cast<std::size_t>(col)]);
    }
    m_grid.addressBlock(1, 1, kDataColumns, m_grid.rowLimit());
    m_grid.setBlockMode(true);
    m_grid.clear();
    m_grid.setBlockMode(false);
    m_grid.setRowLimit(kNewRowLimit);
    putCursorOn(1, 1);
    m_results.setText(kEmptyResults);
    m_session.AnalysisChanged = session::kUnchanged;
    formatResults();
    setFocus(Control::AnalysisName);
    m_platform.pointer.setBusy(false);
}

void Analyze::openFile() {
    if (!settleChanges(kSaveCurrentQuestion)) {
        return;
    }
    setUpFileDialog(m_dialog, kOpenFlags);
    m_dialog.fileName.clear();
    if (!m_platform.commonDialogs.showOpen(m_dialog)) {
        return;
    }
    openDocument(m_dialog.fileName);
}

void Analyze::saveFile() {
    if (!reportPresent() && m_grid.dataRowCount() < 1) {
        m_platform.dialogs.messageBox({"NO ANALYSIS TO SAVE", "No Titron analysis to save.",
                                       platform::Buttons::Ok, platform::Icon::Exclamation, 1});
        return;
    }
    std::string text = composeFileText();
    setUpFileDialog(m_dialog, kSaveFlags);
    if (!m_session.AnalysisFile.empty()) {
        m_dialog.fileName = offeredName(m_session.AnalysisFile);
    }
    if (!m_platform.commonDialogs.showSave(m_dialog)) {
        m_dialog.fileName.clear();
        return;
    }
    std::string failure;
    if (!writeDocument(m_dialog.fileName, std::move(text), &failure)) {
        m_platform.dialogs.messageBox(session::saveFailedBox(m_dialog.fileName, failure));
        // As after a cancelled dialog, so that a command that asked for this save stops
        // rather than lose the document.
        m_dialog.fileName.clear();
    }
}

} // namespace titron::documents
