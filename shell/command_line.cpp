#include "shell/command_line.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "documents/analyze.h"
#include "platform/scripted_platform.h"
#include "shell/compare_command.h"

namespace titron::shell {

namespace {

constexpr const char* kUsage =
    "Usage: titron-cli analyze [--passes N] [--save OUT] [--format text|tsv] FILE...\n"
    "       titron-cli compare [--row N] [--save OUT] FILE...\n"
    "       titron-cli --help\n"
    "\n"
    "Analyses limiting dilution assays. Each FILE (an analysis file, or a text file of\n"
    "rows of Dose, Responses and Tested, separated by Tabs or commas, with an optional\n"
    "Row number first and an optional Comments field last) is opened into a new document\n"
    "as the window's Open command would, and analysed as its Analyze command would.\n"
    "\n"
    "Output (--format text, the default): the report exactly as the results pane shows it,\n"
    "with CR LF line ends. With several files, their sections follow in the order given,\n"
    "separated by a line holding a form feed (\\f CR LF); a file without a report leaves\n"
    "its section empty.\n"
    "\n"
    "Output (--format tsv): a heading line, then one line per file: file, name, outcome\n"
    "(report, the title of the box that ended the analysis, \"no convergence\" or the\n"
    "loading failure), passes, log proportion (natural log), its standard error,\n"
    "proportion, proportion - 1 S.E., proportion + 1 S.E., lower and upper 95% limits,\n"
    "frequency (1 in ...), Pearson and deviance chi-square, degrees of freedom and both\n"
    "p-values, every number with 17 significant digits. Fields that an outcome doesn't\n"
    "give are empty.\n"
    "\n"
    "Options:\n"
    "  --passes N     Passes of the estimator allowed in all (default 1000). When 20 passes\n"
    "                 have not converged, 20 more are allowed as long as the total stays\n"
    "                 within N; then the analysis ends without a report.\n"
    "  --save OUT     After a successful analysis of a single FILE, write the document to\n"
    "                 OUT exactly as the window's Save command would.\n"
    "  --format F     text (default) or tsv.\n"
    "  --help         This text.\n"
    "\n"
    "Standard error: a box that ends the analysis (a failed check of the table, \"NO DATA\n"
    "TO ANALYZE\", \"INVALID ENTRY\", \"Titron ERROR #n\") as TITLE: text; the note that the\n"
    "analysis has no name; the loading failure of a file that cannot be read. With several\n"
    "files each line starts with the file.\n"
    "\n"
    "Exit status: 0 report; 1 a file could not be read (or OUT not written); 2 a box ended\n"
    "the analysis; 3 no convergence within N passes; 64 wrong usage. With several files\n"
    "the highest status of theirs.\n"
    "\n"
    "compare: compares saved analyses as the window's Compare does. Each FILE is added\n"
    "as its Open/Append command adds one (the file cell is the path as given, in lower\n"
    "case); row N (default 1) is the comparison row. The 120-column report goes to\n"
    "standard output with CR LF line ends; --save OUT writes the comparison file as its\n"
    "Save command does. A FILE without analysis results, or one that cannot be read, is\n"
    "skipped with a note on standard error (status 1 if a FILE could not be read or OUT\n"
    "not written; 64 for a row beyond the rows).\n";

struct Options {
    int passes = 1000;
    std::optional<std::string> saveTo;
    bool tsv = false;
    std::vector<std::string> files;
};

// The outcome of one file, as the tsv line and the exit status tell it.
struct FileResult {
    int status = kExitReport;
    std::string outcome;
    std::string name;
    std::int32_t passes = 0;
    std::optional<analysis::Figures> figures;
};

std::optional<Options> parseOptions(const std::vector<std::string>& arguments, std::ostream& err) {
    Options options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == "--passes" && hasValue) {
            const std::string& value = arguments[++i];
            const std::optional<int> passes = wholeNumberOption(value, 0);
            if (!passes) {
                err << "titron-cli: --passes needs a whole number of 0 or more, not '" << value
                    << "'\n";
                return std::nullopt;
            }
            options.passes = *passes;
        } else if (argument == "--save" && hasValue) {
            options.saveTo = arguments[++i];
        } else if (argument == "--format" && hasValue) {
            const std::string& value = arguments[++i];
            if (value != "text" && value != "tsv") {
                err << "titron-cli: --format is text or tsv, not '" << value << "'\n";
                return std::nullopt;
            }
            options.tsv = value == "tsv";
        } else if (!takeFileArgument(arguments, i, options.files, err)) {
            return std::nullopt;
        }
    }
    if (options.files.empty()) {
        err << "titron-cli: no FILE to analyse\n";
        return std::nullopt;
    }
    if (options.saveTo && options.files.size() != 1) {
        err << "titron-cli: --save takes exactly one FILE\n";
        return std::nullopt;
    }
    return options;
}

std::string withLineFeeds(std::string text) {
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

std::string absolutePath(const std::string& file) {
    std::error_code error;
    const auto path = std::filesystem::absolute(file, error);
    return error ? file : path.lexically_normal().string();
}

FileResult analyzeFile(const std::string& file, const Options& options, std::ostream& out,
                       std::ostream& err, const std::string& errPrefix) {
    platform::ScriptedPlatform platform;
    // The window asks for more passes 20 at a time; the command line allows them while
    // the total stays within the limit, and then answers 0, which ends the analysis.
    std::int32_t allowed = analysis::kPassesPerRound;
    platform.setInputResponder([&](const platform::InputBoxRequest&) -> std::string {
        if (allowed + analysis::kPassesPerRound <= options.passes) {
            allowed += analysis::kPassesPerRound;
            return "20";
        }
        return "0";
    });
    session::Session session;
    session.LastDirectory = platform.services().files.currentDirectory();
    documents::Analyze analyze(platform.services(), session);
    analyze.load();

    FileResult result;
    if (analyze.openDocument(absolutePath(file)) != documents::LoadOutcome::Loaded) {
        const auto& box = platform.boxes().back().request;
        err << errPrefix << box.title << ": " << withLineFeeds(box.text) << "\n";
        result.status = kExitUnreadable;
        result.outcome = box.title;
        result.name = analyze.nameBox().text();
        return result;
    }

    const documents::AnalysisRun run = analyze.runAnalysis();
    result.name = analyze.nameBox().text();
    switch (run.ending) {
    case documents::AnalysisRun::Ending::Report:
        result.outcome = "report";
        result.figures = run.figures;
        result.passes = run.figures->iterations;
        if (!options.tsv) {
            out << analyze.resultsPane().text();
        }
        if (run.noNameNote) {
            err << errPrefix << "note: ANALYSIS NAME: There is no Analysis Name.\n";
        }
        if (options.saveTo && !analyze.saveDocument(*options.saveTo)) {
            err << errPrefix << "cannot write " << *options.saveTo << "\n";
            result.status = kExitUnreadable;
        }
        break;
    case documents::AnalysisRun::Ending::Box:
        err << errPrefix << run.box.title << ": " << withLineFeeds(run.box.text) << "\n";
        result.status = kExitBox;
        result.outcome = run.box.title;
        break;
    case documents::AnalysisRun::Ending::NoConvergence:
        result.passes = platform.inputs().empty() ? 0 : allowed;
        err << errPrefix << "no convergence after " << allowed
            << " passes (see --passes); no report\n";
        result.status = kExitNoConvergence;
        result.outcome = "no convergence";
        break;
    }
    return result;
}

std::string fullPrecision(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

// A field of a tsv line: Tabs and line ends inside it would break the columns.
std::string tsvField(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    return text;
}

void writeTsvHeading(std::ostream& out) {
    out << "file\tname\toutcome\tpasses\tlog_proportion\tse_log_proportion\tproportion\t"
           "proportion_minus_1se\tproportion_plus_1se\tlower_proportion_95\t"
           "upper_proportion_95\tfrequency\tpearson_chi_square\tdeviance_chi_square\tdf\t"
           "pearson_p\tdeviance_p\n";
}

void writeTsvLine(std::ostream& out, const std::string& file, const FileResult& r) {
    out << tsvField(file) << '\t' << tsvField(r.name) << '\t' << tsvField(r.outcome) << '\t';
    if (r.outcome == "report" || r.outcome == "no convergence") {
        out << r.passes;
    }
    if (!r.figures) {
        out << std::string(13, '\t') << '\n';
        return;
    }
    const analysis::Figures& f = *r.figures;
    for (double value :
         {f.logProportion, f.se, f.proportion, f.proportionMinus, f.proportionPlus, f.lowerLimit,
          f.upperLimit, 1.0 / f.proportion, f.pearsonChi, f.deviance}) {
        out << '\t' << fullPrecision(value);
    }
    out << '\t';
    if (f.hasTests) {
        out << f.df;
    }
    out << '\t' << (f.pearsonP ? fullPrecision(*f.pearsonP) : "");
    out << '\t' << (f.devianceP ? fullPrecision(*f.devianceP) : "") << '\n';
}

} // namespace

std::optional<int> wholeNumberOption(const std::string& value, int least) {
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size() || number < least) {
        return std::nullopt;
    }
    return number;
}

bool takeFileArgument(const std::vector<std::string>& arguments, std::size_t& i,
                      std::vector<std::string>& files, std::ostream& err) {
    const std::string& argument = arguments[i];
    if (argument == "--") {
        files.insert(files.end(), arguments.begin() + static_cast<long>(i) + 1, arguments.end());
        i = arguments.size();
    } else if (argument.size() > 1 && argument[0] == '-') {
        err << "titron-cli: unknown option or missing value: " << argument << "\n";
        return false;
    } else {
        files.push_back(argument);
    }
    return true;
}

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    const bool wantsHelp =
        std::find(arguments.begin(), arguments.end(), "--help") != arguments.end() ||
        std::find(arguments.begin(), arguments.end(), "-h") != arguments.end();
    if (wantsHelp) {
        out << kUsage;
        return kExitReport;
    }
    if (!arguments.empty() && arguments[0] == "compare") {
        return runCompareCommand(arguments, out, err);
    }
    if (arguments.empty() || arguments[0] != "analyze") {
        err << (arguments.empty() ? "titron-cli: no command given\n"
                                  : "titron-cli: unknown command '" + arguments[0] + "'\n")
            << kUsage;
        return kExitUsage;
    }
    const std::optional<Options> options = parseOptions(arguments, err);
    if (!options) {
        err << "Try 'titron-cli --help'.\n";
        return kExitUsage;
    }

    if (options->tsv) {
        writeTsvHeading(out);
    }
    int worst = kExitReport;
    const bool several = options->files.size() > 1;
    for (std::size_t i = 0; i < options->files.size(); ++i) {
        const std::string& file = options->files[i];
        if (i > 0 && !options->tsv) {
            out << "\f\r\n";
        }
        const FileResult result =
            analyzeFile(file, *options, out, err, several ? file + ": " : std::string());
        if (options->tsv) {
            writeTsvLine(out, file, result);
        }
        worst = std::max(worst, result.status);
    }
    return worst;
}

} // namespace titron::shell
