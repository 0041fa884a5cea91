// The start-up of the program, as the load of the frame runs it: splash, settings, the
// frame's place, the Analyze window, and the splash taken away again. A failure on the way
// goes to the failure reporter, which may end the program or let the user retry the step.
#pragma once

#include <string>

#include "documents/analyze.h"
#include "platform/frame_windows.h"
#include "platform/platform.h"
#include "session/session.h"

namespace titron::shell {

// The help file, looked for in the program's directory.
inline constexpr const char* kHelpFileName = "TITRO.HLP";
// How long start-up waits after placing the frame and after showing Analyze; together they
// are how long the splash stands (milliseconds).
inline constexpr int kWaitAfterPlacing = 1000;
inline constexpr int kWaitAfterAnalyze = 3000;
// The failure path's pauses, after taking the splash away and after showing the frame.
inline constexpr int kWaitOnFailure = 1000;

enum class StartupOutcome {
    Ready,      // every step ran: the document is new and Analyze is shown
    Stopped,    // a step failed and the user did not retry: the program runs on as it is
    EndProgram, // a failure of the stop kind: the program must end at once
};

class Startup {
  public:
    Startup(platform::Platform& platform, platform::FrameWindows& windows,
            session::Session& session, documents::Analyze& analyze);

    StartupOutcome run();

    // The step that failed last (1 to 13), 0 if none did.
    int failedStep() const { return m_failedStep; }

  private:
    void runStep(int step);
    // The failure path: true when the user chose to retry the step.
    bool reportFailure(int failureNumber, StartupOutcome& outcome);

    platform::Platform& m_platform;
    platform::FrameWindows& m_windows;
    session::Session& m_session;
    documents::Analyze& m_analyze;
    int m_failedStep = 0;
};

} // namespace titron::shell
