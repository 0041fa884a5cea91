// The program's start-up on the real windows: the splash stands above the frame while the
// frame is placed from the settings file and Analyze comes up, and then goes.
#include <filesystem>
#include <fstream>

#include <QApplication>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "comparison/compare.h"
#include "documents/analyze.h"
#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_frame_windows.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_platform.h"
#include "platform/qt/qt_title_form.h"
#include "platform/qt/qt_twips.h"
#include "session/session.h"
#include "shell/main_frame.h"
#include "shell/startup.h"
#include "tests/scratch_directory.h"

namespace titron::qt {
namespace {

namespace fs = std::filesystem;

// Runs in a scratch directory holding a settings file, as the program reads it from its
// current directory.
TEST(QtStartupTest, SplashStandsWhileTheFramePlacesItselfFromTheSettings) {
    const titron::testing::ScratchDirectory scratch;
    const fs::path& directory = scratch.path;
    fs::current_path(directory);
    // Normal, top 720, left 1440, 6000 high, 9000 wide; the headings; widths; grid 1800.
    std::ofstream(directory / "titro.ini", std::ios::binary)
        << "0,720,1440,6000,9000\r\n\"No.\",\"Cells\",\"Wells+\",\"Wells\",\"Notes\"\r\n"
           "500,0,0,0,0\r\n1800\r\n";

    QtPlatform platform;
    session::Session session;
    documents::Analyze analyze(platform.services(), session);
    comparison::Compare compare(platform.services(), session);
    QtMainWindow window(session, analyze, compare);
    QtFrameWindows windows(window);
    shell::Main frame(platform.services(), windows, session, analyze, compare, directory.string());
    window.setMain(frame);

    bool splashOnTop = false;
    bool busyUnderSplash = false;
    bool splashOverAnalyze = false;
    QTimer::singleShot(500, [&] {
        const QtTitleForm* splash = windows.splash();
        splashOnTop = splash != nullptr && splash->isVisible() &&
                      splash->windowFlags().testFlag(Qt::WindowStaysOnTopHint) &&
                      splash->windowFlags().testFlag(Qt::FramelessWindowHint);
        busyUnderSplash = platform.pointer().busy();
    });
    QTimer::singleShot(2500, [&] {
        splashOverAnalyze = windows.splash() != nullptr && windows.splash()->isVisible() &&
                            window.isVisible() && window.analyzeSubWindow()->isVisible();
    });

    const shell::StartupOutcome outcome =
        shell::Startup(platform.services(), windows, session, analyze).run();

    EXPECT_EQ(outcome, shell::StartupOutcome::Ready);
    EXPECT_TRUE(splashOnTop);
    EXPECT_TRUE(busyUnderSplash);
    EXPECT_TRUE(splashOverAnalyze);
    EXPECT_EQ(windows.splash(), nullptr);
    EXPECT_FALSE(platform.pointer().busy());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.pos(), QPoint(twipsToPixelsX(1440, window), twipsToPixelsY(720, window)));
    EXPECT_EQ(window.size(), QSize(twipsToPixelsX(9000, window), twipsToPixelsY(6000, window)));
    EXPECT_TRUE(window.analyzeSubWindow()->isMaximized());
    QTest::qWait(20);
    EXPECT_EQ(window.analyzeWindow()->gridView()->height(), twipsToPixelsY(1800, window));
    EXPECT_EQ(analyze.grid().cell(1, 0), "Cells");
}

TEST(QtFrameWindowsDeathTest, EndProgramEndsAtOnceWithStatusOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    session::Session session;
    QtPlatform platform;
    documents::Analyze analyze(platform.services(), session);
    comparison::Compare compare(platform.services(), session);
    QtMainWindow window(session, analyze, compare);
    QtFrameWindows windows(window);
    EXPECT_EXIT(windows.endProgram(), ::testing::ExitedWithCode(1), "");
}

} // namespace
} // namespace titron::qt
