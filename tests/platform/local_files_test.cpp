// Saves on the real file system: what a save may replace, what it must refuse untouched, and
// what it leaves behind.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/documents/analyze_fixture.h"
#include "vocabulary/failure.h"

namespace titron::platform {
namespace {

namespace fs = std::filesystem;

// The document tests' scratch directory and file helpers, with the files of the platform.
class LocalFilesTest : public documents::testing::AnalyzeFixture {
  protected:
    // The failure's description, or "written" when the save went through.
    std::string save(const std::string& target, const std::string& text) {
        try {
            platform.services().files.writeAll(target, text);
            return "written";
        } catch (const vocabulary::Failure& failure) {
            return failure.description();
        }
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(directory)) {
            all.push_back(entry.path().filename().string());
        }
        std::sort(all.begin(), all.end());
        return all;
    }
};

TEST_F(LocalFilesTest, SaveThroughASymbolicLinkWritesItsTargetAndKeepsTheLink) {
    fs::create_directory(directory / "data");
    writeFile("data/run.tna", "old");
    fs::create_symlink("data/run.tna", directory / "run.tna");
    EXPECT_EQ(save(path("run.tna"), "new"), "written");
    EXPECT_TRUE(fs::is_symlink(directory / "run.tna"));
    EXPECT_EQ(readFile("data/run.tna"), "new");
    // A link to a file not yet there makes that file.
    fs::create_symlink("data/later.tna", directory / "later.tna");
    EXPECT_EQ(save(path("later.tna"), "first"), "written");
    EXPECT_TRUE(fs::is_symlink(directory / "later.tna"));
    EXPECT_EQ(readFile("data/later.tna"), "first");
}

TEST_F(LocalFilesTest, WhatIsNoRegularFileIsRefusedAndLeftAsItWas) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(save(path("pipe"), "x"), "a FIFO, not a regular file");
    EXPECT_TRUE(fs::is_fifo(directory / "pipe"));

    fs::create_directory(directory / "folder");
    EXPECT_EQ(save(path("folder"), "x"), "a folder, not a regular file");
    EXPECT_TRUE(fs::is_directory(directory / "folder"));

    // A device, reached through a link so that nothing outside the scratch folder is at stake
    // if the refusal fails: the link would be replaced, never the device.
    fs::create_symlink("/dev/null", directory / "null");
    EXPECT_EQ(save(path("null"), "x"), "a device, not a regular file");
    EXPECT_TRUE(fs::is_symlink(directory / "null"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    EXPECT_EQ(names(), (std::vector<std::string>{"folder", "null", "pipe"}))
        << "no temporary file stays behind";
}

// A replaced file keeps its mode, and its owner and group where the system allows the change
// (as root, the only case in which it does for another owner).
TEST_F(LocalFilesTest, ReplacedFileKeepsItsModeAndWhereAllowedItsOwner) {
    writeFile("kept.tna", "old");
    fs::permissions(path("kept.tna"), fs::perms(0640));
    const bool root = ::geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(path("kept.tna").c_str(), 12345, 23456), 0);
    }
    EXPECT_EQ(save(path("kept.tna"), "new"), "written");
    struct stat info {};
    ASSERT_EQ(::stat(path("kept.tna").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
    EXPECT_EQ(info.st_uid, root ? 12345U : ::geteuid());
    EXPECT_EQ(info.st_gid, root ? 23456U : ::getegid());
}

TEST_F(LocalFilesTest, WriteProtectedFileIsRefusedUntouched) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "permission bits don't stop the superuser";
    }
    writeFile("locked.tna", "old");
    fs::permissions(path("locked.tna"), fs::perms(0444));
    EXPECT_EQ(save(path("locked.tna"), "new"), "Permission denied");
    EXPECT_EQ(readFile("locked.tna"), "old");
    EXPECT_EQ(names(), std::vector<std::string>{"locked.tna"});
}

// Temporary files: within the name limit, and a crashed save's leftover goes at the next
// save. A file with a second name gets a new file under the saved name alone.
TEST_F(LocalFilesTest, TemporaryNamesFitAndLeftoversOfKilledSavesAreCleanedUp) {
    const std::string longest(NAME_MAX, 'n');
    EXPECT_EQ(save(path(longest), "long"), "written");
    EXPECT_EQ(readFile(longest), "long");

    writeFile("run.tna", "old");
    writeFile(".run.tna.titron-save-Ab12Cd", "half of a killed save");
    EXPECT_EQ(save(path("run.tna"), "new"), "written");
    EXPECT_EQ(names(), (std::vector<std::string>{longest, "run.tna"}));

    fs::create_hard_link(directory / "run.tna", directory / "other.tna");
    EXPECT_EQ(save(path("run.tna"), "newer"), "written");
    EXPECT_EQ(readFile("run.tna"), "newer");
    EXPECT_EQ(readFile("other.tna"), "new");
}

} // namespace
} // namespace titron::platform
