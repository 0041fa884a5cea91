#include "platform/local_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vocabulary/failure.h"

namespace titron::platform {

namespace fs = std::filesystem;

namespace {

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

// Writes all of text to fd; false on any failure.
bool writeFully(int fd, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

vocabulary::Failure tooLarge() {
    return vocabulary::Failure(vocabulary::failure::OutOfMemory, "File larger than 64 MB");
}

// Opens path for reading without blocking on a FIFO. A path too long for the system is
// opened one folder at a time, so that a file under a very deep folder stays readable.
int openForReading(const std::string& path) {
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int fd = ::open(path.c_str(), flags);
    if (fd >= 0 || errno != ENAMETOOLONG) {
        return fd;
    }
    const fs::path whole(path);
    int folder = ::open(whole.has_root_directory() ? "/" : ".", O_PATH | O_DIRECTORY | O_CLOEXEC);
    fs::path rest = whole.relative_path();
    for (auto part = rest.begin(); folder >= 0 && part != rest.end(); ++part) {
        const bool last = std::next(part) == rest.end();
        const int next =
            ::openat(folder, part->c_str(), last ? flags : O_PATH | O_DIRECTORY | O_CLOEXEC);
        const int error = errno;
        ::close(folder);
        errno = error;
        if (last) {
            return next;
        }
        folder = next;
    }
    if (folder >= 0) {
        ::close(folder);
        errno = ENAMETOOLONG;
    }
    return -1;
}

// The system's own words for an error ("Permission denied", "No space left on device").
vocabulary::Failure writeFailureOf(int error) {
    return vocabulary::Failure(failureOf(error).number(), std::strerror(error));
}

// The path with its symbolic links followed to the file they name, which may not exist yet.
// A save writes that file and leaves the links as they are.
std::string followLinks(const std::string& path) {
    constexpr int kMostLinks = 40; // as the system's own limit on links in a path
    fs::path current(path);
    for (int hop = 0; hop < kMostLinks; ++hop) {
        struct stat info {};
        if (::lstat(current.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) {
            return current.string();
        }
        std::error_code error;
        const fs::path next = fs::read_symlink(current, error);
        if (error) {
            throw writeFailureOf(error.value());
        }
        current = next.is_absolute() ? next : current.parent_path() / next;
    }
    throw writeFailureOf(ELOOP);
}

const char* kindOf(mode_t mode) {
    if (S_ISDIR(mode)) {
        return "a folder";
    }
    if (S_ISFIFO(mode)) {
        return "a FIFO";
    }
    if (S_ISCHR(mode) || S_ISBLK(mode)) {
        return "a device";
    }
    if (S_ISSOCK(mode)) {
        return "a socket";
    }
    return "something";
}

vocabulary::Failure notRegular(mode_t mode) {
    return vocabulary::Failure(vocabulary::failure::PathFileAccess,
                               std::string(kindOf(mode)) + ", not a regular file");
}

// The start of the hidden temporary names of saves to the file called name: "." and the
// name (shortened to fit the folder's name limit) and ".titron-save-"; mkstemp adds six
// characters.
std::string temporaryPrefix(const fs::path& directory, const std::string& name) {
    constexpr std::string_view kMark = ".titron-save-";
    constexpr std::size_t kUnique = 6;
    long limit = ::pathconf(directory.c_str(), _PC_NAME_MAX);
    if (limit <= 0) {
        limit = 255;
    }
    const std::size_t room = static_cast<std::size_t>(limit) - 1 - kMark.size() - kUnique;
    std::string prefix(".");
    prefix.append(name, 0, std::min(room, name.size()));
    prefix.append(kMark);
    return prefix;
}

// Temporary files that an earlier save to the same file left when it was killed before
// its rename: regular files named by the prefix and six more characters.
void removeLeftovers(const fs::path& directory, const std::string& prefix) {
    std::error_code error;
    for (fs::directory_iterator it(directory, error), end; !error && it != end;
         it.increment(error)) {
        const std::string name = it->path().filename().string();
        std::error_code typeError;
        if (name.size() == prefix.size() + 6 && name.compare(0, prefix.size(), prefix) == 0 &&
            it->is_regular_file(typeError) && !it->is_symlink(typeError)) {
            ::unlink(it->path().c_str());
        }
    }
}

// Makes the rename itself durable.
void syncDirectory(const fs::path& directory) {
    const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

std::string LocalFiles::readAll(const std::string& path) {
    // Only a regular file is read: a FIFO or a device could keep the read waiting or
    // never end it.
    const int fd = openForReading(path);
    if (fd < 0) {
        throw failureOf(errno);
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        throw vocabulary::Failure(vocabulary::failure::PathFileAccess);
    }
    if (static_cast<std::uintmax_t>(info.st_size) > kLargestReadableFile) {
        ::close(fd);
        throw tooLarge();
    }
    std::string text;
    try {
        if (info.st_size > 0) {
            text.reserve(static_cast<std::size_t>(info.st_size));
        }
        char buffer[65536];
        for (;;) {
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n < 0) {
                if (errno == EINTR || errno == EAGAIN) {
                    continue;
                }
                const int error = errno;
                ::close(fd);
                throw failureOf(error);
            }
            if (n == 0) {
                break;
            }
            // A file that grows while it is read is held to the same limit.
            if (text.size() + static_cast<std::size_t>(n) > kLargestReadableFile) {
                ::close(fd);
                throw tooLarge();
            }
            text.append(buffer, static_cast<std::size_t>(n));
        }
    } catch (const std::bad_alloc&) {
        ::close(fd);
        throw vocabulary::Failure(vocabulary::failure::OutOfMemory);
    }
    ::close(fd);
    // Spreadsheets and editors start a UTF-8 file with a byte-order mark; it is no text.
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, kByteOrderMark.size());
    }
    return text;
}

void LocalFiles::writeAll(const std::string& path, const std::string& text) {
    // What the path names, through every link: a link of the system's own such as
    // /dev/stdout names a pipe or a terminal that has no path to follow.
    struct stat named {};
    if (::stat(path.c_str(), &named) == 0 && !S_ISREG(named.st_mode)) {
        throw notRegular(named.st_mode);
    }
    const std::string target = followLinks(path);
    struct stat old {};
    const bool replacing = ::lstat(target.c_str(), &old) == 0;
    if (!replacing && errno != ENOENT) {
        throw writeFailureOf(errno);
    }
    if (replacing) {
        if (!S_ISREG(old.st_mode)) {
            throw notRegular(old.st_mode);
        }
        // Opening for writing, without truncating, asks the system whether the file may be
        // written; a write-protected file is refused here as its own opening would be.
        const int probe = ::open(target.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (probe < 0) {
            throw writeFailureOf(errno);
        }
        ::close(probe);
    }
    const fs::path targetPath(target);
    fs::path directory = targetPath.parent_path();
    if (directory.empty()) {
        directory = ".";
    }
    const std::string prefix = temporaryPrefix(directory, targetPath.filename().string());
    removeLeftovers(directory, prefix);
    std::string temporary = (directory / (prefix + "XXXXXX")).string();
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        throw writeFailureOf(errno);
    }
    mode_t mode = old.st_mode & 07777;
    if (replacing) {
        // Owner and group as before where the system allows it (a change of owner needs
        // privileges); set before the mode, since a change of owner may clear set-id bits.
        [[maybe_unused]] const int ignored = ::fchown(fd, old.st_uid, old.st_gid);
    } else {
        // A new file gets the usual mode under the process's umask, as open() would give it.
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    bool ok = writeFully(fd, text) && ::fchmod(fd, mode) == 0 && ::fsync(fd) == 0;
    int error = errno;
    if (::close(fd) != 0 && ok) {
        ok = false;
        error = errno;
    }
    if (ok && ::rename(temporary.c_str(), target.c_str()) != 0) {
        ok = false;
        error = errno;
    }
    if (!ok) {
        ::unlink(temporary.c_str());
        throw writeFailureOf(error);
    }
    syncDirectory(directory);
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
