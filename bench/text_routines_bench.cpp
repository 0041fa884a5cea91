// Time of the text routines on a 30,000-row table as the save and load paths hand it to
// them: the grid's clip (heading row and data rows, five cells a row, Tab between cells, CR
// LF line ends), Tab doubling and column closing as a save lays the table out, closing runs
// of Tabs as the loader reads a saved table, and commas turned into blanks. Each input is
// built once; every iteration works on a fresh copy, made outside the timing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "bench/bench_support.h"
#include "vocabulary/text_routines.h"

namespace {

using titron::vocabulary::closeTabs;
using titron::vocabulary::replaceText;

constexpr int kRows = 30000;
constexpr unsigned kSeed = 20261125;

// The table as the grid's clip gives it: Row, Dose, Responses, Tested and Comments; every
// tenth row has a comment with a comma in it, the others an empty one.
std::string clipText() {
    std::string text = "Row\tDose\tResponses\tTested\tComments\r\n";
    int row = 0;
    for (const auto& data : titron::bench::geometricAssay(kRows, kSeed)) {
        ++row;
        text += std::to_string(row);
        text += '\t';
        text += std::to_string(data.dose);
        text += '\t';
        text += std::to_string(data.responses);
        text += '\t';
        text += std::to_string(data.tested);
        text += '\t';
        if (row % 10 == 0) {
            text += "plate ";
            text += std::to_string(row / 10 % 12 + 1);
            text += ", left half";
        }
        text += "\r\n";
    }
    return text;
}

struct Texts {
    std::string clip;    // as the save path reads it from the grid
    std::string doubled; // every Tab doubled
    std::string laidOut; // doubled, then closed: the table of a saved file
};

const Texts& texts() {
    static const Texts t = [] {
        Texts made;
        made.clip = clipText();
        made.doubled = made.clip;
        replaceText(made.doubled, "\t", "\t\t");
        made.laidOut = made.doubled;
        closeTabs(made.laidOut);
        return made;
    }();
    return t;
}

// Runs routine on a fresh copy of input every iteration; check says, once and untimed,
// whether the routine's result is right.
template <typename Routine, typename Check>
void timeRoutine(benchmark::State& state, const std::string& input, Routine routine, Check check) {
    std::string once = input;
    routine(once);
    if (!check(once)) {
        state.SkipWithError("the routine gave a wrong result");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        std::string text = input;
        state.ResumeTiming();
        routine(text);
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    state.counters["rows"] = kRows;
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(input.size()));
}

std::size_t count(const std::string& text, char c) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

void doubleTabs(benchmark::State& state) {
    const Texts& t = texts();
    timeRoutine(
        state, t.clip, [](std::string& text) { replaceText(text, "\t", "\t\t"); },
        [&](const std::string& result) {
            return count(result, '\t') == 2 * count(t.clip, '\t') &&
                   result.size() == t.clip.size() + count(t.clip, '\t');
        });
}

void closeTabsBench(benchmark::State& state) {
    const Texts& t = texts();
    timeRoutine(
        state, t.doubled, [](std::string& text) { closeTabs(text); },
        [&](const std::string& result) {
            // Some pairs close (the long doses), not all, and nothing but Tabs goes.
            return result.size() < t.doubled.size() && result.size() > t.clip.size() &&
                   result.size() + count(t.doubled, '\t') == t.doubled.size() + count(result, '\t');
        });
}

void closeTabRuns(benchmark::State& state) {
    const Texts& t = texts();
    timeRoutine(
        state, t.laidOut, [](std::string& text) { replaceText(text, "\t\t", "\t"); },
        [&](const std::string& result) { return result == t.clip; });
}

void commasToBlanks(benchmark::State& state) {
    const Texts& t = texts();
    timeRoutine(
        state, t.clip, [](std::string& text) { replaceText(text, ",", " "); },
        [&](const std::string& result) {
            return count(t.clip, ',') == kRows / 10 && count(result, ',') == 0 &&
                   result.size() == t.clip.size();
        });
}

} // namespace

// Every routine alike: milliseconds, ten repetitions, their aggregates only.
static void tenRepetitions(benchmark::internal::Benchmark* b) {
    b->Unit(benchmark::kMillisecond)->Repetitions(10)->ReportAggregatesOnly(true);
}

BENCHMARK(doubleTabs)->Name("ReplaceText/DoubleTabs/rows:30000")->Apply(tenRepetitions);
BENCHMARK(closeTabsBench)->Name("CloseTabs/rows:30000")->Apply(tenRepetitions);
BENCHMARK(closeTabRuns)->Name("ReplaceText/CloseTabRuns/rows:30000")->Apply(tenRepetitions);
BENCHMARK(commasToBlanks)->Name("ReplaceText/CommasToBlanks/rows:30000")->Apply(tenRepetitions);
