#include "documents/loaded_table.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "entry/grid.h"

namespace titron::documents {
namespace {

// A table as files bring them: CR LF, lone CR and lone LF line ends, runs of Tabs, commas
// beyond the separators, empty lines.
std::string randomTable(std::mt19937& random) {
    static constexpr std::string_view kPieces[] = {"1000", "2",   "24",   "\t", "\t\t", "\t\t\t",
                                                   ",",    "x y", "\r\n", "\r", "\n",   "\r\n\r\n"};
    std::uniform_int_distribution<std::size_t> pick(0, std::size(kPieces) - 1);
    std::string table;
    for (int i = 0; i < 120; ++i) {
        table += kPieces[pick(random)];
    }
    return table;
}

std::vector<std::string> cellsOf(const entry::Grid& grid) {
    std::vector<std::string> cells;
    for (int row = 0; row <= grid.rowLimit(); ++row) {
        for (int col = 0; col <= 4; ++col) {
            cells.push_back(grid.cell(col, row));
        }
    }
    return cells;
}

// However the table is cut into slices, down to a line a slice, the grid gets what one
// clip of the whole table gives it: no CR LF split into two rows, no Tab run or comma
// count broken at a cut.
TEST(LoadedTableTest, SlicesWriteWhatTheWholeTableWrites) {
    std::mt19937 random(7);
    for (int trial = 0; trial < 300; ++trial) {
        const std::string table = randomTable(random);
        for (const TableForm form : {TableForm{false, 3}, TableForm{true, 4}, TableForm{true, 5}}) {
            entry::Grid whole(4, 200);
            writeTable(whole, table, form, 1, 1, table.size());
            for (const std::size_t sliceBytes : {0, 1, 2, 3, 5, 8, 13}) {
                entry::Grid sliced(4, 200);
                writeTable(sliced, table, form, 1, 1, sliceBytes);
                ASSERT_EQ(cellsOf(sliced), cellsOf(whole))
                    << "slices of " << sliceBytes << " bytes, comma form " << form.commaSeparated;
            }
        }
    }
}

TEST(LoadedTableTest, TableStandsBehindTheLastBlankLineAndItsFormComesFromTheFirstLine) {
    const std::string text =
        "Analysis Name: A\r\n\r\nRow\t\tDose\t\t\tResponses\tTested\r\n1\t\t2\r\n"
        "\r\n\r\n\r\n";
    const TableSpan span = findTable(text);
    EXPECT_EQ(text.substr(span.start, span.end - span.start),
              "Row\t\tDose\t\t\tResponses\tTested\r\n1\t\t2\r\n");
    // A run of Tabs is one separator: three of them make four columns.
    EXPECT_EQ(readTableForm(text.substr(span.start)).columns, 4);
    EXPECT_FALSE(readTableForm(text.substr(span.start)).commaSeparated);
    const TableForm commas = readTableForm("1,2,3,4,5 and more\r\n");
    EXPECT_TRUE(commas.commaSeparated);
    EXPECT_EQ(commas.columns, 5);
    // Without a CR LF there is no first line to read a form from.
    EXPECT_EQ(readTableForm("1,2,3,4\n").columns, 3);

    // Commas become separators in the grid, and "1,5" then reads as 15, not 1.
    EXPECT_FALSE(startsWithHeadingLine("1,5\r\n", false));
    EXPECT_TRUE(startsWithHeadingLine("0,5\r\n", false));
    EXPECT_FALSE(startsWithHeadingLine("0,5\r\n", true));
    // A line feed doesn't end the line a heading is looked for in: "0\n5" reads as 5.
    EXPECT_FALSE(startsWithHeadingLine("0\n5\r\n", true));
}

} // namespace
} // namespace titron::documents
