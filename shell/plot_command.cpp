#include "shell/plot_command.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>

#include "analysis/single_hit_model.h"
#include "platform/local_files.h"
#include "shell/command_line.h"
#include "shell/file_analysis.h"
#include "shell/svg_plot.h"
#include "vocabulary/failure.h"

namespace titron::shell {

namespace {

struct PlotOptions {
    double level = analysis::kDefaultLevel;
    std::optional<std::string> output;
    std::vector<std::string> files;
};

std::optional<PlotOptions> parsePlotOptions(const std::vector<std::string>& arguments,
                                            std::ostream& err) {
    PlotOptions options;
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
        } else if (argument == "--output" && hasValue) {
            options.output = arguments[++i];
        } else if (!takeFileArgument(arguments, i, options.files, err)) {
            return std::nullopt;
        }
    }
    if (options.files.empty()) {
        err << "titron-cli: no FILE to plot\n";
        return std::nullopt;
    }
    return options;
}

} // namespace

int runPlotCommand(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    const std::optional<PlotOptions> options = parsePlotOptions(arguments, err);
    if (!options) {
        return usageError(err);
    }
    FileRequest request;
    request.report = false;
    request.currentDirectory = commandDirectory();

    int worst = kExitReport;
    const bool several = options->files.size() > 1;
    FileAnalyzer analyzer(request);
    std::ostringstream noReport;
    std::vector<PlotAnalysis> analyses;
    for (const std::string& file : options->files) {
        const std::string prefix = several ? file + ": " : std::string();
        const FileResult result = analyzer.analyze(file, noReport, err, prefix);
        worst = std::max(worst, result.status);
        if (!result.table) {
            continue;
        }
        // The boxes of the totals (no responses, every test responded) leave a table
        // without a fit: their message has been told, and there is no line to draw.
        const analysis::SingleHitStatistics statistics =
            analysis::examineSingleHit(*result.table, options->level);
        if (!statistics.fit || !statistics.wald) {
            if (result.status == kExitReport) {
                err << prefix << "no fit of the single-hit model; left out of the plot\n";
            }
            continue;
        }
        analyses.push_back({result.name.empty() ? file : result.name, *result.table,
                            statistics.fit->proportion, *statistics.wald});
    }
    if (analyses.empty()) {
        err << "titron-cli: no analysis to plot\n";
        return worst == kExitReport ? kExitBox : worst;
    }

    const std::string svg = plotSvg(analyses, options->level);
    if (!options->output) {
        out << svg;
        return worst;
    }
    try {
        platform::LocalFiles().writeAll(*options->output, svg);
    } catch (const vocabulary::Failure& failure) {
        err << "cannot write " << *options->output << ": " << failure.description() << "\n";
        worst = std::max(worst, kExitUnreadable);
    }
    return worst;
}

} // namespace titron::shell
