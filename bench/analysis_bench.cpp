// Time of the Analyze command on assay tables of several sizes: reading and checking the
// grid, the estimate, the figures and the report with its table, written into the pane.
// The grid is filled once per benchmark; every iteration runs the whole command again.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

#include "bench/bench_support.h"
#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace {

using titron::documents::AnalysisRun;
using titron::documents::Analyze;

constexpr unsigned kSeed = 20261123;

// One document holding the geometric assay of the given number of rows.
struct Document {
    titron::platform::ScriptedPlatform platform;
    titron::session::Session session;
    Analyze analyze{platform.services(), session};
    bool usable = false; // some rows respond, not all of them

    explicit Document(int rows) {
        analyze.load();
        analyze.nameBox().setText("Geometric doses, " + std::to_string(rows) + " rows");
        auto& grid = analyze.grid();
        if (grid.rowLimit() < rows) {
            grid.setRowLimit(rows);
        }
        long totalResponses = 0;
        long totalTested = 0;
        int row = 0;
        for (const auto& data : titron::bench::geometricAssay(rows, kSeed)) {
            ++row;
            grid.setCell(1, row, std::to_string(data.dose));
            grid.setCell(2, row, std::to_string(data.responses));
            grid.setCell(3, row, std::to_string(data.tested));
            totalResponses += data.responses;
            totalTested += data.tested;
        }
        usable = totalResponses > 0 && totalResponses < totalTested;
        platform.clearTranscript();
    }
};

void runAnalyze(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    Document document(rows);
    if (!document.usable) {
        state.SkipWithError("the drawn responses are all 0 or all positive");
        return;
    }
    // The first run must give a report, or the time would be that of a refusal.
    const AnalysisRun first = document.analyze.runAnalysis();
    if (first.ending != AnalysisRun::Ending::Report) {
        state.SkipWithError(("the analysis gave no report: " + first.box.title).c_str());
        return;
    }
    const std::size_t reportLength = document.analyze.resultsPane().text().size();

    for (auto _ : state) {
        document.analyze.analyze();
        benchmark::DoNotOptimize(document.analyze.resultsPane().text().data());
        // The scripted platform records every pointer change; keep the record short.
        if (document.platform.transcript().size() > 4096) {
            document.platform.clearTranscript();
        }
    }

    if (document.analyze.resultsPane().text().size() != reportLength) {
        state.SkipWithError("a later run gave a different report");
        return;
    }
    state.counters["rows"] = rows;
    state.counters["report_bytes"] = static_cast<double>(reportLength);
    state.counters["passes"] = first.figures ? first.figures->iterations : 0;
    state.SetItemsProcessed(state.iterations() * rows);
}

} // namespace

BENCHMARK(runAnalyze)
    ->Name("Analyze")
    ->ArgName("rows")
    ->Arg(4)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
BENCHMARK(runAnalyze)
    ->Name("Analyze")
    ->ArgName("rows")
    ->Arg(1500)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
BENCHMARK(runAnalyze)
    ->Name("Analyze")
    ->ArgName("rows")
    ->Arg(30000)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
