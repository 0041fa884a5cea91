// Very large and odd input: the document ends in a report or one of its boxes, keeps
// every character, and the program goes on. Random files are the fuzz targets' work.

#include <gtest/gtest.h>

#include "vocabulary/number_mask.h"
#include "analyze_fixture.h"
#include "comparison/compare.h"
#include "comparison/compare_rows.h"

namespace titron::documents {
namespace {

using testing::AnalyzeFixture;

class OddInputTest : public AnalyzeFixture {};

TEST_F(OddInputTest, FifteenHundredRowAssayAnalyses) {
    // The table grows and numbers its rows as the cursor goes down it, up to 1,500 rows.
    for (int row = 1; row <= 1500; ++row) {
        analyze.grid().userMoveTo(1, row);
        const int dose = 100 * (1 + row % 50);
        type({{std::to_string(dose), std::to_string(row % 5 == 0 ? 3 : 1), "10", ""}}, row);
    }
    ASSERT_EQ(analyze.grid().rowLimit(), 1500);
    analyze.nameBox().setText("Large");
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    EXPECT_EQ(run.figures->df, 1499);
    EXPECT_NE(pane().find("    Degrees of Freedom:     1499\r\n"), std::string::npos);
    // The report's table runs to the last row.
    EXPECT_NE(pane().find("\r\n1500\t\t100\t\t3\t\t10\t\t\r\n"), std::string::npos);
}

TEST_F(OddInputTest, NegativeZeroDoseAndOverlongNumber) {
    type({{"-0", "1", "10", ""}});
    analyze.analyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.text, "Invalid Dose: 0");

    platform.clearTranscript();
    type({{std::string(10000, '9'), "1", "10", std::string(10000, 'c')}});
    analyze.analyze(); // 10,000 nines are beyond the range of a number
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #6");
}

// A 100,000-character name and comments go whole through the report, a save, the reopened
// document and the comparison's reader. Patterns, not one repeated letter, so that a
// shifted or cut text shows.
TEST_F(OddInputTest, HundredThousandCharacterNameAndCommentsKeepWhole) {
    const auto pattern = [](const std::string& unit) {
        std::string text;
        while (text.size() < 100000) {
            text += unit;
        }
        text.resize(100000);
        return text;
    };
    const std::string name = pattern("Spleen 0123456789 ");
    const std::string firstComment = pattern("plate one. ");
    const std::string secondComment = pattern("plate two; ");
    type({{"1000", "2", "24", firstComment}, {"3000", "6", "24", secondComment}});
    analyze.nameBox().setText(name);
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    const std::string report = pane();
    EXPECT_EQ(report.find("Analysis Name: " + name + "\r\n"), 0u);
    EXPECT_NE(report.find("\t" + firstComment + "\r\n"), std::string::npos);
    EXPECT_NE(report.find("\t" + secondComment + "\r\n"), std::string::npos);

    ASSERT_TRUE(analyze.saveDocument(path("long.tna")));
    testing::FreshDocument other;
    Analyze& reopened = other.analyze;
    ASSERT_EQ(reopened.openDocument(path("long.tna")), LoadOutcome::Loaded);
    EXPECT_TRUE(other.platform.boxes().empty());
    EXPECT_EQ(reopened.nameBox().text(), name);
    EXPECT_EQ(reopened.resultsPane().text(), report + "\r\n");
    EXPECT_EQ(reopened.grid().cell(4, 1), firstComment);
    EXPECT_EQ(reopened.grid().cell(4, 2), secondComment);
    EXPECT_EQ(reopened.grid().cell(3, 2), "24");

    comparison::Compare compare(platform.services(), session);
    compare.beginEmpty();
    ASSERT_EQ(compare.addFile(path("long.tna")), comparison::AddOutcome::Added);
    EXPECT_EQ(compare.grid().cell(comparison::column::Name, 1), name);
    EXPECT_EQ(compare.grid().cell(comparison::column::LogProportion, 1),
              vocabulary::formatMask(run.figures->logProportion, "##0.00000"));
}

} // namespace
} // namespace titron::documents
