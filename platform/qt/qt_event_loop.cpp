#include "platform/qt/qt_event_loop.h"

#include <algorithm>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

namespace titron::qt {

namespace {

// Short enough that painting stays smooth, long enough not to spin.
constexpr qint64 kSliceMilliseconds = 10;

} // namespace

void QtEventLoop::processQueuedEvents() {
    QCoreApplication::processEvents();
}

void QtEventLoop::wait(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    for (qint64 left = milliseconds; left > 0; left = milliseconds - clock.elapsed()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(static_cast<unsigned long>(std::min(left, kSliceMilliseconds)));
    }
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace titron::qt
