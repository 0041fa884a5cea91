// The FILEs of "titron-cli analyze", each opened into a new document and analysed by the
// Analyze window's own logic on the scripted platform, so that its report and figures are
// the window's, byte for byte.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

#include "analysis/figures.h"
#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace titron::shell {

// The outcome of one file, as the tsv line and the exit status tell it.
struct FileResult {
    int status = 0;
    std::string outcome; // "report", the title of the box that ended it, "no convergence"
    std::string name;
    std::int32_t passes = 0;
    std::optional<analysis::Figures> figures;
    // The rows the analysis read, once they passed the row checks (see AnalysisRun::table).
    std::optional<analysis::AssayTable> table;
};

// What the command asks of every file.
struct FileRequest {
    int passes = 1000;                 // passes of the estimator allowed in all
    std::optional<std::string> saveTo; // where a successful analysis is saved
    bool report = true;                // the report goes to out
    // The current directory that relative paths are resolved against, read once for the
    // whole command (nothing in a run changes it); none when it could not be read.
    std::optional<std::filesystem::path> currentDirectory;
};

// The current directory, read once for a whole command; none when it can't be read.
std::optional<std::filesystem::path> commandDirectory();

// One window logic for all the files of a command: building it once keeps a batch's time
// on reading, fitting and writing. Before each file the window starts afresh, with a new
// session and an empty transcript, so that nothing of one file reaches the next.
class FileAnalyzer {
  public:
    explicit FileAnalyzer(FileRequest request);
    FileAnalyzer(const FileAnalyzer&) = delete;
    FileAnalyzer& operator=(const FileAnalyzer&) = delete;

    // Analyses path (as given; the document gets its absolute form). Writes the report to
    // out and the boxes and notes to err, each line behind errPrefix.
    FileResult analyze(const std::string& path, std::ostream& out, std::ostream& err,
                       const std::string& errPrefix);

  private:
    void startAfresh();

    FileRequest m_request;
    // The window asks for more passes 20 at a time; the command line allows them while the
    // total stays within the limit, and then answers 0, which ends the analysis.
    std::int32_t m_passesAllowed = 0;
    platform::ScriptedPlatform m_platform;
    session::Session m_session;
    documents::Analyze m_analyze;
};

} // namespace titron::shell
