// The headless platform: answers are scripted in advance (one queue per kind of question)
// and every box, input box, pointer change and clipboard write is recorded in a
// transcript. Tests read the transcript; the command line answers through a responder.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/local_files.h"
#include "platform/platform.h"

namespace titron::platform {

struct ShownBox {
    MessageBoxRequest request;
    Answer answer;
    bool pointerBusy; // the pointer's state while the box was up
};

struct ShownInput {
    InputBoxRequest request;
    std::string answer;
};

class ScriptedPlatform : public Dialogs,
                         public Pointer,
                         public EventLoop,
                         public Clipboard,
                         public Clock,
                         public CommonDialogs,
                         public Printer {
  public:
    ScriptedPlatform();

    // The services, with files on the local file system.
    Platform& services() { return m_services; }

    // Answers for the next boxes, in order. A box with no answer queued takes its
    // default button.
    void queueAnswer(Answer answer) { m_answers.push_back(answer); }
    // Entries for the next input boxes, in order. With none queued, an input box is
    // cancelled (the empty text) unless a responder is set.
    void queueInput(std::string entry) { m_inputs.push_back(std::move(entry)); }
    void setInputResponder(std::function<std::string(const InputBoxRequest&)> responder) {
        m_inputResponder = std::move(responder);
    }
    void setToday(CalendarDate date) { m_today = date; }
    // The outcome of the next file dialogs, in order: a path chooses it, nullopt cancels. With
    // none queued a file dialog is cancelled. An accepted dialog makes the chosen file's
    // directory current, as a desktop's file dialog does.
    void queueFileChoice(std::optional<std::string> path) {
        m_fileChoices.push_back(std::move(path));
    }
    // The outcome of the next printer dialogs; with none queued a printer dialog is cancelled.
    void queuePrinterChoice(bool accepted) { m_printerChoices.push_back(accepted); }

    // Off, only the boxes are kept, and the input boxes are counted: a caller that answers
    // input boxes without end (the command line's passes) keeps its memory flat.
    void keepHistory(bool keep) { m_keepHistory = keep; }

    const std::vector<ShownBox>& boxes() const { return m_boxes; }
    const std::vector<ShownInput>& inputs() const { return m_shownInputs; }
    std::size_t inputCount() const { return m_inputCount; }
    // Everything that happened, one readable line per call, in order.
    const std::vector<std::string>& transcript() const { return m_transcript; }
    bool pointerBusy() const { return m_busy; }
    void clearTranscript();

    // Dialogs
    Answer messageBox(const MessageBoxRequest& request) override;
    std::string inputBox(const InputBoxRequest& request) override;
    // Pointer
    void setBusy(bool busy) override;
    // EventLoop: there are no queued window events without windows; both only record.
    void processQueuedEvents() override;
    void wait(int milliseconds) override;
    // Clipboard, in memory
    void clear() override;
    void setText(const std::string& text) override;
    bool hasText() override { return m_hasClipboardText; }
    std::string text() override { return m_clipboard; }
    // Clock
    CalendarDate today() override { return m_today; }
    // CommonDialogs: recorded with their fields as "open dialog [title] flags ... file ..."
    bool showOpen(CommonDialog& dialog) override;
    bool showSave(CommonDialog& dialog) override;
    bool showPrinter(CommonDialog& dialog) override;
    // Printer: every operation is recorded as one "printer ..." line.
    void setLeftOrigin(int twips) override;
    void setOrientation(Orientation orientation) override;
    void setFontName(const std::string& name) override;
    void setFontSize(double points) override;
    void setEmphasis(bool on) override;
    void printText(const std::string& text) override;
    void endDocument() override;

  private:
    bool showFileDialog(const char* kind, CommonDialog& dialog);
    void record(std::string line);
    void recordPrinter(const std::string& operation);

    LocalFiles m_files;
    Platform m_services;
    std::deque<Answer> m_answers;
    std::deque<std::string> m_inputs;
    std::function<std::string(const InputBoxRequest&)> m_inputResponder;
    std::vector<ShownBox> m_boxes;
    std::vector<ShownInput> m_shownInputs;
    std::vector<std::string> m_transcript;
    std::size_t m_inputCount = 0;
    bool m_keepHistory = true;
    bool m_busy = false;
    std::string m_clipboard;
    bool m_hasClipboardText = false;
    CalendarDate m_today{2026, 11, 23};
    std::deque<std::optional<std::string>> m_fileChoices;
    std::deque<bool> m_printerChoices;
};

// The answer of a box's default button.
Answer defaultAnswer(const MessageBoxRequest& request);

} // namespace titron::platform
