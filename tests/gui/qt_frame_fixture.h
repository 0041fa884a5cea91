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

    using Responses = documents::testing::Responses;
    static void typeFourRowAssay(entry::Grid& grid) {
        documents::testing::typeRows(grid, documents::testing::fourRowAssay());
    }

    // The assay analysed on the scripted platform, as the command line runs it, and saved to
    // file as the Save command would when a file is given.
    static std::string headlessReport(const std::string& name,
                                      const Responses& responses = {"2", "6", "14", "22"},
                                      const std::string& file = "") {
        documents::testing::FreshDocument headless;
        headless.analyze.nameBox().setText(name);
        documents::testing::typeRows(headless.analyze.grid(),
                                     documents::testing::fourRowAssay(responses));
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
