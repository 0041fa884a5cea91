// A directory of the test's own for the files it writes, emptied when made and removed when
// done. The current directory, which accepted file dialogs and some tests move, comes back
// before the files go.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace titron::testing {

struct ScratchDirectory {
    ScratchDirectory()
        : previous(std::filesystem::current_path()),
          path(std::filesystem::temp_directory_path() /
               ("titron-test-" + std::to_string(::getpid()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~ScratchDirectory() {
        std::filesystem::current_path(previous);
        std::filesystem::remove_all(path);
    }

    std::filesystem::path previous;
    std::filesystem::path path;
};

} // namespace titron::testing
