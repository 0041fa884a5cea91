#include "shell/main_frame.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "analysis/report.h"
#include "documents/save_question.h"
#include "shell/help_document.h"

namespace titron::shell {

namespace {

constexpr const char* kHelpTitle = "HELP CONTENTS";

} // namespace

Main::Main(platform::Platform& platform, platform::FrameWindows& windows, session::Session& session,
           documents::Analyze& analyze, comparison::Compare& compare, std::string programDirectory)
    : m_platform(platform), m_windows(windows), m_session(session), m_analyze(analyze),
      m_compare(compare), m_programDirectory(std::move(programDirectory)) {
}

void Main::menuClick(session::MenuItem item) {
    const session::MenuEntry& entry = m_session.frame.item(item);
    if (entry.separator() || !entry.visible || !entry.usable()) {
        return;
    }
    run(entry.command);
}

// The key is compared with each button's key in turn, and the button then does what its
// menu item does.
void Main::toolbarClick(std::string_view key) {
    for (const session::ToolButton& b : m_session.frame.toolButtons()) {
        if (!b.separator() && b.key == key) {
            if (b.visible && b.usable()) {
                run(b.command);
            }
            return;
        }
    }
}

void Main::run(session::Command command) {
    using comparison::Compare;
    using documents::Analyze;
    switch (command) {
    case session::Command::FileNew:
        m_analyze.newFile();
        break;
    case session::Command::FileOpen:
        routed(&Analyze::openFile, &Compare::openFile);
        break;
    case session::Command::FileSave:
        routed(&Analyze::saveFile, &Compare::saveFile);
        break;
    case session::Command::FileCopy:
        routed(&Analyze::copyFile, &Compare::copyFile);
        break;
    case session::Command::FilePrint:
        routed(&Analyze::printFile, &Compare::printFile);
        break;
    case session::Command::FilePrintSetup:
        // Whatever the user does in it, nothing of the outcome is looked at.
        m_dialog.flags = platform::dialog_flag::PrintSetup;
        m_platform.commonDialogs.showPrinter(m_dialog);
        break;
    case session::Command::FileExit:
        m_windows.closeFrame();
        break;
    case session::Command::EditInsert:
        m_analyze.editInsert();
        break;
    case session::Command::EditDelete:
        routed(&Analyze::editDelete, &Compare::editDelete);
        break;
    case session::Command::AnalyzeAnalyze:
        m_analyze.analyze();
        break;
    case session::Command::AnalyzeCompare:
        compareCommand();
        break;
    case session::Command::CompareToggle:
        toggleCompare();
        break;
    case session::Command::HelpContents:
        helpContents();
        break;
    case session::Command::HelpAbout:
        m_windows.showAbout();
        break;
    case session::Command::DropCut:
        m_analyze.dropCut();
        break;
    case session::Command::DropCopy:
        m_analyze.dropCopy();
        break;
    case session::Command::DropPaste:
        m_analyze.dropPaste();
        break;
    case session::Command::DropDelete:
        m_analyze.dropDelete();
        break;
    case session::Command::DropFill:
        m_analyze.dropFill();
        break;
    default:
        // The chart was never built.
        break;
    }
}

void Main::routed(void (documents::Analyze::*onAnalyze)(),
                  void (comparison::Compare::*onCompare)()) {
    if (compareVisible()) {
        (m_compare.*onCompare)();
    } else {
        (m_analyze.*onAnalyze)();
    }
}

void Main::compareCommand() {
    if (!settleChanges(false)) {
        return;
    }
    m_platform.pointer.setBusy(true);
    m_windows.showCompare();
    m_compare.show();
}

void Main::toggleCompare() {
    if (!compareVisible()) {
        compareCommand();
        return;
    }
    m_compare.hide();
    m_windows.hideCompare();
    m_analyze.setFocus(documents::Control::AnalysisName);
}

// The save of the window in front; its dialog's file name is empty when it was cancelled.
bool Main::saveForQuestion() {
    run(session::Command::FileSave);
    return !(compareVisible() ? m_compare.commonDialog() : m_analyze.commonDialog())
                .fileName.empty();
}

bool Main::queryClose() {
    return settleChanges(true);
}

bool Main::settleChanges(bool onlyIfSaved) {
    if (m_session.AnalysisChanged == session::kUnchanged) {
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
    m_analyze.commonDialog().fileName = fullPath;
    m_analyze.openDocument(fullPath);
}

void Main::helpContents() {
    const std::optional<std::string> document =
        helpDocument(m_programDirectory, m_session.HelpFile,
                     [this](const std::string& path) { return m_platform.files.exists(path); });
    const std::string lineEnd(analysis::kLineEnd);
    std::string problem;
    if (!document) {
        problem = "The help file " + m_session.HelpFile + " was not found. It was looked for in" +
                  lineEnd + m_programDirectory + lineEnd + "The manual was not found either. It" +
                  " was looked for as";
        for (const std::string& place : manualPlaces(m_programDirectory)) {
            problem += lineEnd + place;
        }
    } else if (!m_windows.openWithDesktop(*document)) {
        problem = "No program of this desktop opens the help file" + lineEnd + *document;
    }
    if (!problem.empty()) {
        m_platform.dialogs.messageBox(
            {kHelpTitle, problem, platform::Buttons::Ok, platform::Icon::Information});
    }
}

} // namespace titron::shell
