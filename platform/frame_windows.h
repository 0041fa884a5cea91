// The windows of the program as the shell logic drives them: the splash, the frame, the
// Analyze child, the About box, and the desktop's handler for the help file. Lengths are
// twips (1/1440 inch); the implementation converts them with the screen's resolution.
#pragma once

#include <string>

namespace titron::platform {

struct TwipSize {
    int height = 0;
    int width = 0;
};

// The frame's window states, numbered as the settings file stores them.
enum class WindowState { Normal = 0, Minimised = 1, Maximised = 2 };

class FrameWindows {
  public:
    virtual ~FrameWindows() = default;
    virtual TwipSize screenSize() = 0;
    // The frame's own size before the settings place it.
    virtual TwipSize frameSize() = 0;
    // TitleForm, shown without blocking and kept above every other window.
    virtual void showSplash() = 0;
    virtual void closeSplash() = 0;
    virtual void placeFrame(WindowState state, int left, int top, int height, int width) = 0;
    virtual void showFrame() = 0;
    // Analyze, maximised inside the frame (its load is the caller's).
    virtual void showAnalyze() = 0;
    virtual void repaintAnalyze() = 0;
    // Compare, maximised in front of Analyze, and hidden again (its rows are the caller's).
    virtual void showCompare() = 0;
    virtual void hideCompare() = 0;
    // AboutHelp, modal: returns when the user closed it.
    virtual void showAbout() = 0;
    // Opens a file with the desktop's handler for its type; false if none took it.
    virtual bool openWithDesktop(const std::string& path) = 0;
    // Closes the frame by the same road as its close box (the exit question included).
    virtual void closeFrame() = 0;
    // Ends the process at once, asking and saving nothing.
    virtual void endProgram() = 0;
};

} // namespace titron::platform
