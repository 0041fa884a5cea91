#include "fuzz/memory_files.h"

#include "vocabulary/failure.h"

namespace titron::fuzz {

std::string MemoryFiles::full(const std::string& path) {
    return path.find('/') == std::string::npos ? "/fuzz/" + path : path;
}

std::string MemoryFiles::readAll(const std::string& path) {
    const auto found = m_files.find(full(path));
    if (found == m_files.end()) {
        throw vocabulary::Failure(vocabulary::failure::FileNotFound);
    }
    return found->second;
}

void MemoryFiles::writeAll(const std::string& path, const std::string& text) {
    m_files[full(path)] = text;
}

std::vector<std::string> MemoryFiles::list(const std::string& pattern) {
    const std::string ending = pattern.substr(pattern.find('*') + 1);
    std::vector<std::string> names;
    for (const auto& [path, text] : m_files) {
        const std::string name = path.substr(path.rfind('/') + 1);
        if (name.size() >= ending.size() &&
            name.compare(name.size() - ending.size(), ending.size(), ending) == 0) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace titron::fuzz
