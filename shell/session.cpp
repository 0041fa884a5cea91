#include "shell/session.h"

#include "shell/text_routines.h"

namespace titron::shell {

std::string captionWithFile(const std::string& path) {
    return std::string(kProgramTitle) + " - [" + lowerCase(path) + "]";
}

} // namespace titron::shell
