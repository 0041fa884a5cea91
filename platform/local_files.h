// Files on the local file system, for the command line and the desktop program.
#pragma once

#include "platform/platform.h"

namespace titron::platform {

class LocalFiles : public Files {
  public:
    std::string readAll(const std::string& path) override;
    // Writes a new file beside the old one and renames it over the old one, so that a
    // failed write leaves the old file as it was. Symbolic links are followed to the file
    // they name; anything there that is not a regular file, or that may not be written, is
    // refused untouched. The new file keeps the old one's mode (and owner and group where
    // allowed); a file with several names gets a new one under this name alone.
    void writeAll(const std::string& path, const std::string& text) override;
    bool exists(const std::string& path) override;
    std::vector<std::string> list(const std::string& pattern) override;
    std::string currentDirectory() override;
    bool setCurrentDirectory(const std::string& path) override;
};

// Whether a file name matches a pattern of "*" and "?", letters compared case-blind.
bool matchesPattern(const std::string& name, const std::string& pattern);

} // namespace titron::platform
