// The frame: where each click goes, and what it asks first.
#include "shell/main_frame.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"
#include "tests/shell/recording_windows.h"

namespace titron::shell::testing {
namespace {

class MainFrameTest : public documents::testing::AnalyzeFixture {
  protected:
    MainFrameTest()
        : compare(platform.services(), session), windows(log),
          main(platform.services(), windows, session, analyze, compare, dir()) {
        session.HelpFile = "TITRO.HLP";
    }
    std::string dir() const { return directory.string(); }

    comparison::Compare compare;
    std::vector<std::string> log;
    RecordingWindows windows;
    Main main;
};

TEST_F(MainFrameTest, DisabledAndHiddenCommandsDoNothingAndThePopupsFillReachesTheBlock) {
    type({{"5", "", "", ""}, {"6", "", "", ""}});
    analyze.grid().userMoveTo(1, 1);
    main.menuClick(session::MenuItem::EditDelete); // off until the grid has the focus
    main.toolbarClick("Insert");
    EXPECT_EQ(cell(1, 1), "5");
    for (session::MenuItem item :
         {session::MenuItem::AnalyzeChart, session::MenuItem::FileSeparator1,
          session::MenuItem::DropEdit}) {
        main.menuClick(item);
    }
    main.toolbarClick("Chart");
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(pane(), documents::kEmptyResults);

    analyze.setFocus(documents::Control::Grid);
    session.settings.ConfirmDelete = false;
    main.toolbarClick("Delete");
    EXPECT_EQ(cell(1, 1), "6");

    // The pop-up's Fill reaches the block once a right click has switched it on.
    analyze.grid().userSelect({1, 1, 1, 3});
    analyze.grid().userRightClick(1, 1, 1, 0, 0);
    main.menuClick(session::MenuItem::DropFill);
    EXPECT_EQ(cell(1, 3), "6");
}

TEST_F(MainFrameTest, HelpOpensTheFileBesideTheProgramOrTheManualOrSaysWhereItLooked) {
    const std::string parent = directory.parent_path().string();
    main.toolbarClick("Help");
    expectBox("HELP CONTENTS",
              "The help file TITRO.HLP was not found. It was looked for in\r\n" + dir() +
                  "\r\nThe manual was not found either. It was looked for as\r\n" + parent +
                  "/share/doc/titron/manual/index.html\r\n" + parent + "/docs/manual/index.html");
    EXPECT_TRUE(log.empty());

    // A program installed in bin/ opens the manual installed beside it.
    const std::filesystem::path manual = directory / "share/doc/titron/manual/index.html";
    std::filesystem::create_directories(manual.parent_path());
    std::ofstream(manual) << "<html></html>";
    Main installed(platform.services(), windows, session, analyze, compare, dir() + "/bin");
    installed.menuClick(session::MenuItem::HelpContents);
    EXPECT_EQ(log, (std::vector<std::string>{"open " + manual.string()}));
    log.clear();

    std::ofstream(directory / "TITRO.HLP") << "help";
    main.menuClick(session::MenuItem::HelpContents);
    EXPECT_EQ(log, (std::vector<std::string>{"open " + dir() + "/TITRO.HLP"}));
    EXPECT_EQ(boxes().size(), 1u);

    windows.desktopOpens = false;
    main.menuClick(session::MenuItem::HelpContents);
    ASSERT_EQ(boxes().size(), 2u);
    EXPECT_NE(boxes()[1].request.text.find(dir() + "/TITRO.HLP"), std::string::npos);
}

TEST_F(MainFrameTest, CommandsReachTheDocumentAndPrintSetupTheFramesDialog) {
    typeFourRowExample();
    main.menuClick(session::MenuItem::AnalyzeAnalyze);
    const std::string report = pane();
    ASSERT_NE(report.find("1 in 11,503"), std::string::npos);
    analyze.resultsPane().setText(documents::kEmptyResults);
    main.toolbarClick("Analyze");
    EXPECT_EQ(pane(), report);
    platform.queueFileChoice(path("menu.tna"));
    main.menuClick(session::MenuItem::FileSave);
    EXPECT_TRUE(std::filesystem::exists(path("menu.tna")));
    main.toolbarClick("Copy");
    EXPECT_NE(platform.text().find("30000\t22"), std::string::npos);
    main.menuClick(session::MenuItem::FilePrintSetup);
    EXPECT_EQ(platform.transcript().back(), "printer dialog flags 64 -> cancelled");
    main.toolbarClick("New");
    EXPECT_EQ(cell(1, 1), "");
    platform.queueFileChoice(path("menu.tna"));
    main.toolbarClick("Open");
    EXPECT_EQ(cell(1, 4), "30000");
}

TEST_F(MainFrameTest, FileGivenAtStartOpensAsOpenWouldAndAMissingOneGetsTheLoadingBox) {
    writeFile("given.tna", "Analysis Name: Given\r\n\r\n1000\t2\t24\r\n");
    std::filesystem::current_path(directory);
    main.openGivenFile("./sub/../given.tna");
    EXPECT_EQ(analyze.nameBox().text(), "Given");
    EXPECT_EQ(session.AnalysisFile, path("given.tna"));
    EXPECT_EQ(analyze.commonDialog().fileName, path("given.tna"));
    EXPECT_TRUE(boxes().empty());

    main.openGivenFile(path("missing.tna"));
    ASSERT_EQ(boxes().size(), 2U); // the append question, then the loading failure
    EXPECT_EQ(boxes()[1].request.text, "An error occurred loading the data.");
}

TEST_F(MainFrameTest, ExitAndCompareAskWhileChangedAndEachAnswerDecides) {
    EXPECT_TRUE(main.queryClose()); // a new document: nothing to ask
    analyze.nameBox().setText("Only named");
    EXPECT_TRUE(main.queryClose()); // naming an empty document changes nothing
    EXPECT_TRUE(boxes().empty());

    typeFourRowExample();
    analyze.analyze();
    platform.clearTranscript();
    platform.queueAnswer(platform::Answer::Cancel);
    EXPECT_FALSE(main.queryClose());
    EXPECT_EQ(boxes().at(0).request.text, "Save the Titron analysis file?");
    platform.queueAnswer(platform::Answer::No);
    EXPECT_TRUE(main.queryClose());
    // Yes with a cancelled save dialog keeps the program open; a save lets it end.
    platform.queueAnswer(platform::Answer::Yes);
    EXPECT_FALSE(main.queryClose());
    // So does a save that fails, after its box.
    platform.queueAnswer(platform::Answer::Yes);
    platform.queueFileChoice(path("no/such/at exit.tna"));
    EXPECT_FALSE(main.queryClose());
    EXPECT_EQ(boxes().back().request.title, "SAVE FAILED");
    platform.queueAnswer(platform::Answer::Yes);
    platform.queueFileChoice(path("at exit.tna"));
    EXPECT_TRUE(main.queryClose());
    EXPECT_EQ(readFile("at exit.tna"), pane() + "\r\n");
    EXPECT_TRUE(main.queryClose()); // saved: no more question

    // Before Compare the same question; the window comes whatever became of the save.
    userType(1, 1, "2000");
    ASSERT_EQ(session.AnalysisChanged, session::kChanged);
    platform.clearTranscript();
    platform.queueAnswer(platform::Answer::Cancel);
    main.menuClick(session::MenuItem::AnalyzeCompare);
    EXPECT_FALSE(main.compareVisible());
    EXPECT_TRUE(log.empty());
    platform.queueAnswer(platform::Answer::Yes); // and the save dialog is cancelled
    main.toolbarClick("Compare");
    EXPECT_TRUE(main.compareVisible());
    EXPECT_EQ(session.AnalysisChanged, session::kChanged);
    EXPECT_EQ(boxes().size(), 2U);
    EXPECT_EQ(log, (std::vector<std::string>{"show compare"}));
}

// While Compare is visible the routed commands are its own, New and Analyze are off, and
// the button brings Analyze back with the focus in the name box and New and Compare on.
TEST_F(MainFrameTest, CompareButtonTogglesAndRoutesTheFileCommands) {
    typeFourRowExample();
    analyze.nameBox().setText("Spleen A");
    analyze.analyze();
    std::filesystem::current_path(directory);
    session.LastDirectory = directory.string();
    platform.queueFileChoice(path("spleen.tna"));
    main.menuClick(session::MenuItem::FileSave);
    analyze.setFocus(documents::Control::Grid);

    main.toolbarClick("Compare");
    ASSERT_TRUE(main.compareVisible());
    EXPECT_EQ(compare.grid().dataRowCount(), 1);
    EXPECT_TRUE(session.frame.button("Compare").pressed);
    EXPECT_TRUE(session.frame.button("Delete").enabled);
    main.menuClick(session::MenuItem::AnalyzeAnalyze);
    main.toolbarClick("New");
    EXPECT_EQ(cell(1, 1), "1000");
    platform.queueFileChoice(path("spleen.tna"));
    main.menuClick(session::MenuItem::FileOpen); // adds a second row to the comparison
    EXPECT_EQ(compare.grid().dataRowCount(), 2);
    platform.queueFileChoice(path("both.tnc"));
    main.menuClick(session::MenuItem::FileSave);
    EXPECT_NE(readFile("both.tnc").find("Comparison Row:"), std::string::npos);

    main.toolbarClick("Compare");
    EXPECT_FALSE(main.compareVisible());
    EXPECT_EQ(analyze.focus(), documents::Control::AnalysisName);
    EXPECT_EQ(log, (std::vector<std::string>{"show compare", "hide compare"}));
    // Delete is off again with the focus out of the grid; New and Compare Analyses are on.
    EXPECT_FALSE(session.frame.button("Delete").enabled);
    main.toolbarClick("New");
    EXPECT_EQ(cell(1, 1), "");
    main.menuClick(session::MenuItem::AnalyzeCompare);
    EXPECT_TRUE(main.compareVisible());
}

} // namespace
} // namespace titron::shell::testing
