// Start-up: the settings file and its reader, the failure reporter, the order of the steps
// and waits, and the failure path with its three endings.
#include "shell/startup.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "shell/error_reporter.h"
#include "shell/settings_file.h"
#include "tests/scratch_directory.h"
#include "tests/shell/recording_windows.h"

namespace titron::shell::testing {
namespace {

// All 18 fields on one line, so that a case shows at a glance what it changed.
std::string summary(const session::AppSettings& s) {
    std::string out;
    for (int v : {s.WindowState, s.WindowTop, s.WindowLeft, s.WindowHeight, s.WindowWidth}) {
        out += std::to_string(v) + ",";
    }
    for (const std::string& heading : s.ColHeading) {
        out += "[" + heading + "]";
    }
    for (int width : s.ColWidth) {
        out += std::to_string(width) + ",";
    }
    return out + std::to_string(s.GridHeight) + "," + std::to_string(s.ConfirmInsert) +
           std::to_string(s.ConfirmDelete);
}

std::string readOverDefaults(const std::string& text) {
    session::AppSettings s;
    readSettingsText(text, s);
    return summary(s);
}

TEST(SettingsFile, DefaultsFollowTheScreen) {
    EXPECT_EQ(summary(defaultSettings(7500, 9600, 7199, 9600)),
              "2,150,0,7200,9600,[Row][Dose][Responses][Tested][Comments]500,0,0,0,0,2205,11");
    // Halving drops the remainder toward zero; beyond 16 bits the place clamps.
    EXPECT_EQ(summary(defaultSettings(7501, 5001, 7502, 7200)).substr(0, 11), "0,0,-1099,7");
    EXPECT_EQ(summary(defaultSettings(100000, INT_MIN, 0, INT_MAX)).substr(0, 16),
              "0,32767,-32768,7");
}

TEST(SettingsFile, FieldsAreReadInSequence) {
    const std::string defaults = summary(session::AppSettings{});
    const std::string full =
        "2,10,20,6000,8000,[Row][Dose, mg][Hits][Tested][]600,1000,1100,1200,1300,3000,01";
    const struct {
        std::string text, expected;
    } cases[] = {
        {"", defaults},
        {" \r\n\t\n", defaults},
        {"1,2,3,4,5\r\n", "1,2,3,4,5" + defaults.substr(defaults.find(",[R"))},
        {"2,10,20,6000,8000\r\n\"Row\",\"Dose, mg\",Hits ,\"Tested\",\"\"\r\n"
         "600,1000,1100,1200,1300\r\n3000\r\n0,-1\r\n",
         full},
        // Blanks end numbers, LF or CR alone end lines; empty lines and whatever follows a
        // closing quote are passed over.
        {" 2 10\n20 ,6000\r8000,Row\n\n\"Dose, mg\" x,  Hits\t,Tested,\"\"\n"
         "600 1000\t1100 1200 1300 3000 0 -1",
         full},
        // A missing closing quote costs that one field; the text's end stops everything.
        {"1,2,3,4,5\nA,\"B,C\r\nD", "1,2,3,4,5,[A][B,C][D][Tested][Comments]500,0,0,0,0,2205,11"},
        // Fields that are no 16-bit number keep their values; fractions round to even.
        {"x,99999999999,1e400,-32769,12abc\na,b,c,d,e\n2.5,3.5,-32768,32767,,7\nyes,0",
         "0,0,0,7200,9600,[a][b][c][d][e]2,4,-32768,32767,0,7,10"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(readOverDefaults(c.text), c.expected) << c.text;
    }
    const std::string big(1 << 20, 'h');
    session::AppSettings s;
    readSettingsText("0,0,0,0,0," + big + ",\"" + big + "\",c,d,e,1", s);
    EXPECT_TRUE(s.ColHeading[0] == big && s.ColHeading[1] == big && s.ColWidth[0] == 1);
}

const std::string missingFile = "The Cohortrak data file is missing.\r\n\r\nExit Cohortrak and "
                                "copy the backup\r\nto the C:\\COHORTRK subdirectory.";

TEST(ErrorReporter, MissingDataFileStopsThenUnknownFailureWarnsOnly) {
    platform::ScriptedPlatform platform;
    ErrorReporter reporter(platform);
    EXPECT_EQ(reporter.reportError(53), ErrorOutcome::EndProgram);
    const auto& v = reporter.values();
    EXPECT_TRUE(v.ErrorTitle == "Cohortrak Error #53" && v.ErrorMessage == missingFile);
    EXPECT_TRUE(v.ErrorStyle == 16 && v.ErrorAnswer == 1 && reporter.endsProgram());
    const auto& box = platform.boxes().at(0).request;
    EXPECT_TRUE(box.icon == platform::Icon::Stop && box.buttons == platform::Buttons::Ok);
    EXPECT_TRUE(box.title == v.ErrorTitle && box.text == missingFile);
    // Unknown failures warn and return, and must not inherit the stop kind of the last one.
    for (const int number : {9, 91}) {
        EXPECT_EQ(reporter.reportError(number), ErrorOutcome::Return);
        EXPECT_TRUE(v.ErrorMessage == "Unexpected error." && v.ErrorStyle == 48) << number;
        EXPECT_EQ(platform.boxes().back().request.icon, platform::Icon::Exclamation);
        EXPECT_EQ(v.ErrorTitle, "Cohortrak Error #" + std::to_string(number));
    }
}

TEST(ErrorReporter, DiskFullOffersRetryByDefaultAndKeepsTheAnswer) {
    platform::ScriptedPlatform platform;
    platform.queueAnswer(platform::Answer::Retry);
    platform.queueAnswer(platform::Answer::Cancel);
    ErrorReporter reporter(platform);
    EXPECT_EQ(reporter.reportError(61), ErrorOutcome::Return);
    EXPECT_TRUE(reporter.values().ErrorAnswer == 4 && reporter.values().ErrorStyle == 53);
    EXPECT_EQ(reporter.reportError(61), ErrorOutcome::Return);
    EXPECT_TRUE(reporter.values().ErrorAnswer == 2 &&
                reporter.values().ErrorMessage == "Disk full.");
    const auto& box = platform.boxes().at(0).request;
    EXPECT_TRUE(box.icon == platform::Icon::Exclamation &&
                box.buttons == platform::Buttons::RetryCancel);
    EXPECT_EQ(platform::defaultAnswer(box), platform::Answer::Retry);
}

using Log = std::vector<std::string>;

// Each test runs in a scratch directory of its own, since the settings file is looked for in
// the current directory.
class StartupTest : public ::testing::Test {
  protected:
    StartupTest() { std::filesystem::current_path(scratch.path); }
    void writeSettings(const std::string& name, const std::string& text) {
        std::ofstream(scratch.path / name, std::ios::binary) << text;
    }

    titron::testing::ScratchDirectory scratch;
    LoggingPlatform platform;
    RecordingWindows windows{platform.log};
    session::Session session;
    documents::Analyze analyze{platform.services(), session};
    Startup startup{platform.services(), windows, session, analyze};
};

TEST_F(StartupTest, StepsRunInOrderAndLeaveANewDocument) {
    writeSettings("TITRO.INI", "2,10,20,5000,8000\r\n"); // only "titro.ini" is read
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    // A 15360 x 11520 screen is higher than 7500: the frame is normal and centred.
    EXPECT_EQ(platform.log, (Log{"busy", "splash", "events", "place 0 2880 2160 7200 9600",
                                 "wait 1000", "show analyze", "events", "repaint analyze",
                                 "wait 3000", "close splash", "events", "normal"}));
    EXPECT_EQ(session.HelpFile, "TITRO.HLP");
    EXPECT_EQ(std::filesystem::path(session.LastDirectory), std::filesystem::current_path());
    // A new document, as the New command leaves it (the document's tests).
    EXPECT_EQ(analyze.grid().cell(0, 100), "100");
    EXPECT_EQ(analyze.resultsPane().text(), documents::kEmptyResults);
    EXPECT_TRUE(platform.boxes().empty());
}

TEST_F(StartupTest, SettingsFileOverlaysTheDefaultsBeforeTheFrameIsPlaced) {
    windows.screen = {7500, 9600};
    writeSettings("titro.ini",
                  "2, 10, 20, 5000, 8000\r\n\"No.\",\"Dose, cells\",Hits,Wells,Notes\r\n"
                  "700,0,0,0,0\r\n3000\r\n0,0\r\n");
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    EXPECT_EQ(platform.log[3], "place 2 20 10 5000 8000");
    EXPECT_EQ(analyze.grid().cell(0, 0), "No.");
    EXPECT_EQ(analyze.grid().cell(1, 0), "Dose, cells");
    EXPECT_EQ(analyze.grid().colWidth(0), 700);
    EXPECT_EQ(analyze.gridHeight(), 3000);
    EXPECT_FALSE(session.settings.ConfirmInsert);
    EXPECT_FALSE(session.settings.ConfirmDelete);
}

// Whatever the settings file holds is read without failing (the settings reader's own tests
// and fuzz target); here negative places, widths and heights reach the frame and the grid, and
// a "file" that is a directory is passed over.
TEST_F(StartupTest, NoSettingsFileCanStopTheProgramFromStarting) {
    writeSettings("titro.ini", "-1,-1,-1,-1,-1\r\na,b,c,d,e\r\n-500,-500,-500,-500,-500\r\n-9\r\n");
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    std::filesystem::remove(scratch.path / "titro.ini");
    std::filesystem::create_directory(scratch.path / "titro.ini"); // found, but can't be read
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    EXPECT_TRUE(platform.boxes().empty());
}

TEST_F(StartupTest, RetryRunsTheFailedStepAgainAndStartUpGoesOn) {
    windows.failOnce("place", 61); // "Disk full.", Retry or Cancel
    platform.queueAnswer(platform::Answer::Retry);
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    EXPECT_EQ(startup.failedStep(), 8);
    const Log expected{"busy",         "splash",
                       "events",       "place 0 2880 2160 7200 9600 failed",
                       "close splash", "events",
                       "wait 1000",    "show frame",
                       "events",       "wait 1000",
                       "normal",       "box Cohortrak Error #61",
                       "busy",         "place 0 2880 2160 7200 9600",
                       "wait 1000",    "show analyze",
                       "events",       "repaint analyze",
                       "wait 3000",    "close splash",
                       "events",       "normal"};
    EXPECT_EQ(platform.log, expected);
}

TEST_F(StartupTest, CancelOrAWarningStopsTheStepsAndAStopKindFailureEndsTheProgram) {
    windows.failOnce("place", 61);
    platform.queueAnswer(platform::Answer::Cancel);
    EXPECT_EQ(startup.run(), StartupOutcome::Stopped);
    EXPECT_EQ(platform.log.back(), "normal");
    EXPECT_EQ(std::count(platform.log.begin(), platform.log.end(), "show analyze"), 0);

    platform.log.clear();
    windows.failOnce("repaint analyze", 6); // "Overflow.": a warning only
    EXPECT_EQ(startup.run(), StartupOutcome::Stopped);
    EXPECT_EQ(platform.boxes().back().request.text, "Overflow.");
    EXPECT_EQ(std::count(platform.log.begin(), platform.log.end(), "wait 3000"), 0);

    // A failure of the stop kind ends the program after its box (the box is the reporter's
    // test).
    windows.failOnce("splash", 53);
    EXPECT_EQ(startup.run(), StartupOutcome::EndProgram);
    EXPECT_EQ(platform.boxes().size(), 3u);
    EXPECT_EQ(platform.log.back(), "box Cohortrak Error #53");
}

} // namespace
} // namespace titron::shell::testing
