// Whatever a file or a cell holds, the document ends in one of its boxes or a report and
// the program goes on.
#include <random>

#include <gtest/gtest.h>

#include "analyze_fixture.h"

namespace titron::documents {
namespace {

using testing::AnalyzeFixture;

class OddInputTest : public AnalyzeFixture {};

TEST_F(OddInputTest, RandomFilesLoadAndAnalyseWithoutEscapingFailures) {
    std::mt19937 random(20261123);
    // Bytes that matter to the reader and the checks, and a few others.
    const std::string alphabet = "\t\r\n,. 0123456789-+Ee&H\"Analysis Name: xyz\xff";
    for (int round = 0; round < 400; ++round) {
        std::string bytes;
        const int length = static_cast<int>(random() % 300);
        for (int i = 0; i < length; ++i) {
            bytes += alphabet[random() % alphabet.size()];
        }
        if (round % 3 == 0) {
            bytes = "Analysis Name: fuzz\r\n\r\n" + bytes;
        }
        platform.queueAnswer(round % 2 ? platform::Answer::Yes : platform::Answer::No);
        platform.queueInput(std::to_string(random() % 3)); // in case the estimate lingers
        SCOPED_TRACE(bytes);
        ASSERT_NO_THROW({
            analyze.openDocument(writeFile("fuzz.txt", bytes));
            analyze.subAnalyze();
        });
        EXPECT_FALSE(platform.pointerBusy());
        // Keep the grid small so that appends don't pile up.
        if (analyze.grdData().rowLimit() > 400) {
            platform.queueAnswer(platform::Answer::No);
            analyze.openDocument(writeFile("reset.txt", ""));
        }
    }
}

TEST_F(OddInputTest, AHundredThousandRowFileEndsInTheLoadingFailureBox) {
    std::string text;
    text.reserve(100000 * 12);
    for (int i = 0; i < 100000; ++i) {
        text += "1000\t2\t24\r\n";
    }
    EXPECT_EQ(analyze.openDocument(writeFile("rows.txt", text)), LoadOutcome::Failed);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #Overflow");
}

TEST_F(OddInputTest, FifteenHundredRowAssayAnalyses) {
    for (int row = 1; row <= 1500; ++row) {
        if (row > analyze.grdData().rowLimit()) {
            analyze.grdData().setRowLimit(analyze.grdData().rowLimit() + 100);
        }
        const int dose = 100 * (1 + row % 50);
        type({{std::to_string(dose), std::to_string(row % 5 == 0 ? 3 : 1), "10", ""}}, row);
    }
    analyze.txtAnalysisName().setText("Large");
    const AnalysisRun run = analyze.runAnalysis();
    ASSERT_EQ(run.ending, AnalysisRun::Ending::Report);
    EXPECT_EQ(run.figures->df, 1499);
    EXPECT_NE(pane().find("    Degrees of Freedom:     1499\r\n"), std::string::npos);
}

TEST_F(OddInputTest, NegativeZeroDoseAndLongCells) {
    type({{"-0", "1", "10", ""}});
    analyze.subAnalyze();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.text, "Invalid Dose: 0");

    platform.clearTranscript();
    type({{std::string(10000, '9'), "1", "10", std::string(10000, 'c')}});
    analyze.subAnalyze(); // 10,000 nines are beyond the range of a number
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].request.title, "Titron ERROR #6");

    platform.clearTranscript();
    type({{"1000", "2", "24", std::string(10000, 'c')}, {"3000", "6", "24", ""}});
    analyze.txtAnalysisName().setText(std::string(10000, 'n'));
    EXPECT_EQ(analyze.runAnalysis().ending, AnalysisRun::Ending::Report);
    EXPECT_NE(pane().find(std::string(10000, 'c') + "\r\n"), std::string::npos);
}

} // namespace
} // namespace titron::documents
