// The desktop program's windows as the program makes them, on the offscreen platform: the
// frame with Analyze shown and active, without the splash's seconds of start-up.
#pragma once

#include <QLineEdit>
#include <QTest>
#include <QTextEdit>

#include <gtest/gtest.h>

#include "comparison/compare.h"
#include "documents/analyze.h"
#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_frame_windows.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_platform.h"
#include "shell/main_frame.h"
#include "session/session.h"

namespace titron::qt::testing {

class QtFrameFixture : public ::testing::Test {
  protected:
    QtFrameFixture()
        : analyze(platform.services(), session), compare(platform.services(), session),
          window(session, analyze, compare), windows(window),
          frame(platform.services(), windows, session, analyze, compare,
                "/nonexistent-titron-dir") {
        window.setMain(frame);
        session.HelpFile = "TITRO.HLP";
        analyze.load();
        windows.placeFrame(platform::WindowState::Normal, 300, 300, 7200, 10800);
        windows.showAnalyze();
        window.activateWindow();
        // Shortcuts only reach an active window.
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QLineEdit& nameBox() { return *window.analyzeWindow()->nameBox(); }
    QTextEdit& resultsPane() { return *window.analyzeWindow()->resultsPane(); }

    // The worked four-row assay: doses 1000 to 30000, 24 tested at each.
    static void typeFourRowAssay(entry::Grid& grid) {
        const char* rows[4][3] = {
            {"1000", "2", "24"}, {"3000", "6", "24"}, {"10000", "14", "24"}, {"30000", "22", "24"}};
        for (int row = 1; row <= 4; ++row) {
            for (int col = 1; col <= 3; ++col) {
                grid.setCell(col, row, rows[row - 1][col - 1]);
            }
        }
    }

    QtPlatform platform;
    session::Session session;
    documents::Analyze analyze;
    comparison::Compare compare;
    QtMainWindow window;
    QtFrameWindows windows;
    shell::Main frame;
};

} // namespace titron::qt::testing
