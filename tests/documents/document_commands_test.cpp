// The document's commands as the user meets them. New, Open and Save: the save question,
// the file dialogs, the changed flag, the caption, and the file name that the dialog keeps
// between commands. Copy and Print: which text they take (the report or the grid), the
// page's head, fonts and origin as printer operations, and that neither touches the document.
#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"

namespace titron::documents::testing {
namespace {

using platform::Answer;

class DocumentCommandsTest : public AnalyzeFixture {
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
    // The printer operations of the transcript, without their "printer " prefix.
    std::vector<std::string> printed() const {
        std::vector<std::string> found;
        for (const std::string& line : lines("printer ")) {
            if (line.rfind("printer dialog", 0) != 0) {
                found.push_back(line.substr(8));
            }
        }
        return found;
    }
    std::string documentState() const {
        return pane() + "|" + analyze.nameBox().text() + "|" + session.AnalysisFile + "|" +
               std::to_string(session.AnalysisChanged) + "|" + analyze.grid().clip();
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

TEST_F(DocumentCommandsTest, DialogsCarryTheirSettingsAndSaveOffersTheFilesOwnName) {
    writeFile("run.3.txt", "Dose,Responses,Tested\r\n1000,2,24\r\n3000,6,24\r\n");
    platform.queueFileChoice(path("run.3.txt"));
    analyze.openFile();
    EXPECT_EQ(caption(), "Titron - [" + path("run.3.txt") + "]");
    EXPECT_EQ(session.LastDirectory, directory.string());
    platform.queueFileChoice(std::nullopt);
    analyze.saveFile();
    const std::string fields = " ext tna filter Titron Analysis Files (*.tna)|*.tna|Text Files "
                               "(*.txt)|*.txt|All Files (*.*)|*.*";
    EXPECT_EQ(lines("open dialog").at(0), "open dialog [Titron Analysis File] flags 6148" + fields +
                                              " file  -> " + path("run.3.txt"));
    EXPECT_EQ(lines("save dialog").at(0), "save dialog [Titron Analysis File] flags 34822" +
                                              fields + " file run.tna -> cancelled");
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

TEST_F(DocumentCommandsTest, SaveQuestionAnswersBeforeNewAndOpen) {
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

// A save that cannot write says why, and the document stays changed under its old caption;
// a command that asked for the save stops as after a cancelled dialog.
TEST_F(DocumentCommandsTest, FailedSaveShowsWhyAndKeepsTheDocumentChanged) {
    typeFourRowExample();
    userType(4, 1, "first plate");
    const std::string before = caption();
    const std::string target = path("no/such/run.tna");
    saveAs("no/such/run.tna");
    expectBox("SAVE FAILED",
              "The file " + target + " could not be written: No such file or directory.");
    EXPECT_EQ(boxes().back().request.icon, platform::Icon::Exclamation);
    EXPECT_TRUE(changed());
    EXPECT_EQ(caption(), before);
    EXPECT_EQ(session.AnalysisFile, "");

    platform.queueAnswer(Answer::Yes);
    platform.queueFileChoice(target);
    analyze.newFile();
    EXPECT_EQ(boxes().back().request.title, "SAVE FAILED");
    EXPECT_EQ(cell(4, 1), "first plate");
    EXPECT_TRUE(changed());
}

TEST_F(DocumentCommandsTest, WithoutReportOrRowsSaveCopyAndPrintShowTheirBoxes) {
    analyze.saveFile();
    analyze.copyFile();
    analyze.printFile();
    ASSERT_EQ(boxes().size(), 3U);
    const char* const expected[] = {"NO ANALYSIS TO SAVE|No Titron analysis to save.",
                                    "NO ANALYSIS TO COPY|No Titron analysis to copy.",
                                    "NO ANALYSIS TO PRINT|No Titron analysis to print."};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(boxes()[i].request.title + "|" + boxes()[i].request.text, expected[i]);
        EXPECT_EQ(boxes()[i].request.icon, platform::Icon::Exclamation);
    }
    EXPECT_TRUE(lines("save dialog").empty());
    EXPECT_FALSE(platform.hasText());
    EXPECT_TRUE(printed().empty());

    // A changed document with nothing to save: the dialog's name decides.
    analyze.resultsPane().setText("short loaded text");
    analyze.nameBox().setText("x"); // a new name takes any text off the pane: changed
    EXPECT_EQ(pane(), kEmptyResults);
    ASSERT_TRUE(changed());
    platform.queueAnswer(Answer::Yes);
    analyze.newFile();
    EXPECT_EQ(analyze.nameBox().text(), "x"); // empty name: the command ended
    analyze.commonDialog().fileName = "earlier.tna";
    platform.queueAnswer(Answer::Yes);
    analyze.newFile();
    EXPECT_EQ(analyze.nameBox().text(), "");
}

TEST_F(DocumentCommandsTest, NewBringsBackHeadingsAndTheHundredRowTable) {
    session.settings.ColHeading[1] = "Cells";
    platform.queueFileChoice(
        writeFile("t.txt", "Row,Dose,Responses,Tested,Comments\r\n1,1000,2,24,plate\r\n"));
    analyze.openFile();
    ASSERT_EQ(cell(1, 0), "Dose");
    analyze.grid().userMoveTo(3, 140); // the table grows to 200 rows
    analyze.nameBox().setText("Bone marrow");
    analyze.setFocus(Control::Grid);

    platform.queueAnswer(Answer::No);
    analyze.newFile();
    EXPECT_EQ(cell(1, 0), "Cells");
    EXPECT_EQ(pane(), kEmptyResults);
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

TEST_F(DocumentCommandsTest, EditingAfterAnUnsavedAnalysisSavesTheOldReportNotTheEditedTable) {
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

// The text is composed before the dialog: a table saved under a new name keeps the file line
// of the path it had, and a document without a path gets none.
TEST_F(DocumentCommandsTest, SavedTableNamesThePathItHadBeforeTheDialog) {
    typeFourRowExample();
    saveAs("first.tna");
    EXPECT_EQ(readFile("first.tna").rfind("Row\t\tDose", 0), 0u);
    saveAs("second.tna");
    const std::string fileLine = "Titron Analysis File: [" + path("first.tna") + "]\r\n";
    EXPECT_EQ(readFile("second.tna").rfind(fileLine, 0), 0u);
}

TEST_F(DocumentCommandsTest, PastedNameWithQuoteAndCommaShowsBothBoxesAndKeepsTheFocus) {
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

TEST_F(DocumentCommandsTest, CopyGivesTheGridBlockOrTheReportWithSingleTabs) {
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
    // The report's lines as they stand, its table with single Tabs.
    const std::string copied = platform.text();
    EXPECT_EQ(copied.rfind(pane().substr(0, pane().find("Row\t")), 0), 0U);
    EXPECT_EQ(copied.substr(copied.find("Row\t")), "Row\tDose\tResponses\tTested\tComments\r\n"
                                                   "1\t1000\t2\t24\t\r\n2\t3000\t6\t24\t\r\n"
                                                   "3\t10000\t14\t24\t\r\n4\t30000\t22\t24\t\r\n");
    EXPECT_NE(pane().find("\t\t"), std::string::npos); // the pane keeps its doubled Tabs
    EXPECT_EQ(documentState(), before);
    const auto& log = platform.transcript();
    EXPECT_EQ(log[log.size() - 5], "pointer busy"); // while the text goes to the clipboard
    EXPECT_EQ(log.back(), "pointer normal");
}

TEST_F(DocumentCommandsTest, PrintedPageHasTheHeadThenTheReportWithItsDoubledTabs) {
    analyseExample();
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

TEST_F(DocumentCommandsTest, WithoutReportThePageShowsFileLineBareNameAndTable) {
    type({{"1000", "5", "24", ""}});
    analyze.printFile(); // the print dialog cancelled: nothing printed
    EXPECT_TRUE(printed().empty());
    EXPECT_EQ(platform.transcript().back(), "pointer normal");
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
                  "print Titron Analysis File: [/data/Spleen.tna]\r\n\r\nSpleen A\r\n\r\nRow", 0),
              0U);
}

TEST_F(DocumentCommandsTest, ShortLoadedTextCountsAsNoReportAndLongOneAsAReport) {
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

} // namespace
} // namespace titron::documents::testing
