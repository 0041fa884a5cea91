// The analysis on the clipboard and on paper. Both take the report when the pane holds one,
// else the grid, and leave the document as it was.
#include "analysis/report.h"
#include "documents/analyze.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/text_routines.h"

namespace titron::documents {

namespace {

// How long the busy pointer stays after the command, so that the user sees that it ran.
constexpr int kDonePauseMs = 500;
// The page's left edge lies this far left of where the lines start (twips).
constexpr int kLeftOrigin = -700;
constexpr const char* kHeadFont = "Arial";
constexpr const char* kBodyFont = "Courier New";
constexpr double kTitlePoints = 16;
constexpr double kTextPoints = 10;
// The print job of a document without a file.
constexpr const char* kUnsavedJob = "analysis";

} // namespace

bool Analyze::nothingToPutOut(const char* title, const char* text) {
    if (reportPresent() || m_grid.dataRowCount() >= 1) {
        return false;
    }
    m_platform.dialogs.messageBox(
        {title, text, platform::Buttons::Ok, platform::Icon::Exclamation, 1});
    return true;
}

// Cells for a spreadsheet: the grid block as it is, or the report with single Tabs so
// that its table lands one value a cell.
void Analyze::copyFile() {
    if (nothingToPutOut("NO ANALYSIS TO COPY", "No Titron analysis to copy.")) {
        return;
    }
    m_platform.pointer.setBusy(true);
    m_platform.clipboard.clear();
    if (!reportPresent()) {
        m_grid.addressBlock(0, 0, kDataColumns, m_grid.dataRowCount());
        m_platform.clipboard.setText(m_grid.clip());
    } else {
        std::string text = m_results.text();
        vocabulary::replaceText(text, "\t\t", "\t");
        m_platform.clipboard.setText(text);
    }
    m_platform.events.wait(kDonePauseMs);
    m_platform.pointer.setBusy(false);
}

// The page: a head of the program's name and today's date, then the report or the table
// in a fixed-pitch font, its doubled Tabs kept for the eight-character stops.
void Analyze::printFile() {
    if (nothingToPutOut("NO ANALYSIS TO PRINT", "No Titron analysis to print.")) {
        return;
    }
    const std::string body = reportPresent() ? m_results.text() : composeTableForm(false);
    m_dialog.flags = 0;
    // Named as its file, so that a print to a file doesn't offer another document's.
    m_dialog.documentName =
        m_session.AnalysisFile.empty() ? kUnsavedJob : fileStem(m_session.AnalysisFile);
    if (!m_platform.commonDialogs.showPrinter(m_dialog)) {
        m_platform.pointer.setBusy(false);
        return;
    }
    m_platform.pointer.setBusy(true);
    platform::Printer& printer = m_platform.printer;
    const std::string lineEnd(analysis::kLineEnd);
    printer.setLeftOrigin(kLeftOrigin);
    printer.setOrientation(platform::Orientation::Portrait);
    printer.setFontName(kHeadFont);
    printer.setFontSize(kTitlePoints);
    printer.setEmphasis(true);
    printer.printText(lineEnd + session::kProgramTitle);
    printer.setFontSize(kTextPoints);
    printer.setEmphasis(false);
    const platform::CalendarDate today = m_platform.clock.today();
    printer.printText(vocabulary::formatLongDate(today.year, today.month, today.day) + lineEnd +
                      lineEnd + lineEnd);
    printer.setFontName(kBodyFont);
    printer.printText(body);
    printer.endDocument();
    m_platform.events.wait(kDonePauseMs);
    m_platform.pointer.setBusy(false);
}

} // namespace titron::documents
