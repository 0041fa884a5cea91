// Pieces the benchmark programs share: a scratch directory and a realistic assay.
#pragma once

#include <filesystem>

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace titron::bench {

// A directory made for this run under the system's temporary directory, removed with
// everything in it when the object goes.
class ScratchDirectory {
  public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    const std::filesystem::path& path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

struct AssayRowData {
    long dose = 0;
    int responses = 0;
    int tested = 0;
};

// An assay of the given number of rows: doses spaced geometrically from 10 to 1,000,000,
// 24 tests a row, responses drawn from the single-hit model with a frequency of 1e-4 and a
// fixed seed, so that every run measures the same table.
std::vector<AssayRowData> geometricAssay(int rows, unsigned seed);

// Runs a program (arguments[0] is its path) with standard output to outPath and standard
// error to /dev/null; returns its wait status, or -1 when it couldn't be started.
int runProcess(const std::vector<std::string>& arguments, const char* outPath = "/dev/null");
// Whether a wait status is a normal exit with status 0.
bool exitedWell(int status);

// A finished process: its wait status (-1 when it couldn't be started) and the processor
// time it used, user and system, in milliseconds.
struct ProcessTimes {
    int status = -1;
    double cpuMs = 0.0;
};
// runProcess, with the processor time of the process as the system counted it.
ProcessTimes runProcessTimed(const std::vector<std::string>& arguments,
                             const char* outPath = "/dev/null");

// Times measured against baseline, each run once an iteration (the baseline first, so that
// both meet the same state of the machine): the iteration time is measured's processor
// time; the counters BASELINE_ms and ratio_to_BASELINE hold the baseline's mean and the
// ratio of the sums. Skips with an error when either doesn't exit with status 0.
void timeAgainstBaseline(benchmark::State& state, const std::vector<std::string>& measured,
                         const std::vector<std::string>& baseline, const std::string& baselineName);

// count four-row analysis files like the Spleen A example, spleen-1.tna and on in directory,
// each with its own name and responses drawn from the single-hit model at a frequency
// around 1 in 10,000 (fixed seed). Returns their paths.
std::vector<std::string> makeFourRowFiles(const std::filesystem::path& directory, int count);

// A text file of rows of a geometricAssay(rows, seed) with a heading line, Tab between
// fields, CR LF line ends, written as rows-ROWS.txt into directory. Returns its path.
std::string writeRowsFile(const std::filesystem::path& directory, int rows, unsigned seed);

// count analysis files with their reports, each a four-row assay analysed by the program's
// own Analyze window logic, named analysis-1.tna and on in directory. Returns their paths.
std::vector<std::string> makeReportFiles(const std::filesystem::path& directory, int count);

} // namespace titron::bench
