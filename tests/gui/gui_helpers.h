// Helpers of the GUI tests: acting on a modal window or a pop-up menu once it is up, from
// inside the nested event loop that shows it.
#pragma once

#include <functional>

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace titron::qt::testing {

// Polls until a window of the kind is up, then hands it to act (once). act must close it,
// or the caller stays in the window's loop.
template <typename Window>
void whenUp(std::function<Window*()> find, std::function<void(Window*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, find, act] {
        Window* window = find();
        if (window == nullptr || !window->isVisible()) {
            return;
        }
        timer->stop();
        timer->deleteLater();
        act(window);
    });
    timer->start();
}

inline void whenModal(std::function<void(QWidget*)> act) {
    whenUp<QWidget>([] { return QApplication::activeModalWidget(); }, std::move(act));
}

inline void whenPopup(std::function<void(QMenu*)> act) {
    whenUp<QMenu>([] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); },
                  std::move(act));
}

// Types the characters as key presses; QTest::keyClicks takes only ASCII.
inline void typeCharacters(QWidget* widget, const QString& text) {
    for (const QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

} // namespace titron::qt::testing
