// Queued events and the blocking wait, on Qt's event loop.
#pragma once

#include "platform/platform.h"

namespace titron::qt {

class QtEventLoop : public platform::EventLoop {
  public:
    void processQueuedEvents() override;
    // Keeps the windows painting while the time passes; the user's input waits in the
    // queue until the time is up.
    void wait(int milliseconds) override;
};

} // namespace titron::qt
