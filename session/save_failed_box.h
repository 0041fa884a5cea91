// The box a Save shows when its file could not be written: the analysis and the comparison
// alike, so that a user never believes a file was written when it wasn't.
#pragma once

#include <string>

#include "platform/platform.h"

namespace titron::session {

inline platform::MessageBoxRequest saveFailedBox(const std::string& path,
                                                 const std::string& reason) {
    return {"SAVE FAILED", "The file " + path + " could not be written: " + reason + ".",
            platform::Buttons::Ok, platform::Icon::Exclamation, 1};
}

} // namespace titron::session
