// The comparison row against the others, and the report's lines, from the worked row: a
// comparison row of -2.99573 / 0.1000 against -2.30259 / 0.2500.
#include <gtest/gtest.h>

#include "comparison/compare_rows.h"
#include "comparison/comparison_report.h"
#include "entry/grid.h"

namespace titron::comparison {
namespace {

struct Figures {
    const char* file;
    const char* name;
    const char* logProportion;
    const char* standardError;
};

class CompareStatisticsTest : public ::testing::Test {
  protected:
    void fill(std::initializer_list<Figures> rows, int comparisonRow = 1) {
        int row = 1;
        for (const Figures& f : rows) {
            grid.setCell(column::File, row, f.file);
            grid.setCell(column::Name, row, f.name);
            grid.setCell(column::LogProportion, row, f.logProportion);
            grid.setCell(column::StandardError, row, f.standardError);
            ++row;
        }
        grid.addressCell(1, comparisonRow);
        grid.activate();
        compareRows(grid, comparisonRow);
    }
    std::string tests(int row) const {
        std::string cells;
        for (int col = column::Difference; col <= column::TwoTailed; ++col) {
            cells += grid.cell(col, row);
            cells += '|';
        }
        return cells;
    }

    entry::Grid grid{kCompareColumns, 100};
};

TEST_F(CompareStatisticsTest, WorkedRowAndItsExchange) {
    fill({{"c:\\data\\b.tna", "Base", "-2.99573", "0.1000"},
          {"c:\\data\\a.tna", "Spleen", "-2.30259", "0.2500"}});
    EXPECT_EQ(tests(1), "|||||");
    EXPECT_EQ(tests(2), "-0.69314|0.50000|0.29497 to 0.84756|0.0051|0.0101|");
    EXPECT_TRUE(grid.redraw());
    // Exchanged: the sign of the difference turns, ratio and limits invert, p-values stay.
    compareRows(grid, 2);
    // From the grid's rounded figures: e^0.69314 is 1.99999, not 2.
    EXPECT_EQ(tests(1), "0.69314|1.99999|1.17986 to 3.39019|0.0051|0.0101|");
    EXPECT_EQ(tests(2), "|||||");
}

TEST_F(CompareStatisticsTest, RowsThatDontQualifyStayEmpty) {
    fill({{"a", "", "-2.00000", "0.1000"},
          {"b", "", "0.00000", "0.1000"},    // log proportion 0
          {"c", "", "-3.00000", "0.0000"},   // one standard error 0: E is the other
          {"d", "", "-2.00000", "0.1000"}}); // the same file twice
    EXPECT_EQ(tests(2), "|||||");
    EXPECT_EQ(tests(3), "1.00000|2.71828|2.23446 to 3.30686|0.0001|0.0001|");
    EXPECT_EQ(tests(4), "0.00000|1.00000|0.75791 to 1.31941|0.5000|1.0000|");
    grid.setCell(column::StandardError, 1, "0.0000");
    compareRows(grid, 1);
    EXPECT_EQ(tests(3), "|||||"); // both standard errors 0
    grid.setCell(column::LogProportion, 1, "0.00000");
    compareRows(grid, 1);
    for (int row = 1; row <= 4; ++row) {
        EXPECT_EQ(tests(row), "|||||") << row;
    }
}

// At Z = 5 the approximation gives about 5.7e-7, above 5 the p-value is 0: both show as
// 0.0001 once the 0.00005 is added, so there is no step at 5.
TEST_F(CompareStatisticsTest, PValuesAtAndAboveFiveAndHugeRatios) {
    fill({{"a", "", "-1.00000", "0.1000"},
          {"b", "", "-1.50000", "0.0000"},    // Z exactly 5
          {"c", "", "-1.50001", "0.0000"},    // just above
          {"d", "", "-13.00000", "0.1000"}}); // ratio e^12
    EXPECT_EQ(tests(2).substr(tests(2).size() - 14), "0.0001|0.0001|");
    EXPECT_EQ(tests(3).substr(tests(3).size() - 14), "0.0001|0.0001|");
    EXPECT_EQ(grid.cell(column::Ratio, 4), "162754.79142");
}

TEST_F(CompareStatisticsTest, ReportLinesKeepTheirColumnsAndPushRightWhenTooWide) {
    fill({{"c:\\data\\b.tna", "Base", "-2.99573", "0.1000"},
          {"c:\\data\\a.tna", "Spleen", "-2.30259", "0.2500"},
          {"c:\\users\\lab\\assays\\2026\\en control.tna", "Spleen, day 14 control", "-13.00000",
           "0.1000"}});
    const std::string report = buildReport(grid);
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < report.size();) {
        const std::size_t end = report.find("\r\n", start);
        ASSERT_NE(end, std::string::npos);
        lines.push_back(report.substr(start, end - start));
        start = end + 2;
    }
    ASSERT_EQ(lines.size(), 7U + 2 * 2);
    EXPECT_EQ(lines[0].size(), 118U);
    for (int i : {1, 2, 3, 6, 8, 10}) {
        EXPECT_EQ(lines[static_cast<std::size_t>(i)].size(), 120U) << i;
    }
    EXPECT_EQ(lines[4], "Comparison Row:");
    EXPECT_EQ(lines[5], "c:\\data\\b.tna    Base             -2.99573   0.10000");
    EXPECT_EQ(lines[6], std::string(120, '='));
    EXPECT_EQ(lines[7], "c:\\data\\a.tna    Spleen           -2.30259   0.25000    -0.69314   "
                        "0.50000    0.29497 to 0.84756      0.0051    0.0101");
    EXPECT_EQ(lines[8], std::string(120, '-'));
    // A text as wide as its field stands whole with no blank: the rest moves right.
    EXPECT_EQ(lines[9].substr(0, 34), "~en control.tna  Spleen, day~rol  ");
    EXPECT_EQ(lines[9].substr(34), "-13.00000  0.10000    10.00427   22120.7198916765.59488 to "
                                   "29186.333800.0001    0.0001");
}

TEST_F(CompareStatisticsTest, FieldsCutAtSixteenCharactersAndAnEmptyGridHasItsHead) {
    EXPECT_EQ(fileField("c:\\d\\fifteen.ab"), "c:\\d\\fifteen.ab");
    EXPECT_EQ(fileField("c:\\d\\sixteen.abc"), "~\\d\\sixteen.abc");
    EXPECT_EQ(nameField("Fifteen letters"), "Fifteen letters");
    EXPECT_EQ(nameField("Sixteen letters!"), "Sixteen let~rs!");
    const std::string empty = buildReport(grid);
    const std::string tail =
        "Comparison Row:\r\n" + std::string(45, ' ') + "\r\n" + std::string(120, '=') + "\r\n";
    ASSERT_GT(empty.size(), tail.size());
    EXPECT_EQ(empty.substr(empty.size() - tail.size()), tail);
    EXPECT_EQ(empty.size(), 118 + 3 * 120 + 4 * 2 + tail.size());
}

} // namespace
} // namespace titron::comparison
