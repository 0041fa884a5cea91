#include "platform/qt/qt_main_window.h"

#include <map>

#include <QCloseEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTextEdit>
#include <QToolBar>

#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_compare_window.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_shortcut_guard.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_tool_icons.h"

namespace titron::qt {

QtMainWindow::QtMainWindow(session::Session& session, documents::Analyze& analyze,
                           comparison::Compare& compare, QWidget* parent)
    : QMainWindow(parent), m_session(session), m_compare(compare) {
    setObjectName(QStringLiteral("Main"));
    m_mdiArea = new QMdiArea(this);
    m_mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_mdiArea);

    // No close boxes: the rest of the program counts on both windows being there; the
    // Compare button alone takes Compare away.
    const Qt::WindowFlags noCloseBox =
        Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    m_analyzeWindow = new QtAnalyzeWindow(analyze);
    m_analyzeSubWindow = m_mdiArea->addSubWindow(m_analyzeWindow, noCloseBox);
    m_analyzeSubWindow->installEventFilter(this);
    m_analyzeSubWindow->hide();
    m_compareWindow = new QtCompareWindow(compare);
    m_compareSubWindow = m_mdiArea->addSubWindow(m_compareWindow, noCloseBox);
    m_compareSubWindow->installEventFilter(this);
    m_compareSubWindow->hide();

    m_shortcutGuard = new QtShortcutGuard(this);
    buildMenus();
    buildToolBar();
    m_analyzeWindow->nameBox()->installEventFilter(m_shortcutGuard);
    m_analyzeWindow->resultsPane()->installEventFilter(m_shortcutGuard);

    session.frame.setListener([this] { render(); });
    session.frame.setPopupListener([this](session::PopupRequest at) { showPopup(at); });
    session.frameCaption.setListener([this] { showCaption(); });
    render();
    showCaption();
}

QtMainWindow::~QtMainWindow() {
    m_session.frame.setListener(nullptr);
    m_session.frame.setPopupListener(nullptr);
    m_session.frameCaption.setListener(nullptr);
}

// Every way of closing the frame (its close box, Exit, the desktop) asks the exit question.
void QtMainWindow::closeEvent(QCloseEvent* event) {
    if (m_main != nullptr && !m_main->queryClose()) {
        event->ignore();
        return;
    }
    event->accept();
}

bool QtMainWindow::eventFilter(QObject* watched, QEvent* event) {
    if ((watched == m_analyzeSubWindow || watched == m_compareSubWindow) &&
        event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

// Every menu of the model becomes a menu of the bar, the pop-up included: the model keeps
// it hidden there, and showPopup opens the same menu at the grid.
void QtMainWindow::buildMenus() {
    std::map<session::MenuItem, QMenu*> menus;
    QList<QKeySequence> shortcuts;
    for (const session::MenuEntry& item : m_session.frame.menuItems()) {
        const QString caption = fromLatin1(item.caption);
        QAction* action = nullptr;
        if (!item.parent) {
            QMenu* menu = menuBar()->addMenu(caption);
            menus[item.item] = menu;
            action = menu->menuAction();
        } else if (item.separator()) {
            action = menus.at(*item.parent)->addSeparator();
        } else {
            action = menus.at(*item.parent)->addAction(caption);
            const session::MenuItem clicked = item.item;
            connect(action, &QAction::triggered, this, [this, clicked] { menuClicked(clicked); });
        }
        if (!item.shortcut.empty()) {
            const QKeySequence shortcut(fromLatin1(item.shortcut), QKeySequence::PortableText);
            action->setShortcut(shortcut);
            shortcuts.append(shortcut);
        }
        m_itemActions.push_back(action);
    }
    m_popupMenu = menus.at(session::MenuItem::DropEdit);
    m_shortcutGuard->setShortcuts(shortcuts);
}

void QtMainWindow::buildToolBar() {
    m_toolBar = addToolBar(QStringLiteral("tool"));
    m_toolBar->setObjectName(QStringLiteral("tool"));
    m_toolBar->setMovable(false);
    m_toolBar->setFloatable(false);
    m_toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const session::ToolButton& button : m_session.frame.toolButtons()) {
        if (button.separator()) {
            m_buttonActions.push_back(m_toolBar->addSeparator());
            continue;
        }
        const QString tip = fromLatin1(button.toolTip);
        QAction* action = m_toolBar->addAction(toolIcon(button.key, *style()), tip);
        action->setObjectName(fromLatin1(button.key));
        action->setToolTip(tip);
        const std::string key = button.key;
        connect(action, &QAction::triggered, this, [this, key] { toolClicked(key); });
        m_buttonActions.push_back(action);
    }
}

void QtMainWindow::render() {
    const auto& items = m_session.frame.menuItems();
    for (std::size_t i = 0; i < items.size(); ++i) {
        m_itemActions[i]->setVisible(items[i].visible);
        m_itemActions[i]->setEnabled(items[i].usable());
    }
    const auto& buttons = m_session.frame.toolButtons();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        QAction* action = m_buttonActions[i];
        action->setVisible(buttons[i].visible);
        action->setEnabled(buttons[i].usable());
        // Only a pressed button is checkable, so that a click never leaves one looking
        // pressed that the model does not hold down.
        action->setCheckable(buttons[i].pressed);
        action->setChecked(buttons[i].pressed);
    }
}

void QtMainWindow::showCaption() {
    QString caption = fromLatin1(m_session.frameCaption.text());
    // "[*]" is Qt's mark for unsaved changes; doubled, it shows as itself.
    caption.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    setWindowTitle(caption);
}

void QtMainWindow::showPopup(session::PopupRequest at) {
    const QWidget* viewport = m_analyzeWindow->gridView()->viewport();
    m_popupMenu->exec(viewport->mapToGlobal(QPoint(at.x, at.y)));
}

QAction* QtMainWindow::menuAction(session::MenuItem item) const {
    return m_itemActions.at(static_cast<std::size_t>(item));
}

void QtMainWindow::menuClicked(session::MenuItem item) {
    if (m_main != nullptr) {
        m_main->menuClick(item);
    }
    followFocus();
}

void QtMainWindow::toolClicked(const std::string& key) {
    if (m_main != nullptr) {
        m_main->toolbarClick(key);
    }
    render();
    followFocus();
}

// Analyze's controls are hidden while Compare is in front: the focus must not go to them.
void QtMainWindow::followFocus() {
    if (m_compare.visible()) {
        m_compareWindow->gridView()->setFocus(Qt::OtherFocusReason);
    } else {
        m_analyzeWindow->followFocus();
    }
}

} // namespace titron::qt
