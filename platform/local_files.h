// Files on the local file system, for the command line and the desktop program.
#pragma once

#include "platform/platform.h"

namespace titron::platform {

class LocalFiles : public Files {
  public:
    // Only a regular file, up to kLargestReadableFile (file_reading.h).
    std::string readAll(const std::string& path) override;
    // Replaces only what it should, through a temporary file (file_saving.h).
    void writeAll(const std::string& path, const std::string& text) override;
    bool exists(const std::string& path) override;
    std::vector<std::string> list(const std::string& pattern) override;
    std::string currentDirectory() override;
    bool setCurrentDirectory(const std::string& path) override;
};

// Whether a file name matches a pattern of "*" and "?", letters compared case-blind.
bool matchesPattern(const std::string& name, const std::string& pattern);

} // namespace titron::platform
