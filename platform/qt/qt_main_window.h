// The frame Main: the menu bar, the toolbar "tool" and the MDI area holding Analyze. The
// menus and buttons are drawn from the session's FrameModel and redrawn when it changes;
// clicks go to the shell::Main logic.
#pragma once

#include <string>
#include <vector>

#include <QMainWindow>

#include "documents/analyze.h"
#include "shell/frame_model.h"
#include "shell/main_frame.h"
#include "shell/session.h"

class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;

namespace titron::qt {

class QtAnalyzeWindow;
class QtShortcutGuard;

class QtMainWindow : public QMainWindow {
  public:
    QtMainWindow(shell::Session& session, documents::Analyze& analyze, QWidget* parent = nullptr);
    ~QtMainWindow() override;

    // The frame logic that clicks go to. It is made after the window (it needs the
    // windows), so it is handed over once it exists.
    void setMain(shell::Main& main) { m_main = &main; }

    QtAnalyzeWindow* analyzeWindow() const { return m_analyzeWindow; }
    QMdiSubWindow* analyzeSubWindow() const { return m_analyzeSubWindow; }
    QToolBar* toolBar() const { return m_toolBar; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildMenus();
    void buildToolBar();
    void render();
    void showCaption();
    void showPopup(shell::PopupRequest at);
    void menuClicked(const std::string& name);
    void toolClicked(const std::string& key);

    shell::Session& m_session;
    shell::Main* m_main = nullptr;
    QMdiArea* m_mdiArea;
    QtAnalyzeWindow* m_analyzeWindow;
    QMdiSubWindow* m_analyzeSubWindow;
    QToolBar* m_toolBar;
    QtShortcutGuard* m_shortcutGuard;
    // One action per item and per button, in the model's order.
    std::vector<QAction*> m_itemActions;
    std::vector<QAction*> m_buttonActions;
    QMenu* m_popupMenu = nullptr;
};

} // namespace titron::qt
