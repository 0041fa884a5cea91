// The cost of the JSON Lines output against the tsv: processor time (user and system, as
// the system counted it for the child) of a whole "titron-cli analyze --format json"
// process over 10,000 four-row files, with the single-hit model examined in full for each,
// against "--format tsv" over the same files. Each iteration runs the tsv and then the
// JSON, so that both meet the same state of the machine; the time reported is the JSON's,
// with the tsv's and the ratio as counters.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/bench_support.h"

namespace {

using titron::bench::ScratchDirectory;

constexpr const char* kCli = TITRON_CLI_PATH;
constexpr int kFiles = 10000;

void jsonAgainstTsv(benchmark::State& state) {
    static ScratchDirectory directory;
    static const std::vector<std::string> files =
        titron::bench::makeFourRowFiles(directory.path(), kFiles);
    const auto command = [](const char* format) {
        std::vector<std::string> arguments = {kCli, "analyze", "--format", format};
        arguments.insert(arguments.end(), files.begin(), files.end());
        return arguments;
    };
    const std::vector<std::string> tsv = command("tsv");
    const std::vector<std::string> json = command("json");
    titron::bench::timeAgainstBaseline(state, json, tsv, "tsv");
    state.counters["files"] = kFiles;
}

} // namespace

BENCHMARK(jsonAgainstTsv)
    ->Name("CliJson/analyze-json-cpu")
    ->Arg(kFiles)
    ->Iterations(1)
    ->Repetitions(7)
    ->ReportAggregatesOnly(true)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
