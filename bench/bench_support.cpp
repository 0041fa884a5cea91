#include "bench/bench_support.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

extern char** environ;

namespace titron::bench {

ScratchDirectory::ScratchDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "titron-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make a scratch directory under " + pattern);
    }
    m_path = pattern;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::vector<AssayRowData> geometricAssay(int rows, unsigned seed) {
    constexpr int kTested = 24;
    constexpr double kFrequency = 1e-4;
    constexpr double kLowestDose = 10.0;
    constexpr double kHighestDose = 1e6;
    std::mt19937 random(seed);
    std::vector<AssayRowData> assay;
    assay.reserve(static_cast<std::size_t>(rows));
    for (int row = 1; row <= rows; ++row) {
        const double step = rows == 1 ? 0.0 : double(row - 1) / double(rows - 1);
        const double dose = std::round(kLowestDose * std::pow(kHighestDose / kLowestDose, step));
        std::binomial_distribution<int> responses(kTested, 1.0 - std::exp(-kFrequency * dose));
        assay.push_back({static_cast<long>(dose), responses(random), kTested});
    }
    return assay;
}

int runProcess(const std::vector<std::string>& arguments, const char* outPath) {
    return runProcessTimed(arguments, outPath).status;
}

ProcessTimes runProcessTimed(const std::vector<std::string>& arguments, const char* outPath) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath, O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ProcessTimes times;
    if (spawned != 0) {
        return times;
    }
    int status = 0;
    struct rusage usage {};
    while (::wait4(pid, &status, 0, &usage) < 0) {
        if (errno != EINTR) {
            return times;
        }
    }
    const auto milliseconds = [](const timeval& t) {
        return double(t.tv_sec) * 1e3 + double(t.tv_usec) * 1e-3;
    };
    times.status = status;
    times.cpuMs = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    return times;
}

bool exitedWell(int status) {
    return status >= 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::vector<std::string> makeReportFiles(const std::filesystem::path& directory, int count) {
    std::vector<std::string> files;
    for (int i = 1; i <= count; ++i) {
        platform::ScriptedPlatform platform;
        session::Session session;
        documents::Analyze analyze(platform.services(), session);
        analyze.load();
        const std::vector<AssayRowData> rows = geometricAssay(4, static_cast<unsigned>(i));
        for (int row = 1; row <= 4; ++row) {
            const AssayRowData& data = rows[static_cast<std::size_t>(row - 1)];
            analyze.grid().setCell(1, row, std::to_string(data.dose));
            analyze.grid().setCell(2, row, std::to_string(data.responses));
            analyze.grid().setCell(3, row, std::to_string(data.tested));
        }
        std::string name("Assay ");
        name += std::to_string(i);
        analyze.nameBox().setText(name);
        analyze.analyze();
        std::string file("analysis-");
        file += std::to_string(i);
        file += ".tna";
        const std::string path = (directory / file).string();
        if (!analyze.reportPresent() || !analyze.saveDocument(path)) {
            throw std::runtime_error("no analysis file " + path);
        }
        files.push_back(path);
    }
    return files;
}

std::vector<std::string> makeFourRowFiles(const std::filesystem::path& directory, int count) {
    constexpr double doses[] = {1000, 3000, 10000, 30000};
    constexpr int tested = 24;
    std::mt19937 random(20261125);
    std::uniform_real_distribution<double> logSpread(-0.5, 0.5);
    std::vector<std::string> files;
    files.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        // Tables with no responses or with all responding are drawn again.
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
        const std::filesystem::path file = directory / ("spleen-" + std::to_string(i) + ".tna");
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

std::string writeRowsFile(const std::filesystem::path& directory, int rows, unsigned seed) {
    const std::filesystem::path file = directory / ("rows-" + std::to_string(rows) + ".txt");
    std::ofstream out(file, std::ios::binary);
    out << "Dose\tResponses\tTested\r\n";
    char line[64];
    for (const AssayRowData& row : geometricAssay(rows, seed)) {
        std::snprintf(line, sizeof line, "%ld\t%d\t%d\r\n", row.dose, row.responses, row.tested);
        out << line;
    }
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + file.string());
    }
    return file.string();
}

void timeAgainstBaseline(benchmark::State& state, const std::vector<std::string>& measured,
                         const std::vector<std::string>& baseline,
                         const std::string& baselineName) {
    double baselineMs = 0.0;
    double measuredMs = 0.0;
    for (auto _ : state) {
        const ProcessTimes baselineRun = runProcessTimed(baseline);
        const ProcessTimes measuredRun = runProcessTimed(measured);
        if (!exitedWell(baselineRun.status) || !exitedWell(measuredRun.status)) {
            state.SkipWithError("a process did not exit with status 0");
            return;
        }
        baselineMs += baselineRun.cpuMs;
        measuredMs += measuredRun.cpuMs;
        state.SetIterationTime(measuredRun.cpuMs * 1e-3);
    }
    const auto iterations = static_cast<double>(state.iterations());
    state.counters[baselineName + "_ms"] = baselineMs / iterations;
    state.counters["ratio_to_" + baselineName] = measuredMs / baselineMs;
}

} // namespace titron::bench
