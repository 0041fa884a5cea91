// The Analyze command: read and check the assay table, estimate, report.
#include <cstdint>
#include <string>

#include "analysis/assay_table.h"
#include "analysis/estimator.h"
#include "analysis/report.h"
#include "documents/analysis_table.h"
#include "documents/analyze.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_text.h"

namespace titron::documents {

using platform::Buttons;
using platform::Icon;
using platform::MessageBoxRequest;
using vocabulary::Failure;

namespace {

// The cell being read, where the reading failure path can see it.
struct ReadPosition {
    int column = 0;
    int row = 0;
    std::string work; // the cell's text without its blanks
};

MessageBoxRequest exclamation(std::string title, std::string text) {
    return MessageBoxRequest{std::move(title), std::move(text), Buttons::Ok, Icon::Exclamation, 1};
}

MessageBoxRequest generalFailureBox(const Failure& failure) {
    return exclamation("Titron ERROR #" + std::to_string(failure.number()),
                       "An error occurred in the analysis.");
}

// Reads rows 1 to the data row count, columns Dose, Responses and Tested. Every row counts:
// a blank row, or one with only a comment, fails on its first empty cell. The row counter
// is a signed 16-bit number, as the table's rows are counted throughout.
analysis::AssayTable readTable(entry::Grid& grid, ReadPosition& at) {
    const int lastRow = grid.dataRowCount();
    analysis::AssayTable table(static_cast<std::size_t>(lastRow));
    std::int16_t k = 1;
    for (at.row = 1; at.row <= lastRow; ++at.row) {
        grid.setRow(at.row);
        analysis::AssayRow& row = table[static_cast<std::size_t>(k - 1)];
        double* const values[] = {&row.dose, &row.responses, &row.tested};
        for (at.column = analysis::kDoseColumn; at.column <= analysis::kTestedColumn; ++at.column) {
            grid.setCol(at.column);
            at.work = grid.text();
            *values[at.column - 1] = analysis::readAssayCell(at.work, at.column);
        }
        if (k == INT16_MAX) {
            throw Failure(vocabulary::failure::Overflow);
        }
        ++k;
    }
    table.resize(static_cast<std::size_t>(k - 1));
    return table;
}

} // namespace

void Analyze::analyze() {
    runAnalysis();
}

AnalysisRun Analyze::endWithBox(const MessageBoxRequest& box) {
    m_platform.dialogs.messageBox(box);
    AnalysisRun run;
    run.ending = AnalysisRun::Ending::Box;
    run.box = box;
    return run;
}

std::int32_t Analyze::askMorePasses(std::int32_t passesSoFar) {
    m_platform.pointer.setBusy(false);
    const std::string answer = m_platform.dialogs.inputBox(platform::InputBoxRequest{
        "ADDITIONAL ITERATIONS",
        "After" + std::to_string(passesSoFar) +
            " iterations the data have not yet converged.\r\n\r\nEnter the number of "
            "additional iterations:",
        "20"});
    return vocabulary::roundToInt32(vocabulary::leadingValue(answer));
}

AnalysisRun Analyze::runAnalysis() {
    m_platform.pointer.setBusy(true);
    // Outside the try, so that a failure of the arithmetic still hands on rows that passed
    // their checks.
    analysis::AssayTable table;
    bool rowsChecked = false;
    try {
        // Make an edit in progress reach the grid by moving the focus away and back.
        if (m_focus == Control::Grid) {
            setFocus(Control::AnalysisName);
            m_platform.events.processQueuedEvents();
            setFocus(Control::Grid);
        } else {
            setFocus(Control::Results);
            m_platform.events.processQueuedEvents();
            setFocus(Control::AnalysisName);
        }

        if (m_grid.dataRowCount() < 1) {
            m_platform.pointer.setBusy(false);
            return endWithBox(exclamation("NO DATA TO ANALYZE", "No data to analyze."));
        }

        ReadPosition at;
        try {
            table = readTable(m_grid, at);
        } catch (const Failure& failure) {
            m_platform.pointer.setBusy(false);
            m_results.setText(kEmptyResults);
            AnalysisRun run;
            if (failure.number() == vocabulary::failure::TypeMismatch) {
                run = endWithBox(exclamation("INVALID ENTRY", "Invalid entry: " + at.work));
                putCursorOn(at.column, at.row);
                setFocus(Control::Grid);
            } else {
                run = endWithBox(generalFailureBox(failure));
            }
            formatResults();
            return run;
        }

        if (const auto fault = analysis::checkAssay(table)) {
            m_platform.pointer.setBusy(false);
            AnalysisRun run = endWithBox(exclamation(fault->title, fault->text));
            if (fault->column == 0) {
                run.table = table; // only its totals failed
            }
            if (fault->column != 0) {
                // Land the user in the cell at fault.
                putCursorOn(fault->column, fault->row);
                setFocus(Control::AnalysisName);
                m_platform.events.processQueuedEvents();
                setFocus(Control::Grid);
            }
            return run;
        }

        rowsChecked = true;
        m_results.setText("Analyzing...");
        const analysis::Estimate estimate = analysis::estimateLogProportion(
            table, [this](std::int32_t passes) { return askMorePasses(passes); });
        if (estimate.stopped) {
            m_results.setText(kEmptyResults);
            AnalysisRun run;
            run.ending = AnalysisRun::Ending::NoConvergence;
            run.table = std::move(table);
            return run;
        }

        const analysis::Figures figures =
            analysis::computeFigures(estimate, static_cast<int>(table.size()));
        // The table ends the report: laid out straight behind the rest, and the pane takes
        // the report itself, so that a long table is never held twice.
        std::string report =
            analysis::reportText(figures, m_name.text(), m_session.AnalysisFile, "");
        appendLayoutTable(m_grid, report);

        m_results.adoptText(std::move(report));
        m_session.AnalysisChanged = session::kChanged;
        m_platform.pointer.setBusy(false);
        AnalysisRun run;
        run.ending = AnalysisRun::Ending::Report;
        run.figures = figures;
        run.table = std::move(table);
        if (m_name.text().empty()) {
            m_platform.dialogs.messageBox(MessageBoxRequest{
                "ANALYSIS NAME", "There is no Analysis Name.", Buttons::Ok, Icon::Information, 1});
            run.noNameNote = true;
            setFocus(Control::AnalysisName);
        }
        formatResults();
        return run;
    } catch (const Failure& failure) {
        m_platform.pointer.setBusy(false);
        m_results.setText(kEmptyResults);
        AnalysisRun run = endWithBox(generalFailureBox(failure));
        if (rowsChecked) {
            run.table = std::move(table);
        }
        formatResults();
        return run;
    }
}

} // namespace titron::documents
