#include "platform/file_reading.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <new>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/platform.h"
#include "platform/system_failure.h"
#include "vocabulary/failure.h"

namespace titron::platform {

namespace fs = std::filesystem;

namespace {

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

} // namespace

std::string readRegularFile(const std::string& path) {
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

} // namespace titron::platform
