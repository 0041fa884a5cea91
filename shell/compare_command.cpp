#include "shell/compare_command.h"

#include <optional>

#include "comparison/compare.h"
#include "comparison/comparison_report.h"
#include "platform/scripted_platform.h"
#include "shell/command_line.h"

namespace titron::shell {

namespace {

struct CompareOptions {
    int row = 1;
    std::optional<std::string> saveTo;
    std::vector<std::string> files;
};

std::optional<CompareOptions> parseCompareOptions(const std::vector<std::string>& arguments,
                                                  std::ostream& err) {
    CompareOptions options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == "--row" && hasValue) {
            const std::string& value = arguments[++i];
            const std::optional<int> row = wholeNumberOption(value, 1);
            if (!row) {
                err << "titron-cli: --row needs a row number of 1 or more, not '" << value << "'\n";
                return std::nullopt;
            }
            options.row = *row;
        } else if (argument == "--save" && hasValue) {
            options.saveTo = arguments[++i];
        } else if (!takeFileArgument(arguments, i, options.files, err)) {
            return std::nullopt;
        }
    }
    if (options.files.empty()) {
        err << "titron-cli: no FILE to compare\n";
        return std::nullopt;
    }
    return options;
}

} // namespace

int runCompareCommand(const std::vector<std::string>& arguments, std::ostream& out,
                      std::ostream& err) {
    const std::optional<CompareOptions> options = parseCompareOptions(arguments, err);
    if (!options) {
        return usageError(err);
    }
    platform::ScriptedPlatform platform;
    session::Session session;
    comparison::Compare compare(platform.services(), session);
    compare.beginEmpty();
    int status = kExitReport;
    const std::vector<comparison::AddOutcome> outcomes = compare.addFiles(options->files);
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        const std::string& file = options->files[i];
        if (outcomes[i] == comparison::AddOutcome::NoResults) {
            err << file << ": no analysis results in it; skipped\n";
        } else if (outcomes[i] == comparison::AddOutcome::Unreadable) {
            err << file << ": cannot be read; skipped\n";
            status = kExitUnreadable;
        } else if (outcomes[i] == comparison::AddOutcome::Full) {
            err << file << ": the comparison holds no more rows; skipped\n";
            status = kExitUnreadable;
        }
    }
    const int rows = compare.grid().dataRowCount();
    if (options->row > std::max(rows, 1)) {
        err << "titron-cli: --row " << options->row << " is beyond the " << rows
            << " rows of the comparison\n";
        return kExitUsage;
    }
    compare.chooseComparisonRow(options->row);
    out << comparison::buildReport(compare.grid());
    std::string failure;
    if (options->saveTo && !compare.writeComparison(*options->saveTo, &failure)) {
        err << "cannot write " << *options->saveTo << ": " << failure << "\n";
        status = kExitUnreadable;
    }
    return status;
}

} // namespace titron::shell
