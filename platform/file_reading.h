// Reading a whole file: only a regular file, and only up to kLargestReadableFile.
#pragma once

#include <string>

namespace titron::platform {

// The whole text of the regular file at path, without a leading UTF-8 byte-order mark.
// Anything else (a FIFO, a device, a socket, a folder) fails at once, never waiting on it;
// a file larger than kLargestReadableFile fails with 7 before it is read; a path longer
// than the system takes is opened one folder at a time.
std::string readRegularFile(const std::string& path);

} // namespace titron::platform
