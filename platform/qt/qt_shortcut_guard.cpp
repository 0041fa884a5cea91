#include "platform/qt/qt_shortcut_guard.h"

#include <QKeyEvent>

namespace titron::qt {

QtShortcutGuard::QtShortcutGuard(QObject* parent) : QObject(parent) {
}

bool QtShortcutGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QKeySequence pressed(key->keyCombination());
        if (m_shortcuts.contains(pressed)) {
            // Not accepted: the shortcut map goes on to the frame's action.
            event->ignore();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace titron::qt
