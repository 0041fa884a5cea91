#include "platform/qt/qt_clock.h"

#include <QDate>

namespace titron::qt {

platform::CalendarDate QtClock::today() {
    const QDate date = QDate::currentDate();
    return {date.year(), date.month(), date.day()};
}

} // namespace titron::qt
