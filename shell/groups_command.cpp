#include "shell/groups_command.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>

#include "shell/command_line.h"
#include "shell/file_analysis.h"
#include "shell/groups_output.h"

namespace titron::shell {

namespace {

using analysis::PValueAdjustment;

struct GroupsOptions {
    double level = analysis::kDefaultLevel;
    PValueAdjustment adjustment = PValueAdjustment::Holm;
    bool json = false;
    std::vector<std::string> files;
};

std::optional<GroupsOptions> parseGroupsOptions(const std::vector<std::string>& arguments,
                                                std::ostream& err) {
    GroupsOptions options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == "--level" && hasValue) {
            const std::string& value = arguments[++i];
            const std::optional<double> level = levelOption(value, err);
            if (!level) {
                return std::nullopt;
            }
            options.level = *level;
        } else if (argument == "--adjust" && hasValue) {
            const std::string& value = arguments[++i];
            if (value == "holm") {
                options.adjustment = PValueAdjustment::Holm;
            } else if (value == "bh") {
                options.adjustment = PValueAdjustment::BenjaminiHochberg;
            } else if (value == "none") {
                options.adjustment = PValueAdjustment::None;
            } else {
                err << "titron-cli: --adjust is holm, bh or none, not '" << value << "'\n";
                return std::nullopt;
            }
        } else if (argument == "--format" && hasValue) {
            const std::string& value = arguments[++i];
            if (value != "text" && value != "json") {
                err << "titron-cli: --format is text or json, not '" << value << "'\n";
                return std::nullopt;
            }
            options.json = value == "json";
        } else if (!takeFileArgument(arguments, i, options.files, err)) {
            return std::nullopt;
        }
    }
    if (options.files.size() < 2) {
        err << "titron-cli: groups compares two FILEs or more, one group each; "
            << options.files.size() << " given\n";
        return std::nullopt;
    }
    return options;
}

} // namespace

int runGroupsCommand(const std::vector<std::string>& arguments, std::ostream& out,
                     std::ostream& err) {
    const std::optional<GroupsOptions> options = parseGroupsOptions(arguments, err);
    if (!options) {
        return usageError(err);
    }

    FileRequest request;
    request.report = false;
    // Only the rows are used, fitted afresh; the window's estimator need not go on past its
    // first round of passes.
    request.passes = 0;
    request.currentDirectory = commandDirectory();
    FileAnalyzer analyzer(request);
    GroupsOutcome outcome;
    outcome.level = options->level;
    outcome.adjustment = options->adjustment;
    std::vector<analysis::AssayTable> tables;
    int worst = kExitReport;
    std::ostringstream noReport;
    for (const std::string& file : options->files) {
        // The boxes of a file whose rows were read (no responses, all responding) are told
        // in the output; only a file without rows to compare is told on standard error.
        std::ostringstream notes;
        FileResult result = analyzer.analyze(file, noReport, notes, file + ": ");
        if (!result.table) {
            err << notes.str();
            worst = std::max(worst, result.status);
            continue;
        }
        outcome.files.push_back(file);
        outcome.names.push_back(result.name);
        tables.push_back(std::move(*result.table));
    }
    if (worst != kExitReport) {
        err << "titron-cli: no comparison: every FILE must give rows to compare\n";
        return worst;
    }

    outcome.comparison = analysis::compareGroups(tables, outcome.level, outcome.adjustment);
    if (outcome.comparison.tested.size() < 2) {
        err << "titron-cli: no comparison: fewer than two groups have an estimate";
        for (std::size_t i = 0; i < outcome.comparison.groups.size(); ++i) {
            if (!outcome.comparison.groups[i].fit) {
                err << "\n  " << outcome.files[i] << ": "
                    << noEstimateReason(outcome.comparison.groups[i]);
            }
        }
        err << "\n";
        return kExitBox;
    }
    out << (options->json ? groupsJson(outcome) : groupsText(outcome));
    return kExitReport;
}

} // namespace titron::shell
