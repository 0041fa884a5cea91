// Files held in memory, so that a fuzz target can open and save thousands of files a
// second without touching the disk. Reading a missing file fails as a missing file does.
// The one directory is "/fuzz"; a name without a directory is a file in it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace titron::fuzz {

class MemoryFiles : public platform::Files {
  public:
    std::string readAll(const std::string& path) override;
    void writeAll(const std::string& path, const std::string& text) override;
    bool exists(const std::string& path) override { return m_files.count(full(path)) != 0; }
    // Only patterns of the form "*.ext" are asked for.
    std::vector<std::string> list(const std::string& pattern) override;
    std::string currentDirectory() override { return "/fuzz"; }
    bool setCurrentDirectory(const std::string& path) override { return path == "/fuzz"; }

  private:
    static std::string full(const std::string& path);

    std::map<std::string, std::string> m_files;
};

} // namespace titron::fuzz
