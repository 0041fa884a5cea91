// The busy pointer as QApplication's override cursor. Qt's override cursor nests, the busy
// pointer does not (the last setting counts), so this keeps its own state and changes the
// cursor only when that state really changes.
#pragma once

#include "platform/platform.h"

namespace titron::qt {

class QtPointer : public platform::Pointer {
  public:
    QtPointer() = default;
    QtPointer(const QtPointer&) = delete;
    QtPointer& operator=(const QtPointer&) = delete;
    ~QtPointer() override;

    void setBusy(bool busy) override;
    bool busy() const { return m_busy; }

  private:
    bool m_busy = false;
};

} // namespace titron::qt
