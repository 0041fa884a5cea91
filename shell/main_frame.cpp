#include "shell/main_frame.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "analysis/report.h"
#include "documents/save_question.h"

namespace titron::shell {

namespace {

// Commands whose windows are not part of the program yet. They keep their places in the
// menu and on the toolbar, disabled, so that nothing pretends to work.
constexpr Command kNotYetAvailable[] = {Command::AnalyzeCompare, Command::CompareToggle};

constexpr const char* kHelpTitle = "HELP CONTENTS";

} // namespace

Main::Main(platform::Platform& platform, platform::FrameWindows& windows, Session& session,
           documents::Analyze& analyze, std::string programDirectory)
    : m_platform(platform), m_windows(windows), m_session(session), m_analyze(analyze),
      m_programDirectory(std::move(programDirectory)) {
    for (Command command : kNotYetAvailable) {
        m_session.frame.setAvailable(command, false);
    }
}

void Main::menuClick(std::string_view name) {
    const auto& items = m_session.frame.menuItems();
    auto found = std::find_if(items.begin(), items.end(),
                              [name](const MenuItem& item) { return item.name == name; });
    if (found == items.end() || found->separator() || !found->visible || !found->usable()) {
        return;
    }
    run(found->command);
}

// The key is compared with each button's key in turn, and the button then does what its
// menu item does.
void Main::toolbarClick(std::string_view key) {
    for (const ToolButton& b : m_session.frame.toolButtons()) {
        if (!b.separator() && b.key == key) {
            if (b.visible && b.usable()) {
                run(b.command);
            }
            return;
        }
    }
}

void Main::run(Command command) {
    using documents::Analyze;
    switch (command) {
    case Command::FileNew:
        m_analyze.subFileNew();
        break;
    case Command::FileOpen:
        routed(&Analyze::subFileOpen);
        break;
    case Command::FileSave:
        routed(&Analyze::subFileSave);
        break;
    case Command::FileCopy:
        routed(&Analyze::subFileCopy);
        break;
    case Command::FilePrint:
        routed(&Analyze::subFilePrint);
        break;
    case Command::FilePrintSetup:
        // Whatever the user does in it, nothing of the outcome is looked at.
        m_dialog.flags = platform::dialog_flag::PrintSetup;
        m_platform.commonDialogs.showPrinter(m_dialog);
        break;
    case Command::FileExit:
        m_windows.closeFrame();
        break;
    case Command::EditInsert:
        m_analyze.subEditInsert();
        break;
    case Command::EditDelete:
        routed(&Analyze::subEditDelete);
        break;
    case Command::AnalyzeAnalyze:
        m_analyze.subAnalyze();
        break;
    case Command::HelpContents:
        helpContents();
        break;
    case Command::HelpAbout:
        m_windows.showAbout();
        break;
    case Command::DropCut:
        m_analyze.subDropCut();
        break;
    case Command::DropCopy:
        m_analyze.subDropCopy();
        break;
    case Command::DropPaste:
        m_analyze.subDropPaste();
        break;
    case Command::DropDelete:
        m_analyze.subDropDelete();
        break;
    case Command::DropFill:
        m_analyze.subDropFill();
        break;
    default:
        // The chart was never built; the others are not available yet.
        break;
    }
}

// A routed command is the comparison window's own while that is visible.
void Main::routed(void (documents::Analyze::*command)()) {
    if (!compareVisible()) {
        (m_analyze.*command)();
    }
}

bool Main::saveForQuestion() {
    run(Command::FileSave);
    return !m_analyze.CMDialog().fileName.empty();
}

bool Main::queryClose() {
    return settleChanges(true);
}

bool Main::settleBeforeCompare() {
    return settleChanges(false);
}

bool Main::settleChanges(bool onlyIfSaved) {
    if (m_session.AnalysisChanged == kUnchanged) {
        return true;
    }
    switch (documents::askSaveQuestion(m_platform.dialogs, documents::kSaveQuestion)) {
    case platform::Answer::Cancel:
        return false;
    case platform::Answer::Yes:
        return saveForQuestion() || !onlyIfSaved;
    default:
        return true;
    }
}

void Main::openGivenFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error).lexically_normal();
    const std::string fullPath = error ? path : full.string();
    if (!error) {
        m_platform.files.setCurrentDirectory(full.parent_path().string());
    }
    m_analyze.CMDialog().fileName = fullPath;
    m_analyze.openDocument(fullPath);
}

void Main::helpContents() {
    const std::string path = m_programDirectory + "/" + m_session.HelpFile;
    const std::string lineEnd(analysis::kLineEnd);
    std::string problem;
    if (!m_platform.files.exists(path)) {
        problem = "The help file " + m_session.HelpFile + " was not found. It was looked for in" +
                  lineEnd + m_programDirectory;
    } else if (!m_windows.openWithDesktop(path)) {
        problem = "No program of this desktop opens the help file" + lineEnd + path;
    }
    if (!problem.empty()) {
        m_platform.dialogs.messageBox(
            {kHelpTitle, problem, platform::Buttons::Ok, platform::Icon::Information});
    }
}

} // namespace titron::shell
