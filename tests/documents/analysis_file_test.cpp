#include <gtest/gtest.h>

#include "analyze_fixture.h"

namespace titron::documents {
namespace {

using testing::AnalyzeFixture;

class AnalysisFileTest : public AnalyzeFixture {};

TEST_F(AnalysisFileTest, TableFormHasFileLineNameLineTableAndAFinalLineEnd) {
    type({{"1000", "5", "24", ""}, {"100000000", "23", "24", "second plate"}});
    analyze.nameBox().setText("Spleen A");
    session.AnalysisFile = "C:\\Data\\Spleen.tna";
    ASSERT_TRUE(analyze.saveDocument(path("out.tna")));
    EXPECT_EQ(readFile("out.tna"), "Titron Analysis File: [c:\\data\\spleen.tna]\r\n\r\n"
                                   "Analysis Name: Spleen A\r\n\r\n"
                                   "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                                   "1\t\t1000\t\t5\t\t24\t\t\r\n"
                                   "2\t\t100000000\t23\t\t24\t\tsecond plate\r\n"
                                   "\r\n");
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_EQ(session.AnalysisFile, path("out.tna"));
    EXPECT_EQ(session.frameCaption.text(), "Titron - [" + vocabulary::lowerCase(path("out.tna")) + "]");
}

TEST_F(AnalysisFileTest, TableFormWithoutFileOrNameIsJustTheTable) {
    type({{"10", "1", "5", ""}});
    EXPECT_EQ(analyze.composeFileText(), "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n"
                                         "1\t\t10\t\t1\t\t5\t\t\r\n");
    analyze.grid().clearSelection();
    type({{"", "", "", ""}});
    EXPECT_EQ(analyze.composeFileText(), "");
}

TEST_F(AnalysisFileTest, ReportFormIsThePaneTextAndEachSaveOfALoadedTextAddsOneLineEnd) {
    typeFourRowExample();
    analyze.analyze(); // without a name: the report starts "Analysis Name: " and a line end
    ASSERT_TRUE(analyze.saveDocument(path("a.tna")));
    const std::string first = readFile("a.tna");
    EXPECT_EQ(first, pane() + "\r\n");
    EXPECT_EQ(first.rfind("Analysis Name: \r\nIterations:", 0), 0u);

    ASSERT_EQ(analyze.openDocument(path("a.tna")), LoadOutcome::Loaded);
    ASSERT_TRUE(analyze.saveDocument(path("b.tna")));
    EXPECT_EQ(readFile("b.tna"), first + "\r\n");
}

TEST_F(AnalysisFileTest, TableRoundTripKeepsCellsButAnEmptyMiddleCellClosesUp) {
    type({{"10", "1", "5", "a, b"}, {"20", "", "5", "gap"}});
    ASSERT_TRUE(analyze.saveDocument(path("r.tna")));
    platform.queueAnswer(platform::Answer::No);
    ASSERT_EQ(analyze.openDocument(path("r.tna")), LoadOutcome::Loaded);
    EXPECT_EQ(cell(4, 1), "a  b"); // the comma comes back as a blank
    EXPECT_EQ(cell(2, 2), "5");    // the cells right of the empty one moved left
    EXPECT_EQ(cell(3, 2), "gap");
}

TEST_F(AnalysisFileTest, FailedWriteLeavesWhatWasThereAndTheWindowGoesOn) {
    type({{"10", "1", "5", ""}});
    // A directory in the file's place: the new text cannot replace it.
    std::filesystem::create_directory(path("taken.tna"));
    writeFile("taken.tna/inside.txt", "old contents");
    EXPECT_FALSE(analyze.saveDocument(path("taken.tna")));
    EXPECT_EQ(readFile("taken.tna/inside.txt"), "old contents");
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory)) {
        ++entries;
    }
    EXPECT_EQ(entries, 1) << "the half-written file must not stay behind";
    // The window goes on as if the write had worked.
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_EQ(session.AnalysisFile, path("taken.tna"));
}

TEST_F(AnalysisFileTest, SaveReplacesAnExistingFileWhole) {
    writeFile("x.tna", std::string(5000, 'z'));
    type({{"10", "1", "5", ""}});
    const std::string text = analyze.composeFileText();
    ASSERT_TRUE(analyze.saveDocument(path("x.tna")));
    EXPECT_EQ(readFile("x.tna"), text + "\r\n");
}

} // namespace
} // namespace titron::documents
