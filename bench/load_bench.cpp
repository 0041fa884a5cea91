// Time of opening a large text file of assay rows into a fresh document, alone and followed
// by the Analyze command (report and table included). The file is written once, into a
// directory of its own under the system's temporary directory, and removed at exit.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/bench_support.h"
#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace {

using titron::bench::ScratchDirectory;

using titron::documents::AnalysisRun;
using titron::documents::Analyze;
using titron::documents::LoadOutcome;

constexpr int kRows = 30000;
constexpr unsigned kSeed = 20261124;

// The text file of kRows rows (see writeRowsFile), written once.
const std::string& rowsFile() {
    static ScratchDirectory directory;
    static const std::string path = titron::bench::writeRowsFile(directory.path(), kRows, kSeed);
    return path;
}

// A new window's document, as the program makes it, with the file opened into it.
struct Document {
    titron::platform::ScriptedPlatform platform;
    titron::session::Session session;
    Analyze analyze{platform.services(), session};
    LoadOutcome outcome;

    explicit Document(const std::string& path) {
        analyze.load();
        outcome = analyze.openDocument(path);
    }
};

// Checks once, untimed, that the file loads whole and analyses to a report.
bool checkFile(benchmark::State& state, const std::string& path) {
    Document document(path);
    if (document.outcome != LoadOutcome::Loaded) {
        state.SkipWithError("the rows file did not load");
        return false;
    }
    if (document.analyze.grid().dataRowCount() != kRows) {
        state.SkipWithError(("the document holds " +
                             std::to_string(document.analyze.grid().dataRowCount()) +
                             " rows, not " + std::to_string(kRows))
                                .c_str());
        return false;
    }
    const AnalysisRun run = document.analyze.runAnalysis();
    if (run.ending != AnalysisRun::Ending::Report) {
        state.SkipWithError(("the analysis gave no report: " + run.box.title).c_str());
        return false;
    }
    return true;
}

void loadRows(benchmark::State& state) {
    const std::string& path = rowsFile();
    if (!checkFile(state, path)) {
        return;
    }
    for (auto _ : state) {
        Document document(path);
        benchmark::DoNotOptimize(document.outcome);
        benchmark::ClobberMemory();
    }
    state.counters["rows"] = kRows;
    state.SetItemsProcessed(state.iterations() * kRows);
}

void loadAndAnalyzeRows(benchmark::State& state) {
    const std::string& path = rowsFile();
    if (!checkFile(state, path)) {
        return;
    }
    for (auto _ : state) {
        Document document(path);
        document.analyze.analyze();
        benchmark::DoNotOptimize(document.analyze.resultsPane().text().data());
        benchmark::ClobberMemory();
    }
    state.counters["rows"] = kRows;
    state.SetItemsProcessed(state.iterations() * kRows);
}

} // namespace

BENCHMARK(loadRows)
    ->Name("Open/rows:30000")
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
BENCHMARK(loadAndAnalyzeRows)
    ->Name("OpenAndAnalyze/rows:30000")
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
