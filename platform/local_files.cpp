#include "platform/local_files.h"

#include <filesystem>
#include <system_error>

#include "platform/file_reading.h"
#include "platform/file_saving.h"

namespace titron::platform {

namespace fs = std::filesystem;

std::string LocalFiles::readAll(const std::string& path) {
    return readRegularFile(path);
}

void LocalFiles::writeAll(const std::string& path, const std::string& text) {
    replaceFile(path, text);
}

bool LocalFiles::exists(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::path(path), error);
}

std::vector<std::string> LocalFiles::list(const std::string& pattern) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(fs::current_path(error), error), end; !error && it != end;
         it.increment(error)) {
        std::error_code typeError;
        if (!it->is_regular_file(typeError)) {
            continue;
        }
        std::string name = it->path().filename().string();
        if (matchesPattern(name, pattern)) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

std::string LocalFiles::currentDirectory() {
    std::error_code error;
    const fs::path current = fs::current_path(error);
    return error ? std::string() : current.string();
}

bool LocalFiles::setCurrentDirectory(const std::string& path) {
    std::error_code error;
    fs::current_path(fs::path(path), error);
    return !error;
}

bool matchesPattern(const std::string& name, const std::string& pattern) {
    const auto lower = [](char c) {
        return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    };
    // Iterative wildcard matching with one back-track point for the last "*".
    std::size_t n = 0, p = 0, star = std::string::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || lower(pattern[p]) == lower(name[n]))) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (star != std::string::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') {
        ++p;
    }
    return p == pattern.size();
}

} // namespace titron::platform
