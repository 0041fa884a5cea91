// The desktop program's windows as the program makes them, on the offscreen platform: the
// frame with Analyze shown and active, without the splash's seconds of start-up.
#pragma once

#include <array>

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
#include "session/session.h"
#include "shell/main_frame.h"
#include "tests/documents/analyze_fixture.h"

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

    using Responses = std::array<const char*, 4>;
    // The worked four-row assay: doses 1000 to 30000, 24 tested at each.
    static void typeFourRowAssay(entry::Grid& grid,
                                 const Responses& responses = {"2", "6", "14", "22"}) {
        const char* doses[] = {"1000", "3000", "10000", "30000"};
        for (int row = 1; row <= 4; ++row) {
            grid.setCell(1, row, doses[row - 1]);
            grid.setCell(2, row, responses[static_cast<std::size_t>(row - 1)]);
            grid.setCell(3, row, "24");
        }
    }

    // The assay analysed on the scripted platform, as the command line runs it, and saved to
    // file as the Save command would when a file is given.
    static std::string headlessReport(const std::string& name,
                                      const Responses& responses = {"2", "6", "14", "22"},
                                      const std::string& file = "") {
        documents::testing::FreshDocument headless;
        headless.analyze.nameBox().setText(name);
        typeFourRowAssay(headless.analyze.grid(), responses);
        headless.analyze.analyze();
        if (!file.empty()) {
            EXPECT_TRUE(headless.analyze.saveDocument(file));
        }
        return headless.analyze.resultsPane().text();
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
