#include "documents/analyze.h"

#include <algorithm>

namespace titron::documents {

namespace {

constexpr int kStartRowLimit = 100;
// The pane's look: dark blue text on tab stops every 960 twips (ten stops).
constexpr Rgb kResultsColour{0, 0, 128};
constexpr int kTabStopTwips = 960;
constexpr int kTabStops = 10;
// Resize: below this outer width nothing is laid out; the name box leaves room for its
// label at the left and a margin.
constexpr int kNarrowestLayout = 1000;
constexpr int kNameMargin = 120 + 1260;

} // namespace

Analyze::Analyze(platform::Platform& platform, session::Session& session)
    : m_platform(platform), m_session(session), m_grid(kDataColumns, kStartRowLimit),
      m_dataGrid(m_grid, platform, session, [this] { resetPane(); }),
      m_results(FontSpec{"Courier New", 9.75, true}, kEmptyResults) {
    m_grid.events().cellChanged = [this](int, int) { onGridCellChanged(); };
    m_name.setChangeHandler([this] { onNameChanged(); });
}

void Analyze::load() {
    const auto& settings = m_session.settings;
    m_grid.setRow(0);
    for (int col = 0; col <= kDataColumns; ++col) {
        m_grid.setCol(col);
        m_grid.setText(settings.ColHeading[static_cast<std::size_t>(col)]);
    }
    // A negative width from the settings file counts as 0 rather than stopping the load.
    m_grid.setColWidth(0, std::max<int>(settings.ColWidth[0], 0));
    numberRows();
    m_grid.addressBlock(1, 1, kDataColumns, m_grid.rowLimit());
    m_grid.setBlockMode(true);
    m_grid.clear();
    m_grid.setTextColour(kDataTextColour);
    m_grid.setBlockMode(false);
    formatResults();
}

void Analyze::startAfresh() {
    // No focus events: a new window has had none either.
    m_focus = Control::None;
    m_checkingName = false;
    m_nameWidth = 0;
    m_dialog = platform::CommonDialog{};
    // The pane first, so that clearing the name finds no report to take off.
    m_results.setText(kEmptyResults);
    m_name.setText("");
    m_grid.userCancelEdit();
    m_grid.setRowLimit(kStartRowLimit);
    m_grid.setColWidth(-1, entry::Grid::kDefaultColWidth);
    putCursorOn(1, 1);
    m_grid.setFirstVisibleRow(1);
    load();
}

void Analyze::setFocus(Control control) {
    // While the name's boxes are up, a move elsewhere is the window system's, not the user's.
    if (control == m_focus || (m_checkingName && control != Control::AnalysisName)) {
        return;
    }
    const Control previous = m_focus;
    m_focus = control;
    if (previous == Control::Grid) {
        m_grid.userFocusLost();
    }
    if (control == Control::Grid) {
        m_grid.userFocusGained();
    }
    if (m_focusListener) {
        m_focusListener();
    }
    if (previous == Control::AnalysisName) {
        nameBoxLostFocus();
    }
}

bool Analyze::reportPresent() const {
    return m_results.text().size() >= kReportMinimumLength;
}

void Analyze::resetPane() {
    m_results.setText(kEmptyResults);
    m_session.AnalysisChanged = session::kChanged;
    formatResults();
}

void Analyze::formatResults() {
    std::vector<int> stops;
    stops.reserve(kTabStops);
    for (int i = 0; i < kTabStops; ++i) {
        stops.push_back(i * kTabStopTwips);
    }
    m_results.format(kResultsColour, std::move(stops));
}

void Analyze::numberRows() {
    m_dataGrid.numberRows();
}

void Analyze::resize(int outerWidth) {
    if (outerWidth <= kNarrowestLayout) {
        return;
    }
    m_nameWidth = outerWidth - kNameMargin;
    m_dataGrid.resizeColumns(outerWidth);
}

int Analyze::gridHeight() const {
    return std::max<int>(m_session.settings.GridHeight, 0);
}

// The first edit after a load, a new document or a save takes the report off the screen;
// later edits leave an unsaved report standing.
void Analyze::onGridCellChanged() {
    if (m_session.AnalysisChanged == session::kUnchanged) {
        resetPane();
    }
}

// A new name makes the report, which carries the old name, out of date. Naming an empty
// document doesn't make it changed.
void Analyze::onNameChanged() {
    if (m_results.text() != kEmptyResults) {
        resetPane();
    }
}

void Analyze::putCursorOn(int column, int row) {
    m_grid.addressCell(column, row);
    m_grid.activate();
}

} // namespace titron::documents
