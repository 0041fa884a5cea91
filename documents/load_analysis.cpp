// Reading an analysis file, or a plain text file of rows, into the document. The reader
// recognises only the literal "Analysis Name: " and the last blank line of the file: what
// stands behind that blank line is the table, whatever came before it.
#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

#include "documents/analyze.h"
#include "documents/loaded_table.h"
#include "entry/grid.h"
#include "entry/row_numbers.h"
#include "vocabulary/failure.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::documents {

using vocabulary::Failure;

namespace {

constexpr std::string_view kNameLabel = "Analysis Name: ";
constexpr int kRowLimitStep = 100;
// Rows kept free below the loaded rows, so that the user can go on typing.
constexpr int kRowsToSpare = 10;

} // namespace

LoadOutcome Analyze::openDocument(const std::string& path) {
    const std::string previousFile = m_session.AnalysisFile;
    m_session.AnalysisFile = path;
    m_session.LastDirectory = m_platform.files.currentDirectory();
    const LoadOutcome outcome = loadAnalysis();
    if (outcome == LoadOutcome::Cancelled) {
        m_session.AnalysisFile = previousFile;
    }
    return outcome;
}

LoadOutcome Analyze::loadAnalysis() {
    const auto failed = [this](const Failure& failure) {
        m_platform.pointer.setBusy(false);
        m_platform.dialogs.messageBox({"Titron ERROR #" + failure.description(),
                                       "An error occurred loading the data.", platform::Buttons::Ok,
                                       platform::Icon::Exclamation, 1});
    };
    int startRow = 1;
    try {
        const int dataRows = m_grid.dataRowCount();
        if (dataRows > 0) {
            const platform::Answer answer = m_platform.dialogs.messageBox(
                {"APPEND DATA?", "Append this data to the existing data?",
                 platform::Buttons::YesNoCancel, platform::Icon::Question, 2});
            if (answer == platform::Answer::Cancel) {
                return LoadOutcome::Cancelled;
            }
            if (answer == platform::Answer::Yes) {
                m_platform.pointer.setBusy(true);
                startRow = dataRows + 1;
                m_session.frameCaption.setText(session::kProgramTitle);
                m_session.AnalysisChanged = session::kChanged;
            } else {
                m_session.AnalysisChanged = session::kUnchanged;
                m_platform.pointer.setBusy(true);
                m_grid.addressBlock(1, 1, kDataColumns, m_grid.rowLimit());
                m_grid.setBlockMode(true);
                m_grid.clear();
                m_grid.setBlockMode(false);
                m_name.setText("");
                m_session.frameCaption.setText(session::captionWithFile(m_session.AnalysisFile));
            }
        } else {
            m_session.AnalysisChanged = session::kUnchanged;
            m_session.frameCaption.setText(session::captionWithFile(m_session.AnalysisFile));
        }

        m_platform.pointer.setBusy(true);
        std::string text = m_platform.files.readAll(m_session.AnalysisFile);
        TableSpan span = findTable(text);
        // Where the table is read from: the text, or the pane when the pane has taken it.
        std::string_view source = text;

        const std::size_t namePosition = text.find(kNameLabel);
        if (namePosition == std::string::npos) {
            m_results.setText(kEmptyResults);
        } else {
            const std::size_t nameStart = namePosition + kNameLabel.size();
            const std::size_t lineEnd = text.find('\r', namePosition);
            if (lineEnd == std::string::npos) {
                throw Failure(vocabulary::failure::InvalidCall);
            }
            const std::string name = vocabulary::trimSpaces(
                std::string_view(text).substr(nameStart, lineEnd - nameStart));
            // Writing the name runs its rule, which resets the pane and marks the document
            // changed; the pane and the flag are set after it.
            if (startRow == 1) {
                m_name.setText(name);
                if (span.start >= namePosition) {
                    // The pane shows the file from the name on, the table included: it takes
                    // the text itself, and the table is read from it, so that the file's
                    // text is held once. Nothing writes the pane while the table loads.
                    text.erase(0, namePosition);
                    span = {span.start - namePosition, span.end - namePosition};
                    m_results.adoptText(std::move(text));
                    source = m_results.text();
                } else {
                    m_results.setText(std::string_view(text).substr(namePosition));
                }
                m_session.AnalysisChanged = session::kUnchanged;
            } else {
                m_name.setText(m_name.text() + " / " + name);
                m_results.setText(kEmptyResults);
            }
        }
        formatResults();

        std::string_view table = source.substr(span.start, span.end - span.start);
        if (startRow > 1 && startsWithHeadingLine(table, false)) {
            // The grid has its headings already; drop the file's.
            const std::size_t firstEnd = table.find("\r\n");
            table.remove_prefix(firstEnd == std::string_view::npos
                                    ? std::min<std::size_t>(1, table.size())
                                    : firstEnd + 2);
        }
        const TableForm form = readTableForm(table);
        const int columns = form.columns;

        const std::int64_t lines = countTableLines(table);
        std::int64_t rowLimit = m_grid.rowLimit();
        if (lines + startRow + kRowsToSpare > rowLimit) {
            while (lines + startRow + kRowsToSpare > rowLimit) {
                rowLimit += kRowLimitStep;
            }
            // The rows could not be numbered beyond the 16-bit row counter. Failing before
            // the grid grows keeps it as it was; a grid left above the counter would make
            // every later renumbering (a five-column file, a row command) fail too.
            if (rowLimit > entry::kMaxNumberedRows) {
                throw Failure(vocabulary::failure::Overflow);
            }
            m_grid.setRowLimit(static_cast<int>(rowLimit));
            m_grid.addressBlock(1, 1, kDataColumns, m_grid.rowLimit());
            m_grid.setBlockMode(true);
            m_grid.setTextColour(kDataTextColour);
            m_grid.setBlockMode(false);
            if (columns < 5) {
                numberRows();
            }
        }

        writeTable(m_grid, table, form, columns == 5 ? 0 : 1,
                   startRow == 1 && startsWithHeadingLine(table, true) ? 0 : startRow);

        if (columns == 5) {
            numberRows();
        } else if (startRow == 1) {
            m_grid.addressCell(0, 0);
            m_grid.setText(m_session.settings.ColHeading[0]);
        }

        const int m = m_grid.dataRowCount();
        if (startRow < 8) {
            m_grid.setFirstVisibleRow(1);
        } else if (m - startRow < 8) {
            m_grid.setFirstVisibleRow(m - 7);
        } else {
            m_grid.setFirstVisibleRow(startRow);
        }
        m_platform.pointer.setBusy(false);
        return LoadOutcome::Loaded;
    } catch (const Failure& failure) {
        failed(failure);
    } catch (const std::bad_alloc&) {
        // Memory that ran out anywhere in the load is a failure like any other.
        failed(Failure(vocabulary::failure::OutOfMemory));
    }
    return LoadOutcome::Failed;
}

} // namespace titron::documents
