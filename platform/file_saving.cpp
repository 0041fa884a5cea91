#include "platform/file_saving.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system_failure.h"
#include "vocabulary/failure.h"

namespace titron::platform {

namespace fs = std::filesystem;

namespace {

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

void replaceFile(const std::string& path, const std::string& text) {
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

} // namespace titron::platform
