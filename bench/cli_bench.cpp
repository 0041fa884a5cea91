// Wall-clock time of whole titron-cli processes: start (posix_spawn), run, wait. Standard
// output goes to /dev/null; a run that doesn't exit with status 0 stops the benchmark.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
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

// One four-row analysis file per run of the command, like the Spleen A example, with its
// own name and responses drawn from the single-hit model at a frequency around 1 in 10,000
// (fixed seed); tables with no responses or with all responding are drawn again.
std::vector<std::string> makeAnalysisFiles(const fs::path& directory) {
    constexpr double doses[] = {1000, 3000, 10000, 30000};
    constexpr int tested = 24;
    std::mt19937 random(20261125);
    std::uniform_real_distribution<double> logSpread(-0.5, 0.5);
    std::vector<std::string> files;
    files.reserve(kFiles);
    for (int i = 1; i <= kFiles; ++i) {
        int responses[4];
        int total = 0;
        do {
            const double frequency = 1e-4 * std::exp(logSpread(random));
            total = 0;
            for (int row = 0; row < 4; ++row) {
                std::binomial_distribution<int> draw(tested,
                                                     1.0 - std::exp(-frequency * doses[row]));
                responses[row] = draw(random);
                total += responses[row];
            }
        } while (total == 0 || total == 4 * tested);

        std::ostringstream text;
        text << "Analysis Name: Spleen " << i << "\r\n\r\n"
             << "Row\t\tDose\t\tResponses\tTested\t\tComments\r\n";
        for (int row = 0; row < 4; ++row) {
            text << row + 1 << "\t\t" << doses[row] << "\t\t" << responses[row] << "\t\t" << tested
                 << "\t\t\r\n";
        }
        text << "\r\n";
        const fs::path file = directory / ("spleen-" + std::to_string(i) + ".tna");
        std::ofstream out(file, std::ios::binary);
        out << text.str();
        out.close();
        if (!out) {
            throw std::runtime_error("cannot write " + file.string());
        }
        files.push_back(file.string());
    }
    return files;
}

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
    static const std::vector<std::string> files = makeAnalysisFiles(directory.path());
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
