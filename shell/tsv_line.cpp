#include "shell/tsv_line.h"

#include <charconv>

namespace titron::shell {

namespace {

constexpr int kFiguresWithoutTests = 13; // the fields behind passes

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

void appendTsvLine(std::string& line, const std::string& file, const FileResult& r) {
    appendField(line, file);
    line += '\t';
    appendField(line, r.name);
    line += '\t';
    appendField(line, r.outcome);
    line += '\t';
    if (r.outcome == "report" || r.outcome == "no convergence") {
        line += std::to_string(r.passes);
    }
    if (!r.figures) {
        line.append(kFiguresWithoutTests, '\t');
        line += '\n';
        return;
    }
    const analysis::Figures& f = *r.figures;
    for (const double value :
         {f.logProportion, f.se, f.proportion, f.proportionMinus, f.proportionPlus, f.lowerLimit,
          f.upperLimit, 1.0 / f.proportion, f.pearsonChi, f.deviance}) {
        line += '\t';
        appendFullPrecision(line, value);
    }
    line += '\t';
    if (f.hasTests) {
        line += std::to_string(f.df);
    }
    line += '\t';
    if (f.pearsonP) {
        appendFullPrecision(line, *f.pearsonP);
    }
    line += '\t';
    if (f.devianceP) {
        appendFullPrecision(line, *f.devianceP);
    }
    line += '\n';
}

} // namespace titron::shell
