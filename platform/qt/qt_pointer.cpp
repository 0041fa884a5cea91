#include "platform/qt/qt_pointer.h"

#include <QApplication>
#include <QCursor>

namespace titron::qt {

QtPointer::~QtPointer() {
    setBusy(false);
}

void QtPointer::setBusy(bool busy) {
    if (busy == m_busy) {
        return;
    }
    m_busy = busy;
    if (busy) {
        QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    } else {
        QApplication::restoreOverrideCursor();
    }
}

} // namespace titron::qt
