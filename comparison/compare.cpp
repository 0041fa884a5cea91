#include "comparison/compare.h"

#include <algorithm>
#include <array>

#include "analysis/report.h"
#include "comparison/compare_rows.h"
#include "comparison/comparison_report.h"
#include "comparison/saved_analysis.h"
#include "entry/key_codes.h"
#include "session/save_failed_box.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::comparison {

namespace {

constexpr entry::Colour kComparisonColour{255, 0, 0};
constexpr entry::Colour kOtherColour{0, 0, 255};
constexpr int kStartRows = 100;
constexpr int kRowHeight = 600;
constexpr int kHeadingHeight = 690;
constexpr int kRowHeadingWidth = 150;
constexpr int kNarrowestLayout = 3000;
constexpr std::array<const char*, kCompareColumns + 1> kHeadings{
    "",
    "Filename",
    "Analysis Name",
    "Log Prop.",
    "S.E. of Log Prop.",
    "Difference in Log Prop.'s",
    "Ratio of Prop.'s",
    "95% C.I. for Ratio of Prop.'s",
    "Ratio of Prop.'s=1     1-tailed",
    "Ratio of Prop.'s=1     2-tailed",
};
constexpr const char* kAnalysisFilter =
    "Titron Analysis Files (*.tna)|*.tna|Text Files (*.txt)|*.txt|All Files (*.*)|*.*";
constexpr const char* kComparisonFilter =
    "Titron Comparison Files (*.tnc)|*.tnc|Text Files (*.txt)|*.txt|All Files (*.*)|*.*";
// How long the busy pointer stays after an output, so that the user sees that it ran.
constexpr int kDonePauseMs = 500;
// The name of a printed comparison's job.
constexpr const char* kPrintJob = "comparison";

} // namespace

Compare::Compare(platform::Platform& platform, session::Session& session)
    : m_platform(platform), m_session(session), m_grid(kCompareColumns, kStartRows) {
    m_grid.events().leavingCell = [this](int, int row, int, int newRow, bool&) {
        onLeavingCell(row, newRow);
    };
    m_grid.events().keyDown = [this](int keyCode, int) { onKeyDown(keyCode); };
    m_grid.setClipboard(&platform.clipboard); // Ctrl+C copies the selected cells
    load();
}

void Compare::load() {
    m_grid.setLocked(true);
    for (int col = 0; col <= kCompareColumns; ++col) {
        m_grid.setCell(col, 0, kHeadings[static_cast<std::size_t>(col)]);
    }
    m_grid.setColWidth(0, kRowHeadingWidth);
    m_grid.setRowHeight(-1, kRowHeight);
    m_grid.setRowHeight(0, kHeadingHeight);
    prepareGrid();
}

bool Compare::centred(int col) {
    return col >= column::LogProportion;
}

int Compare::comparisonRow() const {
    return m_grid.dataRowCount() > 0 ? m_grid.activeRow() : 0;
}

void Compare::show() {
    m_visible = true;
    activate();
}

void Compare::hide() {
    deactivate();
    m_visible = false;
}

// Empty rows, all blue, and redraw off until the rows are there.
void Compare::prepareGrid() {
    m_grid.setRedraw(false);
    m_grid.setRowLimit(kStartRows);
    m_grid.addressBlock(1, 1, kCompareColumns, kStartRows);
    m_grid.setBlockMode(true);
    m_grid.clear();
    m_grid.setTextColour(kOtherColour);
    m_grid.setBlockMode(false);
}

void Compare::activate() {
    m_savedCaption = m_session.frameCaption.text();
    prepareGrid();
    m_session.frameCaption.setText(kCompareCaption);
    m_session.frame.compareActivated();
    scan();
    m_grid.setRowLimit(m_grid.dataRowCount());
    if (m_grid.rowLimit() > 0) {
        m_grid.addressCell(1, 1);
        m_grid.activate();
        colourRow(1, kComparisonColour);
    }
    compareRows(m_grid, 1);
    m_grid.refresh();
    m_platform.pointer.setBusy(false);
}

void Compare::deactivate() {
    m_session.frameCaption.setText(m_savedCaption);
    m_session.frame.compareDeactivated();
    prepareGrid();
}

// Every analysis file of the current directory with results, in the order the file
// system lists them. A file that can't be read or holds no results is passed over; the
// table grows past its first hundred rows as far as the files go. A row's file cell is the
// file's path in the directory listed, which Open/Append would give for the same file.
void Compare::scan() {
    std::string directory = m_platform.files.currentDirectory();
    if (directory.empty() || directory.back() != '/') {
        directory += '/';
    }
    int row = 0;
    for (const std::string& name : m_platform.files.list("*.tna")) {
        std::string text;
        try {
            text = m_platform.files.readAll(name);
        } catch (const vocabulary::Failure&) {
            continue;
        }
        if (row == entry::Grid::kMaxRowLimit) {
            break; // the grid holds no more rows: files beyond are left out, the rest stand
        }
        if (row + 1 > m_grid.rowLimit()) {
            m_grid.setRowLimit(std::min(m_grid.rowLimit() + kStartRows, entry::Grid::kMaxRowLimit));
            m_grid.addressBlock(1, row + 1, kCompareColumns, m_grid.rowLimit());
            m_grid.setBlockMode(true);
            m_grid.setTextColour(kOtherColour);
            m_grid.setBlockMode(false);
        }
        if (writeRow(row + 1, directory + name, text)) {
            ++row;
        }
    }
}

bool Compare::writeRow(int row, const std::string& fileCell, const std::string& text) {
    const std::optional<SavedAnalysis> saved = readSavedAnalysis(text);
    if (!saved) {
        return false;
    }
    m_grid.setCell(column::File, row, fileCell);
    m_grid.setCell(column::Name, row, saved->name);
    m_grid.setCell(column::LogProportion, row,
                   vocabulary::formatMask(saved->logProportion, "##0.00000"));
    m_grid.setCell(column::StandardError, row,
                   vocabulary::formatMask(saved->standardError, "##0.0000"));
    return true;
}

void Compare::colourRow(int row, entry::Colour colour) {
    m_grid.addressBlock(1, row, kCompareColumns, row);
    m_grid.setBlockMode(true);
    m_grid.setTextColour(colour);
    m_grid.setBlockMode(false);
}

// Row 1 red, every other row blue, and the tests against row 1.
void Compare::makeComparisonRow(int row) {
    m_grid.addressCell(1, row);
    m_grid.activate();
    m_grid.addressBlock(1, 1, kCompareColumns, m_grid.rowLimit());
    m_grid.setBlockMode(true);
    m_grid.setTextColour(kOtherColour);
    m_grid.setBlockMode(false);
    colourRow(row, kComparisonColour);
    compareRows(m_grid, row);
}

void Compare::openFile() {
    m_dialog.flags = platform::dialog_flag::HideReadOnly | platform::dialog_flag::PathMustExist |
                     platform::dialog_flag::FileMustExist;
    m_dialog.filter = kAnalysisFilter;
    m_dialog.defaultExt = "tna";
    m_dialog.dialogTitle = "Titron Analysis File";
    m_dialog.fileName.clear();
    if (!m_platform.commonDialogs.showOpen(m_dialog)) {
        return;
    }
    m_session.LastDirectory = m_platform.files.currentDirectory();
    addFile(m_dialog.fileName);
}

AddOutcome Compare::addFile(const std::string& path) {
    const AddOutcome outcome = appendRow(path);
    if (outcome == AddOutcome::Added) {
        compareRows(m_grid, m_grid.activeRow());
    }
    return outcome;
}

std::vector<AddOutcome> Compare::addFiles(const std::vector<std::string>& paths) {
    std::vector<AddOutcome> outcomes;
    outcomes.reserve(paths.size());
    for (const std::string& path : paths) {
        outcomes.push_back(appendRow(path));
    }
    compareRows(m_grid, m_grid.activeRow());
    return outcomes;
}

AddOutcome Compare::appendRow(const std::string& path) {
    std::string text;
    try {
        text = m_platform.files.readAll(path);
    } catch (const vocabulary::Failure&) {
        return AddOutcome::Unreadable;
    }
    if (!readSavedAnalysis(text)) {
        return AddOutcome::NoResults;
    }
    if (m_grid.rowLimit() == entry::Grid::kMaxRowLimit) {
        return AddOutcome::Full;
    }
    const int row = m_grid.rowLimit() + 1;
    m_grid.setRowLimit(row);
    colourRow(row, row >= 2 ? kOtherColour : kComparisonColour);
    if (row == 1) {
        m_grid.addressCell(1, 1);
        m_grid.activate();
    }
    writeRow(row, path, text);
    return AddOutcome::Added;
}

void Compare::beginEmpty() {
    prepareGrid();
    m_grid.setRowLimit(0);
    compareRows(m_grid, 1);
}

void Compare::chooseComparisonRow(int row) {
    m_grid.userMoveTo(m_grid.activeCol(), row);
}

void Compare::editDelete() {
    int first = m_grid.activeRow();
    int last = first;
    std::string prompt = "Delete the current row?";
    std::string title = "DELETE ROW?";
    if (m_grid.blockSelected()) {
        const entry::CellBlock selection = m_grid.selection();
        first = selection.row == -1 ? 1 : selection.row;
        last = selection.row == -1 ? m_grid.rowLimit() : selection.row2;
        prompt = "Delete " + std::to_string(last - first + 1) + " rows?";
        title = "DELETE ROWS?";
    }
    if (m_session.settings.ConfirmDelete &&
        m_platform.dialogs.messageBox({title, prompt, platform::Buttons::YesNo,
                                       platform::Icon::Question, 1}) == platform::Answer::No) {
        return;
    }
    deleteRows(first, last);
}

void Compare::onKeyDown(int keyCode) {
    if (keyCode != entry::key::Delete || !m_grid.blockSelected() || m_grid.selection().col != -1) {
        return;
    }
    const entry::CellBlock selection = m_grid.selection();
    deleteRows(selection.row == -1 ? 1 : selection.row,
               selection.row == -1 ? m_grid.rowLimit() : selection.row2);
}

void Compare::deleteRows(int first, int last) {
    m_grid.setRedraw(false);
    m_grid.addressBlock(1, first, kCompareColumns, last);
    m_grid.setBlockMode(true);
    m_grid.deleteRow();
    m_grid.setBlockMode(false);
    m_grid.setRowLimit(m_grid.dataRowCount());
    if (m_grid.rowLimit() > 0) {
        makeComparisonRow(1);
    }
    m_grid.setRedraw(true);
    m_grid.refresh();
}

void Compare::onLeavingCell(int row, int newRow) {
    if (newRow == row || newRow < 1) {
        return;
    }
    colourRow(row, kOtherColour);
    colourRow(newRow, kComparisonColour);
    compareRows(m_grid, newRow);
}

void Compare::resize(int outerWidth) {
    if (outerWidth <= kNarrowestLayout) {
        return;
    }
    m_grid.setRedraw(false);
    const int w = outerWidth;
    const std::array<int, kCompareColumns + 1> widths{0,      w / 7,  w / 8, w / 15, w / 15,
                                                      w / 10, w / 10, w / 8, w / 10, w / 10};
    for (int col = 1; col <= kCompareColumns; ++col) {
        m_grid.setColWidth(col, widths[static_cast<std::size_t>(col)]);
    }
    m_grid.setRedraw(true);
}

void Compare::saveFile() {
    m_dialog.flags = platform::dialog_flag::OverwritePrompt | platform::dialog_flag::HideReadOnly |
                     platform::dialog_flag::PathMustExist | platform::dialog_flag::NoReadOnlyReturn;
    m_dialog.filter = kComparisonFilter;
    m_dialog.defaultExt = "tnc";
    m_dialog.dialogTitle = "Titron Comparison File";
    if (!m_platform.commonDialogs.showSave(m_dialog)) {
        m_dialog.fileName.clear();
    }
    if (m_dialog.fileName.empty()) {
        return;
    }
    m_platform.pointer.setBusy(true);
    std::string failure;
    if (!writeComparison(m_dialog.fileName, &failure)) {
        // The old file stays as it was; the user hears why.
        m_platform.pointer.setBusy(false);
        m_platform.dialogs.messageBox(session::saveFailedBox(m_dialog.fileName, failure));
        m_dialog.fileName.clear();
        return;
    }
    m_platform.events.wait(kDonePauseMs);
    m_platform.pointer.setBusy(false);
}

bool Compare::writeComparison(const std::string& path, std::string* failure) {
    try {
        m_platform.files.writeAll(path, buildReport(m_grid) + std::string(analysis::kLineEnd));
        return true;
    } catch (const vocabulary::Failure& cause) {
        if (failure != nullptr) {
            *failure = cause.description();
        }
        return false;
    }
}

void Compare::printFile() {
    m_dialog.flags = 0;
    // A name of its own, so that a print to a file doesn't offer the analysis's file.
    m_dialog.documentName = kPrintJob;
    if (!m_platform.commonDialogs.showPrinter(m_dialog)) {
        return;
    }
    m_platform.pointer.setBusy(true);
    platform::Printer& printer = m_platform.printer;
    const std::string lineEnd(analysis::kLineEnd);
    printer.setLeftOrigin(0);
    printer.setOrientation(platform::Orientation::Landscape);
    printer.setFontName("Arial");
    printer.setFontSize(16);
    printer.setEmphasis(true);
    printer.printText(kCompareCaption);
    printer.setFontSize(10);
    printer.setEmphasis(false);
    const platform::CalendarDate today = m_platform.clock.today();
    printer.printText(vocabulary::formatLongDate(today.year, today.month, today.day) + lineEnd +
                      lineEnd + lineEnd);
    printer.setFontName("Courier New");
    printer.printText(buildReport(m_grid));
    printer.endDocument();
    m_platform.events.wait(kDonePauseMs);
    m_platform.pointer.setBusy(false);
}

// The cells for a spreadsheet: the headings and every row, no report layout.
void Compare::copyFile() {
    m_platform.pointer.setBusy(true);
    m_grid.addressBlock(1, 0, kCompareColumns, m_grid.dataRowCount());
    m_platform.clipboard.setText(m_grid.clip());
    m_platform.events.wait(kDonePauseMs);
    m_platform.pointer.setBusy(false);
}

} // namespace titron::comparison
