#include "documents/loaded_table.h"

#include <algorithm>
#include <string>

#include "entry/grid.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::documents {

namespace {

constexpr std::string_view kBlankLine = "\r\n\r\n";
constexpr std::string_view kLineEnd = "\r\n";
bool isLineEndAt(std::string_view text, std::size_t i) {
    return text[i] == '\r' || (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'));
}

// How many of the separator stand in the first line, counting a run of Tabs once.
int separatorsInFirstLine(std::string_view firstLine, char separator) {
    int count = 0;
    for (std::size_t i = 0; i < firstLine.size(); ++i) {
        if (firstLine[i] == separator &&
            (separator != '\t' || i == 0 || firstLine[i - 1] != '\t')) {
            ++count;
        }
    }
    return count;
}

// The end of the slice that starts at from: whole lines, a CR LF never split.
std::size_t sliceEnd(std::string_view table, std::size_t from, std::size_t sliceBytes) {
    if (table.size() - from <= sliceBytes) {
        return table.size();
    }
    std::size_t end = table.find_first_of("\r\n", from + sliceBytes);
    if (end == std::string_view::npos) {
        return table.size();
    }
    if (table[end] == '\r' && end + 1 < table.size() && table[end + 1] == '\n') {
        ++end;
    }
    return end + 1;
}

// The rows a slice of whole lines fills: one for each line end.
int rowsOf(std::string_view slice) {
    int rows = 0;
    for (std::size_t i = 0; i < slice.size(); ++i) {
        rows += isLineEndAt(slice, i) ? 1 : 0;
    }
    return rows;
}

// With commas as separators, a line gets at most columns - 1 Tabs; further commas belong
// to the comment and become blanks. Only a CR starts the count again, so it carries from
// one slice to the next.
void commasToTabs(std::string& text, int columns, int& counter) {
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

} // namespace

TableSpan findTable(std::string_view text) {
    std::size_t end = text.size();
    while (end >= kBlankLine.size() &&
           text.substr(end - kBlankLine.size(), kBlankLine.size()) == kBlankLine) {
        end -= kLineEnd.size();
    }
    const std::size_t lastBlankLine = text.substr(0, end).rfind(kBlankLine);
    return {lastBlankLine == std::string_view::npos ? 0 : lastBlankLine + kBlankLine.size(), end};
}

TableForm readTableForm(std::string_view table) {
    const std::size_t firstLineEnd = table.find(kLineEnd);
    if (firstLineEnd == std::string_view::npos) {
        return {};
    }
    const std::string_view firstLine = table.substr(0, firstLineEnd);
    TableForm form;
    form.commaSeparated = separatorsInFirstLine(firstLine, ',') >= 2;
    const int separators = separatorsInFirstLine(firstLine, form.commaSeparated ? ',' : '\t');
    form.columns = separators >= 4 ? 5 : separators >= 3 ? 4 : 3;
    return form;
}

bool startsWithHeadingLine(std::string_view table, bool commasAsSeparators) {
    const std::string_view firstLine = table.substr(0, table.find('\r'));
    // Commas become Tabs or blanks in the grid, and the leading value passes over both.
    return (commasAsSeparators ? vocabulary::leadingValueWithCommasAsBlanks(firstLine)
                               : vocabulary::leadingValue(firstLine)) == 0.0;
}

std::int64_t countTableLines(std::string_view table) {
    std::int64_t ends = 0;
    for (std::size_t i = 1; i < table.size(); ++i) {
        if (isLineEndAt(table, i)) {
            ++ends;
        }
    }
    return ends + 1;
}

void writeTable(entry::Grid& grid, std::string_view table, TableForm form, int col, int row,
                std::size_t sliceBytes) {
    grid.setCol(col);
    grid.setRow(row);
    int commaCounter = 1;
    std::string slice;
    for (std::size_t from = 0; from < table.size() && row <= grid.rowLimit();) {
        const std::size_t end = sliceEnd(table, from, sliceBytes);
        slice.assign(table.substr(from, end - from));
        vocabulary::replaceText(slice, "\t\t", "\t");
        if (form.commaSeparated) {
            commasToTabs(slice, form.columns, commaCounter);
        } else {
            std::replace(slice.begin(), slice.end(), ',', ' ');
        }
        grid.setRow(row);
        grid.setClip(slice);
        row += rowsOf(slice);
        from = end;
    }
}

} // namespace titron::documents
