#include "platform/scripted_platform.h"

namespace titron::platform {

ScriptedPlatform::ScriptedPlatform()
    : m_services{*this, *this, *this, m_files, *this, *this, *this, *this} {
}

void ScriptedPlatform::clearTranscript() {
    m_boxes.clear();
    m_shownInputs.clear();
    m_transcript.clear();
    m_inputCount = 0;
}

void ScriptedPlatform::record(std::string line) {
    if (m_keepHistory) {
        m_transcript.push_back(std::move(line));
    }
}

Answer defaultAnswer(const MessageBoxRequest& request) {
    const auto pick = [&](std::initializer_list<Answer> buttons) {
        const auto index = static_cast<std::size_t>(request.defaultButton - 1);
        return index < buttons.size() ? *(buttons.begin() + index) : *buttons.begin();
    };
    switch (request.buttons) {
    case Buttons::Ok:
        return Answer::Ok;
    case Buttons::OkCancel:
        return pick({Answer::Ok, Answer::Cancel});
    case Buttons::AbortRetryIgnore:
        return pick({Answer::Abort, Answer::Retry, Answer::Ignore});
    case Buttons::YesNoCancel:
        return pick({Answer::Yes, Answer::No, Answer::Cancel});
    case Buttons::YesNo:
        return pick({Answer::Yes, Answer::No});
    case Buttons::RetryCancel:
        return pick({Answer::Retry, Answer::Cancel});
    }
    return Answer::Ok;
}

Answer ScriptedPlatform::messageBox(const MessageBoxRequest& request) {
    Answer answer = defaultAnswer(request);
    if (!m_answers.empty()) {
        answer = m_answers.front();
        m_answers.pop_front();
    }
    m_boxes.push_back({request, answer, m_busy});
    record("box [" + request.title + "] " + request.text);
    return answer;
}

std::string ScriptedPlatform::inputBox(const InputBoxRequest& request) {
    std::string answer;
    if (!m_inputs.empty()) {
        answer = m_inputs.front();
        m_inputs.pop_front();
    } else if (m_inputResponder) {
        answer = m_inputResponder(request);
    }
    ++m_inputCount;
    if (m_keepHistory) {
        m_shownInputs.push_back({request, answer});
    }
    record("input [" + request.title + "] " + answer);
    return answer;
}

void ScriptedPlatform::setBusy(bool busy) {
    m_busy = busy;
    record(busy ? "pointer busy" : "pointer normal");
}

void ScriptedPlatform::processQueuedEvents() {
    record("events");
}

void ScriptedPlatform::wait(int milliseconds) {
    record("wait " + std::to_string(milliseconds));
}

void ScriptedPlatform::clear() {
    m_clipboard.clear();
    m_hasClipboardText = false;
    record("clipboard clear");
}

void ScriptedPlatform::setText(const std::string& text) {
    m_clipboard = text;
    m_hasClipboardText = true;
    record("clipboard text " + text);
}

bool ScriptedPlatform::showFileDialog(const char* kind, CommonDialog& dialog) {
    std::optional<std::string> choice;
    if (!m_fileChoices.empty()) {
        choice = m_fileChoices.front();
        m_fileChoices.pop_front();
    }
    record(std::string(kind) + " dialog [" + dialog.dialogTitle + "] flags " +
           std::to_string(dialog.flags) + " ext " + dialog.defaultExt + " filter " + dialog.filter +
           " file " + dialog.fileName + (choice ? " -> " + *choice : " -> cancelled"));
    if (!choice) {
        return false;
    }
    dialog.fileName = *choice;
    const std::size_t slash = choice->rfind('/');
    if (slash != std::string::npos) {
        m_files.setCurrentDirectory(slash == 0 ? "/" : choice->substr(0, slash));
    }
    return true;
}

bool ScriptedPlatform::showOpen(CommonDialog& dialog) {
    return showFileDialog("open", dialog);
}

bool ScriptedPlatform::showSave(CommonDialog& dialog) {
    return showFileDialog("save", dialog);
}

bool ScriptedPlatform::showPrinter(CommonDialog& dialog) {
    bool accepted = false;
    if (!m_printerChoices.empty()) {
        accepted = m_printerChoices.front();
        m_printerChoices.pop_front();
    }
    record("printer dialog flags " + std::to_string(dialog.flags) +
           (accepted ? " -> accepted" : " -> cancelled"));
    return accepted;
}

void ScriptedPlatform::recordPrinter(const std::string& operation) {
    record("printer " + operation);
}

void ScriptedPlatform::setLeftOrigin(int twips) {
    recordPrinter("left origin " + std::to_string(twips));
}

void ScriptedPlatform::setOrientation(Orientation orientation) {
    recordPrinter(orientation == Orientation::Portrait ? "portrait" : "landscape");
}

void ScriptedPlatform::setFontName(const std::string& name) {
    recordPrinter("font " + name);
}

void ScriptedPlatform::setFontSize(double points) {
    std::string size = std::to_string(points);
    size.erase(size.find_last_not_of('0') + 1);
    if (!size.empty() && size.back() == '.') {
        size.pop_back();
    }
    recordPrinter("size " + size);
}

void ScriptedPlatform::setEmphasis(bool on) {
    recordPrinter(on ? "emphasis on" : "emphasis off");
}

void ScriptedPlatform::printText(const std::string& text) {
    recordPrinter("print " + text);
}

void ScriptedPlatform::endDocument() {
    recordPrinter("end document");
}

} // namespace titron::platform
