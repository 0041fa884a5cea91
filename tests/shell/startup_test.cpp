// Start-up: the order of its steps and waits, the settings file of the current directory,
// and the failure path with its three endings.
#include "shell/startup.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/recording_windows.h"

namespace titron::shell::testing {
namespace {

using Log = std::vector<std::string>;

// Runs each test in a scratch directory of its own, since the settings file is looked for
// in the current directory.
class StartupTest : public ::testing::Test {
  protected:
    StartupTest()
        : windows(platform.log), analyze(platform.services(), session),
          startup(platform.services(), windows, session, analyze) {
        m_previous = std::filesystem::current_path();
        m_directory = std::filesystem::temp_directory_path() /
                      ("titron-startup-" + std::to_string(::getpid()) + "-" +
                       ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(m_directory);
        std::filesystem::create_directories(m_directory);
        std::filesystem::current_path(m_directory);
    }
    ~StartupTest() override {
        std::filesystem::current_path(m_previous);
        std::filesystem::remove_all(m_directory);
    }

    void writeSettings(const std::string& text) {
        std::ofstream(m_directory / "titro.ini", std::ios::binary) << text;
    }
    std::string directory() const { return m_directory.string(); }

    LoggingPlatform platform;
    RecordingWindows windows;
    session::Session session;
    documents::Analyze analyze;
    Startup startup;

  private:
    std::filesystem::path m_previous;
    std::filesystem::path m_directory;
};

TEST_F(StartupTest, StepsRunInOrderAndLeaveANewDocument) {
    EXPECT_EQ(startup.run(), StartupOutcome::Ready);
    // A 15360 x 11520 screen is higher than 7500: the frame is normal and centred.
    EXPECT_EQ(platform.log, (Log{"busy", "splash", "events", "place 0 2880 2160 7200 9600",
                                 "wait 1000", "show analyze", "events", "repaint analyze",
                                 "wait 3000", "close splash", "events", "normal"}));
    EXPECT_EQ(session.HelpFile, "TITRO.HLP");
    EXPECT_EQ(std::filesystem::path(session.LastDirectory), std::filesystem::current_path());
    EXPECT_EQ(analyze.grid().cell(2, 0), "Responses");
    EXPECT_EQ(analyze.grid().cell(0, 100), "100");
    EXPECT_EQ(analyze.resultsPane().text(), documents::kEmptyResults);
    EXPECT_EQ(analyze.nameBox().text(), "");
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);
    EXPECT_EQ(session.AnalysisFile, "");
    EXPECT_TRUE(platform.boxes().empty());
}

TEST_F(StartupTest, SettingsFileOverlaysTheDefaultsBeforeTheFrameIsPlaced) {
    windows.screen = {7500, 9600};
    writeSettings("2, 10, 20, 5000, 8000\r\n\"No.\",\"Dose, cells\",Hits,Wells,Notes\r\n"
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

TEST_F(StartupTest, NoSettingsFileCanStopTheProgramFromStarting) {
    const std::vector<std::string> files{
        std::string(1 << 20, 'h') + ",x\r\n",                     // a 1 MB heading first
        "99999999999999999999,-40000,abc,\"\",,\r\n\x01\x02\xff", // huge, garbage, empty
        "1,2,3,4,5\r\n\"unterminated heading",                    // ends inside quotes
        "-1,-1,-1,-1,-1\r\na,b,c,d,e\r\n-500,-500,-500,-500,-500\r\n-9\r\n",
    };
    for (const std::string& text : files) {
        session::Session freshSession;
        documents::Analyze freshAnalyze(platform.services(), freshSession);
        Startup freshStartup(platform.services(), windows, freshSession, freshAnalyze);
        writeSettings(text);
        EXPECT_EQ(freshStartup.run(), StartupOutcome::Ready) << text.substr(0, 40);
        EXPECT_TRUE(platform.boxes().empty());
    }
    // A settings "file" that cannot be read at all is passed over.
    std::filesystem::remove(std::filesystem::path(directory()) / "titro.ini");
    std::filesystem::create_directory(std::filesystem::path(directory()) / "titro.ini");
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

TEST_F(StartupTest, CancelOrAWarningLeavesTheProgramRunningWithoutLaterSteps) {
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
}

TEST_F(StartupTest, StopKindFailureEndsTheProgramAfterItsBox) {
    windows.failOnce("splash", 53);
    EXPECT_EQ(startup.run(), StartupOutcome::EndProgram);
    ASSERT_EQ(platform.boxes().size(), 1u);
    EXPECT_EQ(platform.boxes()[0].request.title, "Cohortrak Error #53");
    EXPECT_EQ(platform.boxes()[0].request.icon, platform::Icon::Stop);
    EXPECT_EQ(platform.log.back(), "box Cohortrak Error #53");
}

} // namespace
} // namespace titron::shell::testing
