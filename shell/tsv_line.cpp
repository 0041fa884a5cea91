#include "shell/tsv_line.h"

#include <charconv>

namespace titron::shell {

namespace {

// A field: Tabs and line ends inside it would break the columns.
void appendField(std::string& line, const std::string& text) {
    for (const char c : text) {
        line += (c == '\t' || c == '\r' || c == '\n') ? ' ' : c;
    }
}

} // namespace

const char* const kTsvHeading =
    "file\tname\toutcome\tpasses\tlog_proportion\tse_log_proportion\tproportion\t"
    "proportion_minus_1se\tproportion_plus_1se\tlower_proportion_95\t"
    "upper_proportion_95\tfrequency\tpearson_chi_square\tdeviance_chi_square\tdf\t"
    "pearson_p\tdeviance_p\n";

// std::to_chars with a precision is printf's %g in the "C" locale, without the format
// string's parsing and the locale's lookups.
void appendFullPrecision(std::string& text, double value) {
    char buffer[32]; // "-d.dddddddddddddddde-308" is the longest
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17).ptr;
    text.append(buffer, end);
}

std::array<ReportField, kReportFieldCount> reportFields(const analysis::Figures& f) {
    return {{{"log_proportion", f.logProportion},
             {"se_log_proportion", f.se},
             {"proportion", f.proportion},
             {"proportion_minus_1se", f.proportionMinus},
             {"proportion_plus_1se", f.proportionPlus},
             {"lower_proportion_95", f.lowerLimit},
             {"upper_proportion_95", f.upperLimit},
             {"frequency", 1.0 / f.proportion},
             {"pearson_chi_square", f.pearsonChi},
             {"deviance_chi_square", f.deviance},
             {"df", f.hasTests ? std::optional<double>(f.df) : std::nullopt},
             {"pearson_p", f.pearsonP},
             {"deviance_p", f.devianceP}}};
}

std::optional<std::int32_t> passesOf(const FileResult& result) {
    if (result.outcome == "report" || result.outcome == "no convergence") {
        return result.passes;
    }
    return std::nullopt;
}

void appendTsvLine(std::string& line, const std::string& file, const FileResult& r) {
    appendField(line, file);
    line += '\t';
    appendField(line, r.name);
    line += '\t';
    appendField(line, r.outcome);
    line += '\t';
    if (const std::optional<std::int32_t> passes = passesOf(r)) {
        line += std::to_string(*passes);
    }
    if (!r.figures) {
        line.append(kReportFieldCount, '\t');
        line += '\n';
        return;
    }
    for (const ReportField& field : reportFields(*r.figures)) {
        line += '\t';
        if (field.value) {
            appendFullPrecision(line, *field.value); // a whole df prints as its digits
        }
    }
    line += '\n';
}

} // namespace titron::shell
