// Message boxes and input boxes as Qt dialogs, modal over the active window.
#pragma once

#include "platform/platform.h"

namespace titron::qt {

class QtDialogs : public platform::Dialogs {
  public:
    platform::Answer messageBox(const platform::MessageBoxRequest& request) override;
    std::string inputBox(const platform::InputBoxRequest& request) override;
};

} // namespace titron::qt
