#include "shell/startup.h"

#include <new>

#include "shell/error_reporter.h"
#include "shell/settings_file.h"
#include "vocabulary/failure.h"

namespace titron::shell {

namespace {

constexpr int kFirstStep = 1;
constexpr int kLastStep = 13;
constexpr int kSettingsFileStep = 7; // ignores its own failures
// An exception that carries no failure number counts as the program's own fault.
constexpr int kInternalFailure = 51;

} // namespace

Startup::Startup(platform::Platform& platform, platform::FrameWindows& windows,
                 session::Session& session, documents::Analyze& analyze)
    : m_platform(platform), m_windows(windows), m_session(session), m_analyze(analyze) {
}

StartupOutcome Startup::run() {
    int step = kFirstStep;
    while (step <= kLastStep) {
        int failureNumber = 0;
        try {
            runStep(step);
        } catch (const vocabulary::Failure& failure) {
            failureNumber = failure.number();
        } catch (const std::bad_alloc&) {
            failureNumber = vocabulary::failure::OutOfMemory;
        } catch (const std::exception&) {
            failureNumber = kInternalFailure;
        }
        if (failureNumber == 0) {
            ++step;
            continue;
        }
        m_failedStep = step;
        StartupOutcome outcome = StartupOutcome::Stopped;
        if (!reportFailure(failureNumber, outcome)) {
            return outcome;
        }
        // Retry: the same step again, and start-up goes on from it.
    }
    return StartupOutcome::Ready;
}

void Startup::runStep(int step) {
    platform::Platform& p = m_platform;
    switch (step) {
    case 1:
        p.pointer.setBusy(true);
        break;
    case 2:
        m_session.HelpFile = kHelpFileName;
        break;
    case 3:
        // The line end text CR LF is a constant of the program; nothing to make at run time.
        break;
    case 4:
        m_windows.showSplash();
        p.events.processQueuedEvents();
        break;
    case 5: {
        const platform::TwipSize screen = m_windows.screenSize();
        const platform::TwipSize frame = m_windows.frameSize();
        m_session.settings =
            defaultSettings(screen.height, screen.width, frame.height, frame.width);
        break;
    }
    case 6:
        m_session.LastDirectory = p.files.currentDirectory();
        break;
    case kSettingsFileStep:
        try {
            readSettingsFile(p.files, m_session.settings);
        } catch (...) {
            // Whatever was read before the failure stands; the defaults keep the rest.
        }
        break;
    case 8: {
        const session::AppSettings& s = m_session.settings;
        m_windows.placeFrame(static_cast<platform::WindowState>(s.WindowState), s.WindowLeft,
                             s.WindowTop, s.WindowHeight, s.WindowWidth);
        break;
    }
    case 9:
        p.events.wait(kWaitAfterPlacing);
        break;
    case 10:
        m_analyze.load();
        m_windows.showAnalyze();
        p.events.processQueuedEvents();
        m_windows.repaintAnalyze();
        break;
    case 11:
        p.events.wait(kWaitAfterAnalyze);
        break;
    case 12:
        m_windows.closeSplash();
        p.events.processQueuedEvents();
        break;
    case 13:
        p.pointer.setBusy(false);
        break;
    default:
        break;
    }
}

bool Startup::reportFailure(int failureNumber, StartupOutcome& outcome) {
    platform::Platform& p = m_platform;
    m_windows.closeSplash();
    p.events.processQueuedEvents();
    p.events.wait(kWaitOnFailure);
    m_windows.showFrame();
    p.events.processQueuedEvents();
    p.events.wait(kWaitOnFailure);
    p.pointer.setBusy(false);

    ErrorReporter reporter(p.dialogs);
    if (reporter.reportError(failureNumber) == ErrorOutcome::EndProgram) {
        outcome = StartupOutcome::EndProgram;
        return false;
    }
    const ErrorValues& values = reporter.values();
    if (values.ErrorStyle == styleRetry &&
        values.ErrorAnswer == static_cast<std::int16_t>(platform::Answer::Retry)) {
        p.pointer.setBusy(true);
        return true;
    }
    p.pointer.setBusy(false);
    outcome = StartupOutcome::Stopped;
    return false;
}

} // namespace titron::shell
