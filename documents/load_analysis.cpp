// Reading an analysis file, or a plain text file of rows, into the document. The reader
// recognises only the literal "Analysis Name: " and the last blank line of the file: what
// stands behind that blank line is the table, whatever came before it.
#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

#include "documents/analyze.h"
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

// Whether the text's leading value is 0. Spaces at its ends don't change that value, and
// no number goes on past a CR, so the text up to the first CR decides it without a copy of
// the whole text.
bool startsWithHeadingLine(std::string_view text) {
    return vocabulary::leadingValue(text.substr(0, text.find('\r'))) == 0.0;
}

// The position (from 0) of the n-th occurrence of c, or npos.
std::size_t nthPosition(const std::string& text, char c, int n) {
    std::size_t position = std::string::npos;
    for (int i = 0; i < n; ++i) {
        position = text.find(c, position == std::string::npos ? 0 : position + 1);
        if (position == std::string::npos) {
            break;
        }
    }
    return position;
}

bool standsInFirstLine(std::size_t position, std::size_t firstLineEnd) {
    return position != std::string::npos && firstLineEnd != std::string::npos &&
           position < firstLineEnd;
}

// With commas as separators, a line gets at most columns - 1 Tabs; further commas belong
// to the comment and become blanks.
void commasToTabs(std::string& text, int columns) {
    int counter = 1;
    for (char& c : text) {
        if (c == ',') {
            if (counter < columns) {
                c = '\t';
                ++counter;
            } else {
                c = ' ';
            }
        } else if (c == '\r') {
            counter = 1;
        }
    }
}

// Lines of the table: one more than its line ends behind the first character. Each CR is
// a line end, and so is a LF without a CR before it: the grid's clip writing ends a row at
// either, and a file from a program that ends its lines in LF alone must find as many rows
// as it has lines, or its last rows would be cut off at the row limit.
std::int64_t countLines(const std::string& text) {
    std::int64_t ends = 0;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '\r' || (text[i] == '\n' && text[i - 1] != '\r')) {
            ++ends;
        }
    }
    return ends + 1;
}

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
    int columns = 3;
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
                m_results.setText(std::string_view(text).substr(namePosition));
                m_session.AnalysisChanged = session::kUnchanged;
            } else {
                m_name.setText(m_name.text() + " / " + name);
                m_results.setText(kEmptyResults);
            }
        }
        formatResults();

        // From here on the work is on the text alone.
        vocabulary::replaceText(text, "\t\t", "\t");
        while (text.size() >= 4 && text.compare(text.size() - 4, 4, "\r\n\r\n") == 0) {
            text.resize(text.size() - 2);
        }
        const std::size_t lastBlankLine = text.rfind("\r\n\r\n");
        if (lastBlankLine != std::string::npos) {
            text.erase(0, lastBlankLine + 4);
        }
        if (startRow > 1 && startsWithHeadingLine(text)) {
            // The grid has its headings already; drop the file's.
            const std::size_t firstEnd = text.find("\r\n");
            text.erase(0, firstEnd == std::string::npos ? std::min<std::size_t>(1, text.size())
                                                        : firstEnd + 2);
        }

        const std::size_t firstLineEnd = text.find("\r\n");
        const bool commaMode = standsInFirstLine(nthPosition(text, ',', 2), firstLineEnd);
        const char separator = commaMode ? ',' : '\t';
        if (standsInFirstLine(nthPosition(text, separator, 3), firstLineEnd)) {
            columns = 4;
            if (standsInFirstLine(nthPosition(text, separator, 4), firstLineEnd)) {
                columns = 5;
            }
        }
        if (commaMode) {
            commasToTabs(text, columns);
        } else {
            std::replace(text.begin(), text.end(), ',', ' ');
        }

        const std::int64_t lines = countLines(text);
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

        m_grid.setCol(columns == 5 ? 0 : 1);
        m_grid.setRow(startRow == 1 && startsWithHeadingLine(text) ? 0 : startRow);
        m_grid.setClip(text);

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
