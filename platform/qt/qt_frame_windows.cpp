#include "platform/qt/qt_frame_windows.h"

#include <cstdio>
#include <cstdlib>

#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QUrl>

#include "platform/qt/qt_about_help.h"
#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_compare_window.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_title_form.h"
#include "platform/qt/qt_twips.h"

namespace titron::qt {

namespace {

Qt::WindowState qtState(platform::WindowState state) {
    switch (state) {
    case platform::WindowState::Minimised:
        return Qt::WindowMinimized;
    case platform::WindowState::Maximised:
        return Qt::WindowMaximized;
    case platform::WindowState::Normal:
        break;
    }
    return Qt::WindowNoState;
}

} // namespace

QtFrameWindows::QtFrameWindows(QtMainWindow& window) : m_window(window) {
}

QtFrameWindows::~QtFrameWindows() = default;

platform::TwipSize QtFrameWindows::screenSize() {
    const QScreen* screen = m_window.screen();
    const QRect available = screen != nullptr ? screen->availableGeometry() : QRect();
    return {pixelsToTwipsY(available.height(), m_window),
            pixelsToTwipsX(available.width(), m_window)};
}

platform::TwipSize QtFrameWindows::frameSize() {
    return {pixelsToTwipsY(m_window.height(), m_window),
            pixelsToTwipsX(m_window.width(), m_window)};
}

void QtFrameWindows::showSplash() {
    m_splash = std::make_unique<QtTitleForm>();
    m_splash->showCentred();
}

void QtFrameWindows::closeSplash() {
    m_splash.reset();
}

void QtFrameWindows::placeFrame(platform::WindowState state, int left, int top, int height,
                                int width) {
    m_window.move(twipsToPixelsX(left, m_window), twipsToPixelsY(top, m_window));
    m_window.resize(twipsToPixelsX(width, m_window), twipsToPixelsY(height, m_window));
    m_window.setWindowState(qtState(state));
}

void QtFrameWindows::showFrame() {
    m_window.show();
    // Where the desktop doesn't keep the splash on top by itself, it goes back over the
    // frame that has just come up.
    if (m_splash != nullptr) {
        m_splash->raise();
    }
}

void QtFrameWindows::showAnalyze() {
    if (!m_window.isVisible()) {
        showFrame();
    }
    QMdiSubWindow* child = m_window.analyzeSubWindow();
    child->showMaximized();
    child->mdiArea()->setActiveSubWindow(child);
    m_window.analyzeWindow()->applyGridHeight();
}

void QtFrameWindows::repaintAnalyze() {
    m_window.analyzeSubWindow()->repaint();
}

// Compare comes up before Analyze goes, so that the focus never wanders out of the frame's
// children. Analyze stays hidden while Compare is in front: nothing can bring it forward.
void QtFrameWindows::showCompare() {
    QMdiSubWindow* compare = m_window.compareSubWindow();
    compare->showMaximized();
    compare->mdiArea()->setActiveSubWindow(compare);
    m_window.compareWindow()->gridView()->setFocus(Qt::OtherFocusReason);
    m_window.analyzeSubWindow()->hide();
}

void QtFrameWindows::hideCompare() {
    QMdiSubWindow* analyze = m_window.analyzeSubWindow();
    analyze->showMaximized();
    analyze->mdiArea()->setActiveSubWindow(analyze);
    m_window.compareSubWindow()->hide();
    m_window.analyzeWindow()->followFocus();
}

void QtFrameWindows::showAbout() {
    QtAboutHelp about(&m_window);
    about.exec();
}

bool QtFrameWindows::openWithDesktop(const std::string& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFile::decodeName(path.c_str())));
}

void QtFrameWindows::closeFrame() {
    m_window.close();
}

void QtFrameWindows::endProgram() {
    std::fflush(nullptr);
    std::_Exit(1);
}

} // namespace titron::qt
