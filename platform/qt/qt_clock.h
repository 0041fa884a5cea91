// Today's date from the system clock.
#pragma once

#include "platform/platform.h"

namespace titron::qt {

class QtClock : public platform::Clock {
  public:
    platform::CalendarDate today() override;
};

} // namespace titron::qt
