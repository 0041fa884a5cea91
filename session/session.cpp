#include "session/session.h"

#include "vocabulary/text_routines.h"

namespace titron::session {

std::string captionWithFile(const std::string& path) {
    return std::string(kProgramTitle) + " - [" + vocabulary::lowerCase(path) + "]";
}

} // namespace titron::session
