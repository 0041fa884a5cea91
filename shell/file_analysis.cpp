#include "shell/file_analysis.h"

#include <utility>

#include "shell/command_line.h"

namespace titron::shell {

namespace {

std::string withLineFeeds(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        out += text[i];
    }
    return out;
}

// The path as std::filesystem::absolute gives it, normalised; the path as given when it
// has no absolute form (empty, or no current directory to resolve it against).
std::string absolutePath(const std::string& file,
                         const std::optional<std::filesystem::path>& currentDirectory) {
    const std::filesystem::path path(file);
    if (path.empty() || (path.is_relative() && !currentDirectory)) {
        return file;
    }
    const std::filesystem::path absolute = path.is_absolute() ? path : *currentDirectory / path;
    return absolute.lexically_normal().string();
}

} // namespace

std::optional<std::filesystem::path> commandDirectory() {
    std::error_code noDirectory;
    std::filesystem::path current = std::filesystem::current_path(noDirectory);
    if (noDirectory) {
        return std::nullopt;
    }
    return current;
}

FileAnalyzer::FileAnalyzer(FileRequest request)
    : m_request(std::move(request)), m_analyze(m_platform.services(), m_session) {
    m_platform.keepHistory(false);
    m_platform.setInputResponder([this](const platform::InputBoxRequest&) -> std::string {
        // The difference, not the sum: near the largest --passes a sum would overflow.
        if (m_request.passes - m_passesAllowed >= analysis::kPassesPerRound) {
            m_passesAllowed += analysis::kPassesPerRound;
            return "20";
        }
        return "0";
    });
    m_analyze.load();
}

void FileAnalyzer::startAfresh() {
    m_passesAllowed = analysis::kPassesPerRound;
    m_platform.clearTranscript();
    m_session = session::Session{};
    m_analyze.startAfresh();
}

FileResult FileAnalyzer::analyze(const std::string& path, std::ostream& out, std::ostream& err,
                                 const std::string& errPrefix) {
    startAfresh();
    FileResult result;
    if (m_analyze.openDocument(absolutePath(path, m_request.currentDirectory)) !=
        documents::LoadOutcome::Loaded) {
        const auto& box = m_platform.boxes().back().request;
        err << errPrefix << box.title << ": " << withLineFeeds(box.text) << "\n";
        result.status = kExitUnreadable;
        result.outcome = box.title;
        result.name = m_analyze.nameBox().text();
        return result;
    }

    documents::AnalysisRun run = m_analyze.runAnalysis();
    result.name = m_analyze.nameBox().text();
    result.table = std::move(run.table);
    switch (run.ending) {
    case documents::AnalysisRun::Ending::Report: {
        result.outcome = "report";
        result.figures = run.figures;
        result.passes = run.figures->iterations;
        if (m_request.report) {
            out << m_analyze.resultsPane().text();
        }
        if (run.noNameNote) {
            err << errPrefix << "note: ANALYSIS NAME: There is no Analysis Name.\n";
        }
        std::string failure;
        if (m_request.saveTo && !m_analyze.saveDocument(*m_request.saveTo, &failure)) {
            err << errPrefix << "cannot write " << *m_request.saveTo << ": " << failure << "\n";
            result.status = kExitUnreadable;
        }
        break;
    }
    case documents::AnalysisRun::Ending::Box:
        err << errPrefix << run.box.title << ": " << withLineFeeds(run.box.text) << "\n";
        result.status = kExitBox;
        result.outcome = run.box.title;
        break;
    case documents::AnalysisRun::Ending::NoConvergence:
        result.passes = m_platform.inputCount() == 0 ? 0 : m_passesAllowed;
        err << errPrefix << "no convergence after " << m_passesAllowed
            << " passes (see --passes); no report\n";
        result.status = kExitNoConvergence;
        result.outcome = "no convergence";
        break;
    }
    return result;
}

} // namespace titron::shell
