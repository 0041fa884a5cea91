// Windows and a platform that write what they are asked into one shared log, so that tests
// can check the order of window steps, waits and pointer changes together.
#pragma once

#include <string>
#include <vector>

#include "platform/frame_windows.h"
#include "platform/scripted_platform.h"
#include "vocabulary/failure.h"

namespace titron::shell::testing {

class LoggingPlatform : public platform::ScriptedPlatform {
  public:
    void setBusy(bool busy) override {
        ScriptedPlatform::setBusy(busy);
        log.push_back(busy ? "busy" : "normal");
    }
    void processQueuedEvents() override { log.push_back("events"); }
    void wait(int milliseconds) override { log.push_back("wait " + std::to_string(milliseconds)); }
    platform::Answer messageBox(const platform::MessageBoxRequest& request) override {
        log.push_back("box " + request.title);
        return ScriptedPlatform::messageBox(request);
    }

    std::vector<std::string> log;
};

class RecordingWindows : public platform::FrameWindows {
  public:
    explicit RecordingWindows(std::vector<std::string>& log) : m_log(log) {}

    // The next call of the named step throws a failure with this number.
    void failOnce(const std::string& step, int failureNumber) {
        m_failStep = step;
        m_failNumber = failureNumber;
    }

    platform::TwipSize screenSize() override { return screen; }
    platform::TwipSize frameSize() override { return frame; }
    void showSplash() override { step("splash"); }
    void closeSplash() override { step("close splash"); }
    void placeFrame(platform::WindowState state, int left, int top, int height,
                    int width) override {
        step("place", std::to_string(static_cast<int>(state)) + " " + std::to_string(left) + " " +
                          std::to_string(top) + " " + std::to_string(height) + " " +
                          std::to_string(width));
    }
    void showFrame() override { step("show frame"); }
    void showAnalyze() override { step("show analyze"); }
    void repaintAnalyze() override { step("repaint analyze"); }
    void showAbout() override { step("about"); }
    bool openWithDesktop(const std::string& path) override {
        step("open", path);
        return desktopOpens;
    }
    void showCompare() override { step("show compare"); }
    void hideCompare() override { step("hide compare"); }
    void closeFrame() override { step("close frame"); }
    void endProgram() override { step("end program"); }

    platform::TwipSize screen{11520, 15360};
    platform::TwipSize frame{7200, 9600};
    bool desktopOpens = true;

  private:
    void step(const std::string& name, const std::string& detail = {}) {
        const std::string what = detail.empty() ? name : name + " " + detail;
        if (!m_failStep.empty() && name == m_failStep) {
            m_failStep.clear();
            m_log.push_back(what + " failed");
            throw vocabulary::Failure(m_failNumber);
        }
        m_log.push_back(what);
    }

    std::vector<std::string>& m_log;
    std::string m_failStep;
    int m_failNumber = 0;
};

} // namespace titron::shell::testing
