// The logic of the Analyze window: one analysis document, held in its controls (the assay
// table in grid, the name in nameBox, the report in resultsPane) and in the
// shared values of the session (changed flag, file, caption).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "analysis/assay_table.h"
#include "analysis/figures.h"
#include "documents/results_pane.h"
#include "entry/data_grid.h"
#include "entry/grid.h"
#include "platform/common_dialog.h"
#include "platform/platform.h"
#include "session/session.h"
#include "session/text_box.h"

namespace titron::documents {

// The controls of the window that can hold the focus.
enum class Control { None, AnalysisName, Grid, Results };

// How a run of the analysis ended, for callers that need more than the window shows.
struct AnalysisRun {
    enum class Ending { Report, Box, NoConvergence };
    Ending ending = Ending::Box;
    platform::MessageBoxRequest box;          // the box that ended it, for Ending::Box
    bool noNameNote = false;                  // the report came with "There is no Analysis Name."
    std::optional<analysis::Figures> figures; // for Ending::Report
    // The rows read from the grid, once every row passed its checks: with a report, with no
    // convergence, with the boxes of the totals ("no responses", "every test responded"),
    // and with a failure of the arithmetic after the checks ("Titron ERROR #6").
    std::optional<analysis::AssayTable> table;
};

enum class LoadOutcome { Loaded, Cancelled, Failed };

// The assay table's data columns (Dose, Responses, Tested, Comments) and their text colour.
inline constexpr int kDataColumns = 4;
inline constexpr entry::Colour kDataTextColour{0, 0, 255};

// The most characters the user can type into the name.
inline constexpr int kNameTypedLimit = 120;

// The pane's text when it holds no report.
inline constexpr const char* kEmptyResults = "Analysis Results";
// A pane text this long or longer counts as a report for saving, copying and printing.
inline constexpr std::size_t kReportMinimumLength = 50;

// A file's name without its directory, cut at its first full stop: "/data/run.3.txt" gives
// "run".
std::string fileStem(const std::string& path);

class Analyze {
  public:
    Analyze(platform::Platform& platform, session::Session& session);
    Analyze(const Analyze&) = delete;
    Analyze& operator=(const Analyze&) = delete;

    entry::Grid& grid() { return m_grid; }
    session::TextBox& nameBox() { return m_name; }
    ResultsPane& resultsPane() { return m_results; }
    const entry::Grid& grid() const { return m_grid; }
    const session::TextBox& nameBox() const { return m_name; }
    const ResultsPane& resultsPane() const { return m_results; }

    // Sets up the grid and the pane when the window is made: headings, row numbers,
    // empty rows, the pane's look.
    void load();
    // Puts the window back as load() leaves a new one, so that one window logic can open
    // file after file as new windows would (the command line does): nothing of the last
    // document stays, neither its rows, headings, name and report nor the cursor, scroll,
    // focus and dialog. The session's shared values are the caller's to renew.
    void startAfresh();

    // The control with the focus. Moving it ends an edit in the grid and raises the
    // grid's focus events; the view calls it when the user moves the focus.
    Control focus() const { return m_focus; }
    void setFocus(Control control);
    // The view's listener, told after each real move of the focus (the logic moves it too,
    // for instance onto a cell at fault), so that the widgets follow at once.
    void setFocusListener(std::function<void()> listener) { m_focusListener = std::move(listener); }

    // The Analyze command: checks the assay table, estimates, writes the report.
    void analyze();
    // The same, telling how it ended.
    AnalysisRun runAnalysis();

    // The commands of the File menu. New, Open and Save ask the save question and show
    // the window's file dialogs; Copy and Print take the report if the pane holds one, else
    // the grid, and change nothing of the document.
    void newFile();
    void openFile();
    void saveFile();
    void copyFile();
    void printFile();

    // The window's dialog object. Its file name outlives a command: a cancelled save empties
    // it, and the save question's Yes looks at it afterwards.
    platform::CommonDialog& commonDialog() { return m_dialog; }
    const platform::CommonDialog& commonDialog() const { return m_dialog; }

    // Opens the file at path into the document, as the Open command does once its dialog
    // has given the path (the save question and the dialog are the caller's).
    LoadOutcome openDocument(const std::string& path);
    // The text a save writes without its final line end: the report if one is present,
    // else the table form; empty when there is nothing to save.
    std::string composeFileText();
    // Writes the document to path, as the Save command does once its dialog has given the
    // path. Returns false when the write failed, with the system's reason in failure.
    bool saveDocument(const std::string& path, std::string* failure = nullptr);

    // The name box's rules. A typed key: returns the character to pass on, 0 to drop it
    // (double quotation marks and commas; Enter moves on to the grid). Losing the focus: a
    // name that holds either character (pasted in) gets a box for each, and the focus back.
    int nameBoxKeyPress(int character);
    void nameBoxLostFocus();

    // Lays the window out for its outer width W (twips): the name box and the grid's
    // columns. A window of 1000 or less keeps its layout.
    void resize(int outerWidth);
    int nameWidth() const { return m_nameWidth; }
    // The grid's height at load (twips), from the settings.
    int gridHeight() const;

    // Row commands of the Edit menu and the toolbar.
    void editInsert() { m_dataGrid.editInsert(); }
    void editDelete() { m_dataGrid.editDelete(); }
    // Block commands of the grid's pop-up menu.
    void dropCut() { m_dataGrid.dropCut(); }
    void dropCopy() { m_dataGrid.dropCopy(); }
    void dropPaste() { m_dataGrid.dropPaste(); }
    void dropDelete() { m_dataGrid.dropDelete(); }
    void dropFill() { m_dataGrid.dropFill(); }

    // Whether the pane holds a report (50 characters or more).
    bool reportPresent() const;

    // Puts "Analysis Results" into the pane, marks the document changed and restores the
    // pane's look.
    void resetPane();
    void formatResults();
    void numberRows();

  private:
    LoadOutcome loadAnalysis();
    // The save question when the document is changed: true to go on with the command.
    bool settleChanges(const char* question);
    // The table form: the file line, the name (labelled for a file, bare for the printed
    // page) and the laid-out table.
    std::string composeTableForm(bool labelledName);
    // Steps after an accepted save dialog; false when the write failed, with its reason.
    bool writeDocument(const std::string& path, std::string text, std::string* failure);
    // With neither a report nor data rows: the box of the command, and true.
    bool nothingToPutOut(const char* title, const char* text);
    void onGridCellChanged();
    void onNameChanged();
    void putCursorOn(int column, int row);
    std::int32_t askMorePasses(std::int32_t passesSoFar);
    AnalysisRun endWithBox(const platform::MessageBoxRequest& box);

    platform::Platform& m_platform;
    session::Session& m_session;
    entry::Grid m_grid;
    entry::DataGrid m_dataGrid;
    session::TextBox m_name;
    ResultsPane m_results;
    Control m_focus = Control::None;
    std::function<void()> m_focusListener;
    int m_nameWidth = 0;
    platform::CommonDialog m_dialog;
    bool m_checkingName = false; // the name's boxes are up: a focus move now is theirs
};

} // namespace titron::documents
