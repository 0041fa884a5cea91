#include "platform/system_failure.h"

#include <cerrno>
#include <cstring>

namespace titron::platform {

vocabulary::Failure failureOf(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return vocabulary::Failure(vocabulary::failure::FileNotFound);
    case EACCES:
    case EPERM:
    case EROFS:
        return vocabulary::Failure(vocabulary::failure::PermissionDenied);
    case ENOMEM:
        return vocabulary::Failure(vocabulary::failure::OutOfMemory);
    default:
        return vocabulary::Failure(vocabulary::failure::PathFileAccess);
    }
}

vocabulary::Failure writeFailureOf(int error) {
    return vocabulary::Failure(failureOf(error).number(), std::strerror(error));
}

} // namespace titron::platform
