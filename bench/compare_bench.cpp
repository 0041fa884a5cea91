// The comparison over a directory of 1,000 analysis files with their reports: entering
// Compare (the scan, the reading and the filling of the grid, the tests against row 1), and
// a whole titron-cli compare process over the same files.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "bench/bench_support.h"
#include "comparison/compare.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace {

using titron::bench::ScratchDirectory;

constexpr int kFiles = 1000;

const ScratchDirectory& analysisDirectory() {
    static ScratchDirectory directory;
    static const std::vector<std::string> files =
        titron::bench::makeReportFiles(directory.path(), kFiles);
    return directory;
}

void enterCompare(benchmark::State& state) {
    const std::filesystem::path directory = analysisDirectory().path();
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(directory);
    titron::platform::ScriptedPlatform platform;
    titron::session::Session session;
    session.LastDirectory = directory.string();
    titron::comparison::Compare compare(platform.services(), session);
    for (auto _ : state) {
        compare.show();
        state.PauseTiming();
        if (compare.grid().dataRowCount() != kFiles) {
            state.SkipWithError("the scan did not give a row for every file");
            break;
        }
        compare.hide();
        state.ResumeTiming();
    }
    std::filesystem::current_path(previous);
}

void cliCompare(benchmark::State& state) {
    const std::filesystem::path directory = analysisDirectory().path();
    std::vector<std::string> arguments = {TITRON_CLI_PATH, "compare"};
    for (int i = 1; i <= kFiles; ++i) {
        std::string file("analysis-");
        file += std::to_string(i);
        file += ".tna";
        arguments.push_back((directory / file).string());
    }
    for (auto _ : state) {
        if (!titron::bench::exitedWell(titron::bench::runProcess(arguments))) {
            state.SkipWithError("titron-cli compare did not exit with status 0");
            break;
        }
    }
}

} // namespace

BENCHMARK(enterCompare)
    ->Name("CompareEnter/files:1000")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
BENCHMARK(cliCompare)
    ->Name("Cli/compare:1000-files")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
