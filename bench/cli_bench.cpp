// Wall-clock time of whole titron-cli processes: start (posix_spawn), run, wait. Standard
// output goes to /dev/null; a run that doesn't exit with status 0 stops the benchmark.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/bench_support.h"

namespace {

using titron::bench::exitedWell;
using titron::bench::runProcess;
using titron::bench::ScratchDirectory;

namespace fs = std::filesystem;

constexpr const char* kCli = TITRON_CLI_PATH;
constexpr const char* kExamples = TITRON_EXAMPLES_DIR;
constexpr int kFiles = 10000;

// The timed part: one whole process per iteration, stopping at the first bad exit.
void timeRuns(benchmark::State& state, const std::vector<std::string>& arguments) {
    for (auto _ : state) {
        if (!exitedWell(runProcess(arguments))) {
            state.SkipWithError("titron-cli did not exit with status 0");
            break;
        }
    }
}

void cliOneFile(benchmark::State& state) {
    const std::vector<std::string> arguments = {kCli, "analyze",
                                                std::string(kExamples) + "/spleen-a.tna"};
    if (!exitedWell(runProcess(arguments))) {
        state.SkipWithError("titron-cli analyze spleen-a.tna did not exit with status 0");
        return;
    }
    timeRuns(state, arguments);
}

void cliTenThousandFiles(benchmark::State& state) {
    static ScratchDirectory directory;
    static const std::vector<std::string> files =
        titron::bench::makeFourRowFiles(directory.path(), kFiles);
    std::vector<std::string> arguments = {kCli, "analyze", "--format", "tsv"};
    arguments.insert(arguments.end(), files.begin(), files.end());

    // Once, untimed: every file must give a report, one tsv line each after the heading.
    const fs::path check = directory.path() / "check.tsv";
    if (!exitedWell(runProcess(arguments, check.c_str()))) {
        state.SkipWithError("titron-cli analyze --format tsv did not exit with status 0");
        return;
    }
    std::ifstream in(check);
    std::string line;
    int lines = 0;
    int reports = 0;
    while (std::getline(in, line)) {
        ++lines;
        if (line.find("\treport\t") != std::string::npos) {
            ++reports;
        }
    }
    if (lines != kFiles + 1 || reports != kFiles) {
        state.SkipWithError(("the tsv output has " + std::to_string(lines) + " lines and " +
                             std::to_string(reports) + " reports")
                                .c_str());
        return;
    }

    timeRuns(state, arguments);
    state.counters["files"] = kFiles;
    state.SetItemsProcessed(state.iterations() * kFiles);
}

} // namespace

BENCHMARK(cliOneFile)
    ->Name("Cli/analyze:spleen-a")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
BENCHMARK(cliTenThousandFiles)
    ->Name("Cli/analyze-tsv:10000-files")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(2)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
