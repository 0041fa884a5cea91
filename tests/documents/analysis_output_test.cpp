// Copy and Print: which text they take (the report or the grid), the page's head, fonts and
// origin as printer operations, and that neither touches the document.
#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

class AnalysisOutputTest : public AnalyzeFixture {
  protected:
    // The printer operations of the transcript, without their "printer " prefix.
    std::vector<std::string> printed() const {
        std::vector<std::string> found;
        for (const std::string& line : platform.transcript()) {
            if (line.rfind("printer ", 0) == 0 && line.rfind("printer dialog", 0) != 0) {
                found.push_back(line.substr(8));
            }
        }
        return found;
    }
    std::string documentState() const {
        return pane() + "|" + analyze.nameBox().text() + "|" + session.AnalysisFile + "|" +
               std::to_string(session.AnalysisChanged) + "|" + analyze.grid().clip();
    }
};

TEST_F(AnalysisOutputTest, WithoutReportOrRowsEachCommandShowsItsBox) {
    analyze.copyFile();
    analyze.printFile();
    ASSERT_EQ(boxes().size(), 2U);
    EXPECT_EQ(boxes()[0].request.title, "NO ANALYSIS TO COPY");
    EXPECT_EQ(boxes()[0].request.text, "No Titron analysis to copy.");
    EXPECT_EQ(boxes()[1].request.title, "NO ANALYSIS TO PRINT");
    EXPECT_EQ(boxes()[1].request.text, "No Titron analysis to print.");
    EXPECT_EQ(boxes()[1].request.icon, platform::Icon::Exclamation);
    EXPECT_FALSE(platform.hasText());
    EXPECT_TRUE(printed().empty());
}

TEST_F(AnalysisOutputTest, CopyGivesTheGridBlockOrTheReportWithSingleTabs) {
    platform.setText("what was there");
    type({{"1000", "5", "24", ""}, {"100000000", "23", "24", "second plate"}});
    analyze.copyFile();
    EXPECT_EQ(platform.text(), "Row\tDose\tResponses\tTested\tComments\r\n"
                               "1\t1000\t5\t24\t\r\n"
                               "2\t100000000\t23\t24\tsecond plate\r\n");

    typeFourRowExample();
    analyze.analyze();
    const std::string before = documentState();
    analyze.copyFile();
    std::string expected = pane();
    vocabulary::replaceText(expected, "\t\t", "\t");
    EXPECT_EQ(platform.text(), expected);
    EXPECT_EQ(platform.text().find("\t\t"), std::string::npos);
    EXPECT_NE(pane().find("\t\t"), std::string::npos); // the pane keeps its doubled Tabs
    EXPECT_EQ(documentState(), before);
    const auto& log = platform.transcript();
    EXPECT_EQ(log[log.size() - 5], "pointer busy");
    EXPECT_EQ(log[log.size() - 4], "clipboard clear");
    EXPECT_EQ(log[log.size() - 2], "wait 500");
    EXPECT_EQ(log.back(), "pointer normal");
}

TEST_F(AnalysisOutputTest, PrintedPageHasTheHeadThenTheReportWithItsDoubledTabs) {
    typeFourRowExample();
    analyze.nameBox().setText("Spleen A");
    analyze.analyze();
    const std::string before = documentState();
    platform.queuePrinterChoice(true);
    analyze.printFile();
    const std::vector<std::string> expected{
        "left origin -700", "portrait",        "font Arial",
        "size 16",          "emphasis on",     "print \r\nTitron",
        "size 10",          "emphasis off",    "print November 23, 2026\r\n\r\n\r\n",
        "font Courier New", "print " + pane(), "end document",
    };
    EXPECT_EQ(printed(), expected);
    EXPECT_NE(pane().find("\t\t"), std::string::npos);
    EXPECT_EQ(documentState(), before);
    EXPECT_FALSE(platform.pointerBusy());
}

TEST_F(AnalysisOutputTest, WithoutReportThePageShowsFileLineBareNameAndTable) {
    type({{"1000", "5", "24", ""}});
    platform.queuePrinterChoice(true);
    analyze.printFile();
    EXPECT_EQ(printed().at(10), "print Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                                "1\t\t1000\t\t5\t\t24\t\t\r\n");

    session.AnalysisFile = "/data/Spleen.tna";
    analyze.nameBox().setText("Spleen A");
    platform.clearTranscript();
    platform.queuePrinterChoice(true);
    analyze.printFile();
    EXPECT_EQ(printed().at(10).rfind(
                  "print Titron Analysis File: [/data/spleen.tna]\r\n\r\nSpleen A\r\n\r\nRow", 0),
              0U);
}

TEST_F(AnalysisOutputTest, ShortLoadedTextCountsAsNoReportAndLongOneAsAReport) {
    platform.queueFileChoice(writeFile("short.tna", "Analysis Name: S\r\n\r\n1\t2\t3\r\n"));
    analyze.openFile();
    ASSERT_LT(pane().size(), kReportMinimumLength);
    analyze.copyFile();
    EXPECT_EQ(platform.text(), "Row\tDose\tResponses\tTested\tComments\r\n1\t1\t2\t3\t\r\n");

    const std::string longer = "Analysis Name: Long enough to count\r\n\r\nRow\t\tDose\t\t"
                               "Responses\tTested\t\tComments\r\n1\t\t1\t\t2\t\t3\t\t\r\n";
    platform.queueFileChoice(writeFile("long.tna", longer));
    platform.queueAnswer(platform::Answer::No); // not appended
    analyze.openFile();
    platform.queuePrinterChoice(true);
    analyze.printFile();
    EXPECT_EQ(printed().at(10), "print " + longer); // labelled name, from the pane
}

TEST_F(AnalysisOutputTest, CancelledPrintDialogPrintsNothing) {
    type({{"1000", "5", "24", ""}});
    analyze.printFile();
    EXPECT_TRUE(printed().empty());
    EXPECT_EQ(platform.transcript().back(), "pointer normal");
}

} // namespace
} // namespace titron::documents::testing
