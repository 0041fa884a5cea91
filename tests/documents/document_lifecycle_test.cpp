// New, Open and Save as the user meets them: the save question, the file dialogs, the
// changed flag, the caption, and the file name that the dialog keeps between commands.
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

using platform::Answer;

class DocumentLifecycleTest : public AnalyzeFixture {
  protected:
    bool changed() const { return session.AnalysisChanged == session::kChanged; }
    const std::string& caption() const { return session.frameCaption.text(); }
    // The transcript's lines that start with prefix, in order.
    std::vector<std::string> lines(const std::string& prefix) const {
        std::vector<std::string> found;
        for (const std::string& line : platform.transcript()) {
            if (line.rfind(prefix, 0) == 0) {
                found.push_back(line);
            }
        }
        return found;
    }
    void analyseExample() {
        typeFourRowExample();
        analyze.nameBox().setText("Spleen A");
        analyze.analyze();
        ASSERT_TRUE(analyze.reportPresent());
    }
    void saveAs(const std::string& name) {
        platform.queueFileChoice(path(name));
        analyze.saveFile();
    }
};

TEST_F(DocumentLifecycleTest, DialogsCarryTheirFlagsFilterExtensionAndTitle) {
    typeFourRowExample();
    saveAs("first.tna");
    platform.queueAnswer(Answer::No);
    analyze.openFile(); // cancelled: nothing queued
    const std::string fields = " ext tna filter Titron Analysis Files (*.tna)|*.tna|Text Files "
                               "(*.txt)|*.txt|All Files (*.*)|*.*";
    EXPECT_EQ(lines("save dialog").at(0), "save dialog [Titron Analysis File] flags 34822" +
                                              fields + " file  -> " + path("first.tna"));
    EXPECT_EQ(lines("open dialog").at(0),
              "open dialog [Titron Analysis File] flags 6148" + fields + " file  -> cancelled");
    // The save question was not asked: the save left the document clean.
    EXPECT_TRUE(boxes().empty());
}

TEST_F(DocumentLifecycleTest, SaveOffersTheFilesOwnNameWithTheAnalysisExtension) {
    writeFile("run.3.txt", "Dose,Responses,Tested\r\n1000,2,24\r\n3000,6,24\r\n");
    platform.queueFileChoice(path("run.3.txt"));
    analyze.openFile();
    EXPECT_EQ(caption(), "Titron - [" + vocabulary::lowerCase(path("run.3.txt")) + "]");
    EXPECT_EQ(session.LastDirectory, directory.string());
    platform.queueFileChoice(std::nullopt);
    analyze.saveFile();
    EXPECT_NE(lines("save dialog").at(0).find(" file run.tna -> cancelled"), std::string::npos);
    // A cancelled save empties the name; a document without a file offers what is left.
    EXPECT_EQ(analyze.commonDialog().fileName, "");
    analyze.newFile();
    typeFourRowExample();
    saveAs("kept.tna");
    EXPECT_NE(lines("save dialog").at(1).find(" file  -> "), std::string::npos);
    analyze.newFile();
    type({{"1", "1", "2", ""}});
    platform.queueFileChoice(std::nullopt);
    analyze.saveFile();
    EXPECT_NE(lines("save dialog").at(2).find(" file " + path("kept.tna") + " -> cancelled"),
              std::string::npos);
}

TEST_F(DocumentLifecycleTest, SavedAnalysisOpensAgainWithTheSamePaneNameAndCells) {
    analyseExample();
    const std::string report = pane();
    saveAs("spleen.tna");
    EXPECT_FALSE(changed());
    EXPECT_EQ(caption(), "Titron - [" + vocabulary::lowerCase(path("spleen.tna")) + "]");
    EXPECT_EQ(readFile("spleen.tna"), report + "\r\n");

    analyze.newFile();
    EXPECT_EQ(caption(), "Titron");
    EXPECT_EQ(pane(), kEmptyResults);
    platform.queueFileChoice(path("spleen.tna"));
    analyze.openFile();
    // The file's text from its name line on, with the line end that the save added.
    EXPECT_EQ(pane(), report + "\r\n");
    EXPECT_EQ(analyze.nameBox().text(), "Spleen A");
    EXPECT_EQ(cell(1, 4), "30000");
    EXPECT_EQ(cell(2, 4), "22");
    EXPECT_EQ(cell(3, 4), "24");
    EXPECT_EQ(cell(1, 5), "");
    EXPECT_FALSE(changed());
    // After an analysis the exit always asks, even on a document opened a moment ago.
    analyze.analyze();
    EXPECT_TRUE(changed());
}

TEST_F(DocumentLifecycleTest, SaveQuestionAnswersBeforeNewAndOpen) {
    typeFourRowExample();
    userType(4, 1, "first plate");
    ASSERT_TRUE(changed());
    platform.queueAnswer(Answer::Cancel);
    analyze.newFile();
    EXPECT_EQ(cell(1, 1), "1000");
    EXPECT_EQ(boxes().at(0).request.title, "SAVE ANALYSIS FILE?");
    EXPECT_EQ(boxes().at(0).request.text, "Save the Titron analysis file?");
    EXPECT_EQ(boxes().at(0).request.buttons, platform::Buttons::YesNoCancel);
    EXPECT_EQ(boxes().at(0).request.icon, platform::Icon::Question);
    EXPECT_EQ(boxes().at(0).request.defaultButton, 1);

    // Yes, then a cancelled save dialog: the command ends, the document stays changed.
    platform.queueAnswer(Answer::Yes);
    analyze.newFile();
    EXPECT_EQ(cell(1, 1), "1000");
    EXPECT_TRUE(changed());
    EXPECT_EQ(analyze.commonDialog().fileName, "");

    // Yes and a save: the new document follows.
    platform.queueAnswer(Answer::Yes);
    platform.queueFileChoice(path("saved.tna"));
    analyze.newFile();
    EXPECT_EQ(cell(1, 1), "");
    EXPECT_FALSE(changed());
    EXPECT_EQ(lines("save dialog").size(), 2U);

    userType(1, 1, "5");
    platform.queueAnswer(Answer::No);
    analyze.openFile(); // its dialog is cancelled
    EXPECT_EQ(boxes().back().request.text, "Save the current Titron analysis file?");
    EXPECT_EQ(cell(1, 1), "5");
    EXPECT_EQ(lines("open dialog").size(), 1U);
}

TEST_F(DocumentLifecycleTest, NothingToSaveShowsItsBoxAndYesGoesOnOnlyWithAFileName) {
    analyze.saveFile();
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes().at(0).request.title, "NO ANALYSIS TO SAVE");
    EXPECT_EQ(boxes().at(0).request.text, "No Titron analysis to save.");
    EXPECT_EQ(boxes().at(0).request.icon, platform::Icon::Exclamation);
    EXPECT_TRUE(lines("save dialog").empty());

    // A changed document with nothing to save: the dialog's name decides.
    analyze.resultsPane().setText("short loaded text");
    analyze.nameBox().setText("x"); // resets the pane: changed
    ASSERT_TRUE(changed());
    platform.queueAnswer(Answer::Yes);
    analyze.newFile();
    EXPECT_EQ(analyze.nameBox().text(), "x"); // empty name: the command ended
    analyze.commonDialog().fileName = "earlier.tna";
    platform.queueAnswer(Answer::Yes);
    analyze.newFile();
    EXPECT_EQ(analyze.nameBox().text(), "");
}

TEST_F(DocumentLifecycleTest, NewBringsBackHeadingsAndTheHundredRowTable) {
    session.settings.ColHeading[1] = "Cells";
    std::string text = "Row,Dose,Responses,Tested,Comments\r\n";
    for (int i = 1; i <= 300; ++i) {
        text += std::to_string(i) + ",1000,2,24,plate\r\n";
    }
    platform.queueFileChoice(writeFile("long.txt", text));
    analyze.openFile();
    ASSERT_EQ(cell(1, 0), "Dose");
    ASSERT_GT(analyze.grid().rowLimit(), 300);
    analyze.grid().userMoveTo(3, 40);
    analyze.nameBox().setText("Bone marrow");
    analyze.setFocus(Control::Grid);

    platform.queueAnswer(Answer::No);
    analyze.newFile();
    EXPECT_EQ(cell(1, 0), "Cells");
    EXPECT_EQ(analyze.grid().rowLimit(), 100);
    EXPECT_EQ(analyze.grid().dataRowCount(), 0);
    EXPECT_EQ(analyze.grid().activeCol(), 1);
    EXPECT_EQ(analyze.grid().activeRow(), 1);
    EXPECT_EQ(analyze.nameBox().text(), "");
    EXPECT_EQ(session.AnalysisFile, "");
    EXPECT_EQ(caption(), "Titron");
    EXPECT_EQ(analyze.focus(), Control::AnalysisName);
    EXPECT_FALSE(changed());
    EXPECT_FALSE(platform.pointerBusy());
}

TEST_F(DocumentLifecycleTest, CaptionAfterAppendShowsNoFileThoughTheFileIsKept) {
    platform.queueFileChoice(writeFile("a.txt", "1000\t2\t24\r\n"));
    analyze.openFile();
    platform.queueFileChoice(writeFile("b.txt", "3000\t6\t24\r\n"));
    platform.queueAnswer(Answer::Yes); // append
    analyze.openFile();
    EXPECT_EQ(caption(), "Titron");
    EXPECT_EQ(session.AnalysisFile, path("b.txt"));
    EXPECT_TRUE(changed());
    EXPECT_EQ(cell(1, 2), "3000");
    // Cancel at the append question leaves the file as it was.
    platform.queueAnswer(Answer::No); // the save question
    platform.queueFileChoice(path("a.txt"));
    platform.queueAnswer(Answer::Cancel);
    analyze.openFile();
    EXPECT_EQ(session.AnalysisFile, path("b.txt"));
}

TEST_F(DocumentLifecycleTest, EditingAfterAnUnsavedAnalysisSavesTheOldReportWithTheNewTable) {
    analyseExample();
    const std::string report = pane();
    userType(3, 1, "25");
    EXPECT_EQ(pane(), report);
    saveAs("old.tna");
    EXPECT_EQ(readFile("old.tna"), report + "\r\n");
    EXPECT_NE(report.find("1\t\t1000\t\t2\t\t24\t\t\r\n"), std::string::npos);
    // Once saved, the first edit takes the report away.
    userType(3, 1, "26");
    EXPECT_EQ(pane(), kEmptyResults);
    EXPECT_TRUE(changed());
}

TEST_F(DocumentLifecycleTest, ReportWithoutANameSavesWithAnEmptyNameLine) {
    typeFourRowExample();
    analyze.analyze();
    saveAs("unnamed.tna");
    EXPECT_EQ(readFile("unnamed.tna").substr(0, 17), "Analysis Name: \r\n");
}

// Whatever the open dialog hands over, a file that can't be taken ends in the loading
// failure box and the program goes on.
TEST_F(DocumentLifecycleTest, UnreadableChoicesEndInTheLoadingBox) {
    const std::string locked = writeFile("locked.tna", "1000\t2\t24\r\n");
    std::filesystem::permissions(locked, std::filesystem::perms::none);
    const bool enforced = ::geteuid() != 0; // root reads it anyway
    // 200 MB of rows: far more than the 32,767 rows the table can number.
    std::string huge;
    huge.reserve(200u << 20);
    while (huge.size() < (200u << 20)) {
        huge += "1000\t2\t24\tplate of the long run\r\n";
    }
    const std::vector<std::pair<std::string, std::string>> cases{
        {path("deleted after the dialog.tna"), "Titron ERROR #File not found"},
        {directory.string(), "Titron ERROR #Path/File access error"},
        {writeFile("huge.txt", huge), "Titron ERROR #Overflow"},
        {locked, "Titron ERROR #Permission denied"},
    };
    huge.clear();
    huge.shrink_to_fit();
    for (const auto& [file, title] : cases) {
        if (file == locked && !enforced) {
            continue;
        }
        platform.clearTranscript();
        platform.queueFileChoice(file);
        analyze.openFile();
        ASSERT_EQ(boxes().size(), 1U) << file;
        EXPECT_EQ(boxes()[0].request.title, title);
        EXPECT_EQ(boxes()[0].request.text, "An error occurred loading the data.");
        EXPECT_FALSE(platform.pointerBusy());
    }
    std::filesystem::permissions(locked, std::filesystem::perms::owner_all);
    // The program goes on: the next file opens.
    platform.queueFileChoice(writeFile("good.tna", "1000\t2\t24\r\n"));
    analyze.openFile();
    EXPECT_EQ(cell(1, 1), "1000");
}

TEST_F(DocumentLifecycleTest, NameBoxDropsQuotesAndCommasAndEnterMovesToTheGrid) {
    EXPECT_EQ(analyze.nameBoxKeyPress('"'), 0);
    EXPECT_EQ(analyze.nameBoxKeyPress(','), 0);
    EXPECT_EQ(analyze.nameBoxKeyPress('a'), 'a');
    EXPECT_EQ(analyze.nameBoxKeyPress(';'), ';');
    analyze.setFocus(Control::AnalysisName);
    EXPECT_EQ(analyze.nameBoxKeyPress('\r'), 0);
    EXPECT_EQ(analyze.focus(), Control::Grid);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(DocumentLifecycleTest, PastedNameWithQuoteAndCommaShowsBothBoxesAndKeepsTheFocus) {
    analyze.setFocus(Control::AnalysisName);
    analyze.nameBox().setText("A \"b\", c");
    analyze.setFocus(Control::Grid);
    ASSERT_EQ(boxes().size(), 2U);
    EXPECT_EQ(boxes().at(0).request.text,
              "The Analysis Name cannot contain double quotation marks (\").");
    EXPECT_EQ(boxes().at(1).request.text, "The Analysis Name cannot contain commas.");
    for (const auto& box : boxes()) {
        EXPECT_EQ(box.request.title, "Titron");
        EXPECT_EQ(box.request.icon, platform::Icon::None);
        EXPECT_EQ(box.request.buttons, platform::Buttons::Ok);
    }
    EXPECT_EQ(analyze.focus(), Control::AnalysisName);
    EXPECT_EQ(analyze.nameBox().text(), "A \"b\", c");
    // Insert and Delete stay off: the grid had the focus only for the moment of the boxes.
    EXPECT_FALSE(session.frame.item(session::MenuItem::EditInsert).enabled);
}

} // namespace
} // namespace titron::documents::testing
