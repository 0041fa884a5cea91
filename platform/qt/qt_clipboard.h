// The desktop clipboard, plain text only, in Latin-1.
#pragma once

#include "platform/platform.h"

namespace titron::qt {

class QtClipboard : public platform::Clipboard {
  public:
    void clear() override;
    void setText(const std::string& text) override;
    bool hasText() override;
    std::string text() override;
};

} // namespace titron::qt
