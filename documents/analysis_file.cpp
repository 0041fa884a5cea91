// Composing and writing an analysis file. A file holds either the report (when the pane
// has one) or the table form: the file line, the name line and the table.
#include "analysis/report.h"
#include "documents/analysis_table.h"
#include "documents/analyze.h"
#include "vocabulary/failure.h"

namespace titron::documents {

namespace {
// How long the busy pointer stays after a save, so that the user sees that it happened.
constexpr int kSavedPauseMs = 500;
} // namespace

std::string Analyze::composeTableForm(bool labelledName) {
    std::string text;
    if (!m_session.AnalysisFile.empty()) {
        text += analysis::fileLine(m_session.AnalysisFile);
    }
    if (!m_name.text().empty()) {
        if (labelledName) {
            text += "Analysis Name: ";
        }
        text += m_name.text();
        text += analysis::kLineEnd;
        text += analysis::kLineEnd;
    }
    appendLayoutTable(m_grid, text);
    return text;
}

std::string Analyze::composeFileText() {
    std::string text;
    if (reportPresent()) {
        // Room for the line end that ends the file, so that it doesn't move the text.
        text.reserve(m_results.text().size() + analysis::kLineEnd.size());
        text += m_results.text();
    } else if (m_grid.dataRowCount() >= 1) {
        text = composeTableForm(true);
    }
    return text;
}

bool Analyze::saveDocument(const std::string& path, std::string* failure) {
    return writeDocument(path, composeFileText(), failure);
}

// The text was composed before the dialog, so its file line names the document's old path.
// A failed write leaves the document changed, with its path and caption as they were.
bool Analyze::writeDocument(const std::string& path, std::string text, std::string* failure) {
    m_platform.pointer.setBusy(true);
    m_session.LastDirectory = m_platform.files.currentDirectory();
    try {
        text += analysis::kLineEnd;
        m_platform.files.writeAll(path, text);
    } catch (const vocabulary::Failure& cause) {
        if (failure != nullptr) {
            *failure = cause.description();
        }
        m_platform.pointer.setBusy(false);
        return false;
    }
    m_session.AnalysisFile = path;
    m_session.AnalysisChanged = session::kUnchanged;
    m_session.frameCaption.setText(session::captionWithFile(m_session.AnalysisFile));
    m_platform.events.wait(kSavedPauseMs);
    m_platform.pointer.setBusy(false);
    return true;
}

} // namespace titron::documents
