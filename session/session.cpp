#include "session/session.h"

namespace titron::session {

std::string captionWithFile(const std::string& path) {
    return std::string(kProgramTitle) + " - [" + path + "]";
}

} // namespace titron::session
