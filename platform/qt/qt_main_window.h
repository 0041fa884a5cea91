// The frame Main: the menu bar, the toolbar "tool" and the MDI area holding Analyze and
// Compare, one of them in front. The menus and buttons are drawn from the session's
// FrameModel and redrawn when it changes; clicks go to the shell::Main logic.
#pragma once

#include <string>
#include <vector>

#include <QMainWindow>

#include "comparison/compare.h"
#include "documents/analyze.h"
#include "session/frame_model.h"
#include "session/session.h"
#include "shell/main_frame.h"

class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;

namespace titron::qt {

class QtAnalyzeWindow;
class QtCompareWindow;
class QtShortcutGuard;

class QtMainWindow : public QMainWindow {
  public:
    QtMainWindow(session::Session& session, documents::Analyze& analyze,
                 comparison::Compare& compare, QWidget* parent = nullptr);
    ~QtMainWindow() override;

    // The frame logic that clicks go to. It is made after the window (it needs the
    // windows), so it is handed over once it exists.
    void setMain(shell::Main& main) { m_main = &main; }

    QtAnalyzeWindow* analyzeWindow() const { return m_analyzeWindow; }
    QMdiSubWindow* analyzeSubWindow() const { return m_analyzeSubWindow; }
    QtCompareWindow* compareWindow() const { return m_compareWindow; }
    QMdiSubWindow* compareSubWindow() const { return m_compareSubWindow; }
    QToolBar* toolBar() const { return m_toolBar; }
    // The action that shows a menu item (a menu's own action for a menu of the bar).
    QAction* menuAction(session::MenuItem item) const;

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildMenus();
    void buildToolBar();
    void render();
    void showCaption();
    void showPopup(session::PopupRequest at);
    void menuClicked(session::MenuItem item);
    void toolClicked(const std::string& key);
    // The keyboard focus to where the window in front keeps it.
    void followFocus();

    session::Session& m_session;
    comparison::Compare& m_compare;
    shell::Main* m_main = nullptr;
    QMdiArea* m_mdiArea;
    QtAnalyzeWindow* m_analyzeWindow;
    QMdiSubWindow* m_analyzeSubWindow;
    QtCompareWindow* m_compareWindow;
    QMdiSubWindow* m_compareSubWindow;
    QToolBar* m_toolBar;
    QtShortcutGuard* m_shortcutGuard;
    // One action per item and per button, in the model's order.
    std::vector<QAction*> m_itemActions;
    std::vector<QAction*> m_buttonActions;
    QMenu* m_popupMenu = nullptr;
};

} // namespace titron::qt
