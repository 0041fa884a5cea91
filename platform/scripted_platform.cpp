#include "platform/scripted_platform.h"

namespace titron::platform {

ScriptedPlatform::ScriptedPlatform() : m_services{*this, *this, *this, m_files, *this, *this} {
}

void ScriptedPlatform::clearTranscript() {
    m_boxes.clear();
    m_shownInputs.clear();
    m_transcript.clear();
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
    m_transcript.push_back("box [" + request.title + "] " + request.text);
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
    m_shownInputs.push_back({request, answer});
    m_transcript.push_back("input [" + request.title + "] " + answer);
    return answer;
}

void ScriptedPlatform::setBusy(bool busy) {
    m_busy = busy;
    m_transcript.push_back(busy ? "pointer busy" : "pointer normal");
}

void ScriptedPlatform::processQueuedEvents() {
    m_transcript.push_back("events");
}

void ScriptedPlatform::wait(int milliseconds) {
    m_transcript.push_back("wait " + std::to_string(milliseconds));
}

void ScriptedPlatform::clear() {
    m_clipboard.clear();
    m_hasClipboardText = false;
    m_transcript.push_back("clipboard clear");
}

void ScriptedPlatform::setText(const std::string& text) {
    m_clipboard = text;
    m_hasClipboardText = true;
    m_transcript.push_back("clipboard text " + text);
}

} // namespace titron::platform
