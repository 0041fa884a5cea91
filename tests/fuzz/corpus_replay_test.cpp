// Every fuzz target over its seed corpus and over the inputs that once found a defect, in
// every test run, so that no finding comes back unnoticed.
#include <filesystem>
#include <fstream>
#include <functional>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/fuzz_targets.h"

namespace titron::fuzz {
namespace {

struct Target {
    const char* name;
    std::function<void(std::string_view)> run;
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

class CorpusReplayTest : public ::testing::TestWithParam<Target> {};

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST_P(CorpusReplayTest, SeedsAndFormerFindingsPass) {
    const std::filesystem::path root = TITRON_FUZZ_DIR;
    int inputs = 0;
    for (const char* kind : {"corpus", "regressions"}) {
        const std::filesystem::path directory = root / kind / GetParam().name;
        if (!std::filesystem::is_directory(directory)) {
            continue;
        }
        for (const auto& file : std::filesystem::directory_iterator(directory)) {
            SCOPED_TRACE(file.path().string());
            const std::string bytes = bytesOf(file.path());
            EXPECT_NO_THROW(GetParam().run(bytes));
            ++inputs;
        }
    }
    EXPECT_GT(inputs, 0) << "no seeds for " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Targets, CorpusReplayTest,
    ::testing::Values(Target{"load_document", loadDocument},
                      Target{"saved_analysis", savedAnalysis}, Target{"settings", settingsText},
                      Target{"numbers", numberTexts}, Target{"text_routines", textRoutines},
                      Target{"analysis", analysisOfCells}),
    [](const ::testing::TestParamInfo<Target>& info) { return std::string(info.param.name); });

} // namespace
} // namespace titron::fuzz
