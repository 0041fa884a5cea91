// A saved analysis as the comparison reads it, then compared with a sound one each way
// round and written out as the comparison report, copied and saved. The reader takes
// figures or nothing; a file never stops the program or lends its row another file's
// figures.
#include <cmath>
#include <optional>
#include <string>

#include "comparison/compare.h"
#include "comparison/saved_analysis.h"
#include "fuzz/fuzz_bytes.h"
#include "fuzz/fuzz_platform.h"
#include "fuzz/fuzz_targets.h"
#include "session/session.h"

namespace titron::fuzz {

namespace {

// A saved analysis with the results line in its fixed columns: the log proportion from
// character 20, the standard error from character 64 of the line.
std::string soundAnalysis() {
    std::string line = "    Log Proportion:          -2.99573";
    line.resize(44, ' ');
    line += "S.E. of Log Prop.:";
    line.resize(63, ' ');
    line += "0.1000";
    return "Analysis Name: Base\r\nIterations:     4\r\n\r\n" + line + "\r\n\r\nEND\r\n";
}

} // namespace

void savedAnalysis(std::string_view bytes) {
    FuzzBytes in(bytes);
    const std::uint8_t mode = in.byte();
    const std::string file(in.rest());

    const std::optional<comparison::SavedAnalysis> saved = comparison::readSavedAnalysis(file);
    if (saved) {
        check(std::isfinite(saved->logProportion) && std::isfinite(saved->standardError),
              "the reader took a figure that is no finite number");
        check(saved->name.find("\r\n") == std::string::npos, "the name runs past its line end");
    }

    FuzzPlatform p;
    session::Session session;
    comparison::Compare compare(p.services, session);
    p.files.writeAll("/fuzz/base.tna", soundAnalysis());
    p.files.writeAll("/fuzz/fuzzed.tna", file);
    compare.beginEmpty();
    // The fuzzed file first (it becomes the comparison row) or second.
    const bool fuzzedFirst = mode & 1;
    const std::vector<std::string> order =
        fuzzedFirst ? std::vector<std::string>{"/fuzz/fuzzed.tna", "/fuzz/base.tna"}
                    : std::vector<std::string>{"/fuzz/base.tna", "/fuzz/fuzzed.tna"};
    for (const std::string& path : order) {
        const comparison::AddOutcome outcome = compare.addFile(path);
        if (path == "/fuzz/fuzzed.tna") {
            check((outcome == comparison::AddOutcome::Added) == saved.has_value(),
                  "the window and the reader disagree on whether the file has results");
        }
    }
    const int rows = compare.grid().dataRowCount();
    check(rows == (saved ? 2 : 1), "the comparison holds " + std::to_string(rows) + " rows");
    check(compare.comparisonRow() == 1, "the first row added is not the comparison row");

    if (mode & 2 && rows == 2) {
        compare.chooseComparisonRow(2);
    }
    compare.copyFile();
    check(compare.writeComparison("/fuzz/out.tnc"), "a comparison file in memory failed");
    check(!p.files.readAll("/fuzz/out.tnc").empty(), "the comparison file is empty");
}

} // namespace titron::fuzz
