// The failures that the system's own errors (errno) become.
#pragma once

#include "vocabulary/failure.h"

namespace titron::platform {

// The failure number of an error: file not found, permission denied, out of memory, or
// path/file access error for the rest.
vocabulary::Failure failureOf(int error);
// The same number with the system's own words ("Permission denied", "No space left on
// device"), for the messages of a failed save.
vocabulary::Failure writeFailureOf(int error);

} // namespace titron::platform
