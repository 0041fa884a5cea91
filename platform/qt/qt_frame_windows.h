// The windows that start-up and the frame logic drive, on Qt: the splash, the frame, the
// Analyze and Compare children, the About box and the desktop's file handler.
#pragma once

#include <memory>

#include "platform/frame_windows.h"

namespace titron::qt {

class QtMainWindow;
class QtTitleForm;

class QtFrameWindows : public platform::FrameWindows {
  public:
    explicit QtFrameWindows(QtMainWindow& window);
    ~QtFrameWindows() override;

    platform::TwipSize screenSize() override;
    platform::TwipSize frameSize() override;
    void showSplash() override;
    void closeSplash() override;
    void placeFrame(platform::WindowState state, int left, int top, int height, int width) override;
    void showFrame() override;
    void showAnalyze() override;
    void repaintAnalyze() override;
    void showCompare() override;
    void hideCompare() override;
    void showAbout() override;
    bool openWithDesktop(const std::string& path) override;
    void closeFrame() override;
    void endProgram() override;

    // The splash while it stands; null before and after.
    QtTitleForm* splash() const { return m_splash.get(); }

  private:
    QtMainWindow& m_window;
    std::unique_ptr<QtTitleForm> m_splash;
};

} // namespace titron::qt
