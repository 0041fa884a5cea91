// The logic of the frame Main: each menu item and toolbar button hands its command to a
// window. Routed commands go to Compare while it is visible and to Analyze otherwise.
#pragma once

#include <string>
#include <string_view>

#include "comparison/compare.h"
#include "documents/analyze.h"
#include "platform/common_dialog.h"
#include "platform/frame_windows.h"
#include "platform/platform.h"
#include "session/frame_model.h"
#include "session/session.h"

namespace titron::shell {

class Main {
  public:
    // programDirectory: where the help file lies.
    Main(platform::Platform& platform, platform::FrameWindows& windows, session::Session& session,
         documents::Analyze& analyze, comparison::Compare& compare, std::string programDirectory);

    session::FrameModel& frame() { return m_session.frame; }

    // A click on a menu item (by name, the pop-up's items included) or a toolbar button (by
    // key). Disabled, hidden, unknown and separator entries do nothing.
    void menuClick(session::MenuItem item);
    void toolbarClick(std::string_view key);
    void run(session::Command command);

    // Whether the comparison window is visible, which decides where routed commands go.
    bool compareVisible() const { return m_compare.visible(); }

    // Every way of closing the frame asks this first: the save question while the document
    // is changed. True when the program may end; false keeps it open.
    bool queryClose();
    // The compare command: the save question, where Yes saves and the command goes on
    // whatever became of the save (Cancel ends it), then Compare in front.
    void compareCommand();

    // A file named when the program was started, as a double-click on an analysis file
    // names it: opened into the document as Open would open it, its directory made the
    // current one as an accepted file dialog leaves it.
    void openGivenFile(const std::string& path);

    // The help viewer: the help file of the program's directory, or else the manual, opened
    // with the desktop's handler; a box says where they were looked for when neither is there.
    void helpContents();

  private:
    // The command of Compare while it is visible, else the one of Analyze.
    void routed(void (documents::Analyze::*onAnalyze)(), void (comparison::Compare::*onCompare)());
    // The "Compare" button: back to Analyze while Compare is visible, else the compare command.
    void toggleCompare();
    // The save question while the document is changed: false on Cancel, and on a Yes whose
    // save dialog was cancelled when onlyIfSaved.
    bool settleChanges(bool onlyIfSaved);
    // The routed Save; true when its dialog was not cancelled.
    bool saveForQuestion();

    platform::Platform& m_platform;
    platform::FrameWindows& m_windows;
    session::Session& m_session;
    documents::Analyze& m_analyze;
    comparison::Compare& m_compare;
    std::string m_programDirectory;
    platform::CommonDialog m_dialog; // the frame's own, for the printer setup
};

} // namespace titron::shell
