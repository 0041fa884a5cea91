#include "shell/design_command.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

#include "analysis/assay_design.h"
#include "analysis/design_simulation.h"
#include "analysis/single_hit_model.h"
#include "shell/command_line.h"
#include "shell/design_report.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::shell {

namespace {

// Tests per dose when neither --tested nor --target-ratio says: four doses of 24 fill one
// 96-well plate.
constexpr double kDefaultTested = 24.0;

// The X of 1 in X that a plan takes: far beyond any assay, yet the doses and "1 in" figures
// of the text stay ordinary numbers.
constexpr double kLeastFrequency = 1e-6;
constexpr double kMostFrequency = 1e12;

// A simulation draws every test on its own; beyond this many in all it would take minutes.
constexpr double kMostSimulatedTests = 1e9;

struct DesignOptions {
    std::optional<double> frequency;
    std::vector<double> doses;
    std::vector<double> tested;
    double level = analysis::kDefaultLevel;
    std::optional<double> targetRatio;
    bool json = false;
    std::optional<long> simulate;
    std::optional<std::uint64_t> seed;
};

std::optional<double> finiteNumber(const std::string& text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string> splitAtCommas(const std::string& text) {
    std::vector<std::string> items;
    std::size_t start = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos;
         comma = text.find(',', start)) {
        items.push_back(vocabulary::trimSpaces(text.substr(start, comma - start)));
        start = comma + 1;
    }
    items.push_back(vocabulary::trimSpaces(text.substr(start)));
    return items;
}

bool parseDoses(const std::string& value, std::vector<double>& doses, std::ostream& err) {
    doses.clear();
    for (const std::string& item : splitAtCommas(value)) {
        const std::optional<double> dose = finiteNumber(item);
        if (!dose || !(*dose > 0.0)) {
            err << "titron-cli: --doses needs numbers above 0 separated by commas; '" << item
                << "' is not one\n";
            return false;
        }
        doses.push_back(*dose);
    }
    return true;
}

bool parseTested(const std::string& value, std::vector<double>& tested, std::ostream& err) {
    tested.clear();
    for (const std::string& item : splitAtCommas(value)) {
        const std::optional<int> count = wholeNumberOption(item, 1);
        if (!count) {
            err << "titron-cli: --tested needs whole numbers of 1 or more; '" << item
                << "' is not one\n";
            return false;
        }
        tested.push_back(*count);
    }
    return true;
}

bool parseOne(const std::string& option, const std::string& value, DesignOptions& options,
              std::ostream& err) {
    if (option == "--frequency") {
        options.frequency = finiteNumber(value);
        if (!options.frequency || !(*options.frequency >= kLeastFrequency) ||
            !(*options.frequency <= kMostFrequency)) {
            err << "titron-cli: --frequency needs the X of 1 in X, a number from 0.000001 to "
                   "1,000,000,000,000, not '"
                << value << "'\n";
            return false;
        }
    } else if (option == "--doses") {
        return parseDoses(value, options.doses, err);
    } else if (option == "--tested") {
        return parseTested(value, options.tested, err);
    } else if (option == "--level") {
        const std::optional<double> level = levelOption(value, err);
        if (!level) {
            return false;
        }
        options.level = *level;
    } else if (option == "--target-ratio") {
        options.targetRatio = finiteNumber(value);
        if (!options.targetRatio || !(*options.targetRatio > 1.0)) {
            err << "titron-cli: --target-ratio needs the widest upper / lower ratio wanted, a "
                   "number above 1, not '"
                << value << "'\n";
            return false;
        }
    } else if (option == "--format") {
        if (value != "text" && value != "json") {
            err << "titron-cli: --format is text or json, not '" << value << "'\n";
            return false;
        }
        options.json = value == "json";
    } else if (option == "--simulate") {
        const std::optional<int> runs = wholeNumberOption(value, 1);
        if (!runs) {
            err << "titron-cli: --simulate needs a whole number of assays, 1 or more, not '"
                << value << "'\n";
            return false;
        }
        options.simulate = *runs;
    } else if (option == "--seed") {
        long long seed = 0;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), seed);
        if (error != std::errc() || end != value.data() + value.size() || seed < 0) {
            err << "titron-cli: --seed needs a whole number of 0 or more, not '" << value << "'\n";
            return false;
        }
        options.seed = static_cast<std::uint64_t>(seed);
    } else {
        err << "titron-cli: unknown option or missing value: " << option << "\n";
        return false;
    }
    return true;
}

std::optional<DesignOptions> parseDesignOptions(const std::vector<std::string>& arguments,
                                                std::ostream& err) {
    DesignOptions options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& option = arguments[i];
        const bool hasValue = i + 1 < arguments.size() && option.starts_with("--");
        if (!hasValue) {
            err << (option.starts_with("-") ? "titron-cli: unknown option or missing value: "
                                            : "titron-cli: design takes no FILE: ")
                << option << "\n";
            return std::nullopt;
        }
        if (!parseOne(option, arguments[++i], options, err)) {
            return std::nullopt;
        }
    }
    if (!options.frequency) {
        err << "titron-cli: design needs --frequency X, the expected frequency of 1 in X\n";
        return std::nullopt;
    }
    const std::size_t doseCount = options.doses.empty() ? 4 : options.doses.size();
    if (options.tested.size() > 1 && options.tested.size() != doseCount) {
        err << "titron-cli: --tested gives " << options.tested.size() << " counts for " << doseCount
            << (options.doses.empty() ? " proposed doses\n" : " doses\n");
        return std::nullopt;
    }
    if (options.targetRatio && !options.tested.empty()) {
        err << "titron-cli: --target-ratio chooses the tests per dose; leave out --tested\n";
        return std::nullopt;
    }
    if (options.seed && !options.simulate) {
        err << "titron-cli: --seed goes with --simulate\n";
        return std::nullopt;
    }
    return options;
}

} // namespace

int runDesignCommand(const std::vector<std::string>& arguments, std::ostream& out,
                     std::ostream& err) {
    const std::optional<DesignOptions> options = parseDesignOptions(arguments, err);
    if (!options) {
        return usageError(err);
    }
    DesignPlan plan;
    plan.frequency = *options->frequency;
    plan.level = options->level;
    plan.targetRatio = options->targetRatio;
    const double proportion = 1.0 / plan.frequency;
    plan.proposedDoses = options->doses.empty();
    const std::vector<double> doses =
        plan.proposedDoses ? analysis::proposeDoses(proportion) : options->doses;

    std::vector<double> tested = options->tested;
    if (options->targetRatio) {
        const std::optional<double> fewest =
            analysis::fewestTestsPerDose(proportion, doses, plan.level, *options->targetRatio);
        if (!fewest) {
            err << "titron-cli: no number of tests per dose up to 1,000,000,000 gives an "
                   "interval ratio of at most "
                << vocabulary::generalNumber(*options->targetRatio) << " at these doses\n";
            return kExitBox;
        }
        tested = {*fewest};
    } else if (tested.empty()) {
        tested = {kDefaultTested};
    }
    double allTests = 0.0;
    for (std::size_t i = 0; i < doses.size(); ++i) {
        plan.doses.push_back({doses[i], tested.size() == 1 ? tested[0] : tested[i]});
        allTests += plan.doses.back().tested;
    }

    if (options->simulate) {
        if (static_cast<double>(*options->simulate) * allTests > kMostSimulatedTests) {
            err << "titron-cli: --simulate " << *options->simulate << " would draw more than "
                << "1,000,000,000 tests in all; ask for fewer assays\n";
            return kExitUsage;
        }
        plan.seed = options->seed.value_or(analysis::kDefaultSimulationSeed);
        plan.simulation = analysis::simulateDesign(proportion, plan.doses, plan.level,
                                                   *options->simulate, plan.seed);
    }
    out << (options->json ? designJson(plan) : designText(plan));
    return kExitReport;
}

} // namespace titron::shell
