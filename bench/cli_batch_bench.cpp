// The cost of a batch: processor time (user and system, as the system counted it for the
// child) of a whole "titron-cli analyze --format tsv" process over 2,000 and 10,000 four-row
// files, against cat reading the same files, and of one process over a 30,000-row file.
// Each iteration runs cat and then titron-cli, so that both meet the same state of the
// machine; the time reported is titron-cli's, with cat's and the ratio as counters.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/bench_support.h"

namespace {

using titron::bench::exitedWell;
using titron::bench::runProcessTimed;
using titron::bench::ScratchDirectory;

constexpr const char* kCli = TITRON_CLI_PATH;
constexpr const char* kCat = "/bin/cat";
constexpr int kMostFiles = 10000;
constexpr int kRows = 30000;
constexpr unsigned kRowsSeed = 20261124;

// The files of the largest batch, made once; a smaller batch takes the first of them.
const std::vector<std::string>& fourRowFiles() {
    static ScratchDirectory directory;
    static const std::vector<std::string> files =
        titron::bench::makeFourRowFiles(directory.path(), kMostFiles);
    return files;
}

std::vector<std::string> withFiles(std::vector<std::string> command, int count) {
    const std::vector<std::string>& files = fourRowFiles();
    command.insert(command.end(), files.begin(), files.begin() + count);
    return command;
}

void batchAgainstCat(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    const std::vector<std::string> cli = withFiles({kCli, "analyze", "--format", "tsv"}, count);
    const std::vector<std::string> cat = withFiles({kCat}, count);
    titron::bench::timeAgainstBaseline(state, cli, cat, "cat");
    state.counters["files"] = count;
}

// Wall-clock time of the whole process, which is at least its processor time.
void largeFile(benchmark::State& state) {
    static ScratchDirectory directory;
    static const std::string file =
        titron::bench::writeRowsFile(directory.path(), kRows, kRowsSeed);
    const std::vector<std::string> cli = {kCli, "analyze", file};
    for (auto _ : state) {
        if (!exitedWell(runProcessTimed(cli).status)) {
            state.SkipWithError("titron-cli did not exit with status 0");
            return;
        }
    }
    state.counters["rows"] = kRows;
}

} // namespace

BENCHMARK(batchAgainstCat)
    ->Name("CliBatch/analyze-tsv-cpu")
    ->Arg(2000)
    ->Iterations(1)
    ->Repetitions(15)
    ->ReportAggregatesOnly(true)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(batchAgainstCat)
    ->Name("CliBatch/analyze-tsv-cpu")
    ->Arg(kMostFiles)
    ->Iterations(1)
    ->Repetitions(7)
    ->ReportAggregatesOnly(true)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(largeFile)
    ->Name("CliBatch/analyze:30000-rows")
    ->Iterations(1)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
