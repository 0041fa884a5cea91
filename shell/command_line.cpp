#include "shell/command_line.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>

#include "shell/compare_command.h"
#include "shell/design_command.h"
#include "shell/extended_text.h"
#include "shell/file_analysis.h"
#include "shell/groups_command.h"
#include "shell/json_output.h"
#include "shell/plot_command.h"
#include "shell/tsv_line.h"

namespace titron::shell {

namespace {

constexpr const char* kUsage =
    "Usage: titron-cli analyze [--passes N] [--save OUT] [--format text|tsv|json]\n"
    "                          [--extended] [--level L] FILE...\n"
    "       titron-cli compare [--row N] [--save OUT] FILE...\n"
    "       titron-cli design --frequency X [--doses D1,D2,...] [--tested N | --tested N1,N2,...]\n"
    "                         [--level L] [--target-ratio R] [--format text|json]\n"
    "                         [--simulate N [--seed S]]\n"
    "       titron-cli groups [--level L] [--adjust holm|bh|none] [--format text|json]\n"
    "                         FILE...\n"
    "       titron-cli plot [--level L] [--output OUT.svg] FILE...\n"
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
    "Output (--format json): one JSON object per file, one per line: file, name, outcome\n"
    "and passes as above, report (the tsv's figures under its column names, or null)\n"
    "and model (null when the table fails a check other than no responses or every test\n"
    "responded): the single-hit model examined in full, with level, bound (upper with no\n"
    "response, lower with every test responding, else null), proportion and frequency\n"
    "(estimate, Wald and likelihood-ratio intervals at the level; null with a bound),\n"
    "slope, tests (slope Wald and likelihood ratio, score tests of log dose and of dose,\n"
    "Pearson and deviance chi-square) and doses (observed, expected and residuals of\n"
    "each row). Numbers read back exactly; null where a figure does not exist.\n"
    "\n"
    "--extended: after each report (or after the box of a table with no responses or\n"
    "every test responding) a section with the same model for a person to read: the\n"
    "estimate with both intervals or the bound, each test with its verdict at the 5%\n"
    "level, and the observed and expected responses of each row, with a * on a row\n"
    "whose residual exceeds 2 in size. The report itself is unchanged.\n"
    "\n"
    "Options:\n"
    "  --passes N     Passes of the estimator allowed in all (default 1000). When 20 passes\n"
    "                 have not converged, 20 more are allowed as long as the total stays\n"
    "                 within N; then the analysis ends without a report.\n"
    "  --save OUT     After a successful analysis of a single FILE, write the document to\n"
    "                 OUT exactly as the window's Save command would.\n"
    "  --format F     text (default), tsv or json.\n"
    "  --extended     The model section after each report (text only).\n"
    "  --level L      Level of the model's intervals and bounds, 0 < L < 1 (default\n"
    "                 0.95); with --format json or --extended.\n"
    "  --help         This text.\n"
    "\n"
    "Standard error: a box that ends the analysis (a failed check of the table, \"NO DATA\n"
    "TO ANALYZE\", \"INVALID ENTRY\", \"Titron ERROR #n\") as TITLE: text; the note that the\n"
    "analysis has no name; the loading failure of a file that cannot be read. With several\n"
    "files each line starts with the file.\n"
    "\n"
    "Exit status: 0 report; 1 a file could not be read (or OUT or standard output not\n"
    "written); 2 a box ended the analysis; 3 no convergence within N passes; 64 wrong\n"
    "usage. With several files the highest status of theirs.\n"
    "\n"
    "compare: compares saved analyses as the window's Compare does. Each FILE is added\n"
    "as its Open/Append command adds one (the file cell is the path as given); row N\n"
    "(default 1) is the comparison row. The 120-column report goes to\n"
    "standard output with CR LF line ends; --save OUT writes the comparison file as its\n"
    "Save command does. A FILE without analysis results, or one that cannot be read, is\n"
    "skipped with a note on standard error (status 1 if a FILE could not be read or OUT\n"
    "not written; 64 for a row beyond the rows).\n"
    "\n"
    "design: plans an assay for an expected frequency of 1 in X. For the doses and the\n"
    "tests at each (one N for all, or one per dose; default 24) it gives the expected\n"
    "responses, the expected standard error of the log proportion, the expected interval\n"
    "at level L (default 0.95) as the ratio upper / lower, the chance of no estimate (no\n"
    "response, or every test responding), and the same figures if the true frequency is\n"
    "three times higher or lower. Without --doses it proposes four doses, a factor of 2\n"
    "apart, around the most informative one. --target-ratio R finds the fewest tests per\n"
    "dose whose expected ratio is at most R. --simulate N fits N assays drawn from the\n"
    "model and counts how often the interval held the true proportion (--seed S, default\n"
    "1, repeats a run exactly). --format json writes one JSON document. Status 64 for\n"
    "wrong input, nothing on standard output; 2 when no number of tests reaches R.\n"
    "\n"
    "groups: compares two or more assays, each FILE one group, read and checked as\n"
    "analyze reads them, each fitted to full precision: the likelihood-ratio test that all\n"
    "groups share one frequency, then every pair (ratio of proportions with its Wald\n"
    "interval at level L, default 0.95; likelihood-ratio chi-square on 1 degree of freedom;\n"
    "its p-value adjusted over the pairs by Holm's step-down (holm, the default),\n"
    "Benjamini-Hochberg's false discovery rate (bh) or not at all (none)). --format text\n"
    "(default) is a table, pairs below 0.05 after adjustment marked *; --format json one\n"
    "document. A group with no responses or only responses gets its one-sided bound and\n"
    "is left out of the tests. Status 1 or 2 when a FILE gives no rows (told as analyze\n"
    "tells it), 2 when fewer than two groups have an estimate, 64 for wrong usage.\n"
    "\n"
    "plot: draws the analyses of the FILEs in one SVG picture: ln(1 - r/n) against dose, a\n"
    "marker per row (a triangle at the bottom edge where every test responded), the fitted\n"
    "line -f d solid and the lines of the interval of f at level L (default 0.95, Wald)\n"
    "dashed, one colour, marker and dash pattern per analysis, and a legend with each\n"
    "analysis's frequency (1 in ...). The picture goes to standard output, or to OUT.svg\n"
    "with --output. Each FILE is analysed as by analyze, with the same messages and exit\n"
    "statuses; a FILE without a fit is left out of the picture. A level outside (0, 1):\n"
    "status 64.\n";

struct Options {
    FileRequest request;
    enum class Format { Text, Tsv, Json } format = Format::Text;
    bool extended = false;
    std::optional<double> level; // of the model, for json and --extended
    std::vector<std::string> files;
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
            options.request.passes = *passes;
        } else if (argument == "--save" && hasValue) {
            options.request.saveTo = arguments[++i];
        } else if (argument == "--format" && hasValue) {
            const std::string& value = arguments[++i];
            if (value != "text" && value != "tsv" && value != "json") {
                err << "titron-cli: --format is text, tsv or json, not '" << value << "'\n";
                return std::nullopt;
            }
            options.format = value == "text"  ? Options::Format::Text
                             : value == "tsv" ? Options::Format::Tsv
                                              : Options::Format::Json;
            options.request.report = options.format == Options::Format::Text;
        } else if (argument == "--extended") {
            options.extended = true;
        } else if (argument == "--level" && hasValue) {
            const std::string& value = arguments[++i];
            options.level = levelOption(value, err);
            if (!options.level) {
                return std::nullopt;
            }
        } else if (!takeFileArgument(arguments, i, options.files, err)) {
            return std::nullopt;
        }
    }
    if (options.files.empty()) {
        err << "titron-cli: no FILE to analyse\n";
        return std::nullopt;
    }
    if (options.extended && options.format != Options::Format::Text) {
        err << "titron-cli: --extended goes with the text report, not --format tsv or json\n";
        return std::nullopt;
    }
    if (options.level && !options.extended && options.format != Options::Format::Json) {
        err << "titron-cli: --level goes with --format json or --extended\n";
        return std::nullopt;
    }
    if (options.request.saveTo && options.files.size() != 1) {
        err << "titron-cli: --save takes exactly one FILE\n";
        return std::nullopt;
    }
    return options;
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

std::optional<double> levelOption(const std::string& value, std::ostream& err) {
    double level = 0.0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), level);
    if (error != std::errc() || end != value.data() + value.size() || !(level > 0.0) ||
        !(level < 1.0)) {
        err << "titron-cli: --level needs a number between 0 and 1, such as 0.99, not '" << value
            << "'\n";
        return std::nullopt;
    }
    return level;
}

int usageError(std::ostream& err) {
    err << "Try 'titron-cli --help'.\n";
    return kExitUsage;
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

namespace {

// The model of the rows the analysis read (none when they failed a row check) as a JSON
// line, or as the section behind the report.
void appendModelOutput(std::string& line, const std::string& file, const FileResult& result,
                       bool json, std::optional<double> level) {
    std::optional<analysis::SingleHitStatistics> model;
    if (result.table && !result.table->empty()) {
        model = analysis::examineSingleHit(*result.table, level.value_or(analysis::kDefaultLevel));
    }
    if (json) {
        appendJsonLine(line, file, result, model ? &*model : nullptr);
    } else if (model) {
        appendExtendedText(line, *model);
    }
}

int runAnalyzeCommand(const std::vector<std::string>& arguments, std::ostream& out,
                      std::ostream& err) {
    std::optional<Options> options = parseOptions(arguments, err);
    if (!options) {
        return usageError(err);
    }

    options->request.currentDirectory = commandDirectory();
    const bool tsv = options->format == Options::Format::Tsv;
    const bool json = options->format == Options::Format::Json;
    if (tsv) {
        out << kTsvHeading;
    }
    int worst = kExitReport;
    const bool several = options->files.size() > 1;
    FileAnalyzer analyzer(options->request);
    std::string line;
    for (std::size_t i = 0; i < options->files.size(); ++i) {
        const std::string& file = options->files[i];
        if (i > 0 && options->format == Options::Format::Text) {
            out << "\f\r\n";
        }
        const FileResult result =
            analyzer.analyze(file, out, err, several ? file + ": " : std::string());
        line.clear();
        if (tsv) {
            appendTsvLine(line, file, result);
        } else if (json || options->extended) {
            appendModelOutput(line, file, result, json, options->level);
        }
        out << line;
        worst = std::max(worst, result.status);
    }
    return worst;
}

using Command = int (*)(const std::vector<std::string>& arguments, std::ostream& out,
                        std::ostream& err);

struct NamedCommand {
    std::string_view name;
    Command run;
};

constexpr NamedCommand kCommands[] = {
    {"analyze", runAnalyzeCommand}, {"compare", runCompareCommand}, {"design", runDesignCommand},
    {"groups", runGroupsCommand},   {"plot", runPlotCommand},
};

int runCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    const bool wantsHelp =
        std::find(arguments.begin(), arguments.end(), "--help") != arguments.end() ||
        std::find(arguments.begin(), arguments.end(), "-h") != arguments.end();
    if (wantsHelp) {
        out << kUsage;
        return kExitReport;
    }
    if (arguments.empty()) {
        err << "titron-cli: no command given\n" << kUsage;
        return kExitUsage;
    }
    for (const NamedCommand& command : kCommands) {
        if (arguments[0] == command.name) {
            return command.run(arguments, out, err);
        }
    }
    err << "titron-cli: unknown command '" << arguments[0] << "'\n" << kUsage;
    return kExitUsage;
}

} // namespace

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    int status = kExitReport;
    try {
        status = runCommand(arguments, out, err);
    } catch (const std::bad_alloc&) {
        // Memory that runs out where no box can take it ends the command, not the process.
        err << "titron-cli: out of memory\n";
        status = kExitUnreadable;
    }
    // A full disk or a closed pipe cuts the output: that must not pass for a whole report.
    out.flush();
    if (!out) {
        err << "titron-cli: standard output could not be written; the output is incomplete\n";
        return std::max(status, kExitUnreadable);
    }
    return status;
}

} // namespace titron::shell
