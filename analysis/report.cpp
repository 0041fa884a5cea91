#include "analysis/report.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/checked_math.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/text_routines.h"

namespace titron::analysis {

namespace {

// The report without its name, file line and table is about this long; reserving it keeps
// the text in one buffer as it grows.
constexpr std::size_t kFixedReportLength = 1200;

void appendBlanks(std::string& text, int count) {
    text.append(static_cast<std::size_t>(count), ' ');
}

void appendLineEnd(std::string& text) {
    text += kLineEnd;
}

// A line with a proportion and its frequency (1 / proportion). The label widths differ, so
// each line brings the blanks that put the value at column 30 and the frequency at column 65.
void appendProportionLine(std::string& text, std::string_view label, int gap, double proportion,
                          std::string_view frequencyLabel, int frequencyGap) {
    text += label;
    appendBlanks(text, gap);
    text += vocabulary::formatMask(proportion, "0.0000000");
    appendBlanks(text, 5);
    text += frequencyLabel;
    appendBlanks(text, frequencyGap);
    text += "1 in ";
    text += vocabulary::formatMask(checked::divide(1.0, proportion), "###,###");
    appendLineEnd(text);
}

void appendPValue(std::string& text, const std::optional<double>& p) {
    if (!p) {
        return;
    }
    if (*p < 0.001) {
        text += "< 0.001";
        return;
    }
    text += vocabulary::formatMask(*p, "0.0000");
}

// Blanks that keep the decimal point of a value in its column as the value grows.
int shrinkingGap(int base, double value, double firstStep, double secondStep) {
    int gap = base;
    if (value >= firstStep) {
        --gap;
    }
    if (value >= secondStep) {
        --gap;
    }
    return gap;
}

void appendChiSquareLine(std::string& text, std::string_view label, int gap, double chiSquare,
                         const std::optional<double>& p) {
    text += label;
    appendBlanks(text, shrinkingGap(gap, chiSquare, 10.0, 100.0));
    text += vocabulary::formatMask(chiSquare, "##0.000");
    appendBlanks(text, 9);
    text += "p-value:";
    appendBlanks(text, 13);
    appendPValue(text, p);
    appendLineEnd(text);
}

void appendFileLine(std::string& text, std::string_view analysisFile) {
    text += "Titron Analysis File: [";
    text += analysisFile;
    text += "]";
    appendLineEnd(text);
    appendLineEnd(text);
}

} // namespace

std::string fileLine(std::string_view analysisFile) {
    std::string line;
    appendFileLine(line, analysisFile);
    return line;
}

std::string reportText(const Figures& f, std::string_view name, std::string_view analysisFile,
                       std::string_view table) {
    std::string text;
    text.reserve(kFixedReportLength + name.size() + analysisFile.size() + table.size());
    text += "Analysis Name: ";
    text += name;
    appendLineEnd(text);
    if (f.converged) {
        text += "Iterations:     ";
        text += std::to_string(f.iterations);
    } else {
        appendLineEnd(text);
        text += " NO CONVERGENCE after";
        text += std::to_string(f.iterations);
        text += " iterations.";
    }
    appendLineEnd(text);
    appendLineEnd(text);

    appendProportionLine(text, "    Proportion:", 15, f.proportion, "Frequency:", 11);
    appendProportionLine(text, "    Proportion - 1 S.E.:", 6, f.proportionMinus,
                         "Frequency - 1 S.E.:", 2);
    appendProportionLine(text, "    Proportion + 1 S.E.:", 6, f.proportionPlus,
                         "Frequency + 1 S.E.:", 2);
    appendLineEnd(text);
    text += "  95% Confidence Interval";
    appendLineEnd(text);
    appendProportionLine(text, "    Lower Proportion:", 9, f.lowerLimit, "Lower Frequency:", 5);
    appendProportionLine(text, "    Upper Proportion:", 9, f.upperLimit, "Upper Frequency:", 5);

    const double b = f.logProportion;
    int logGap = 10;
    if (b < 0.0) {
        --logGap;
    }
    logGap = shrinkingGap(logGap, std::fabs(b), 10.0, 100.0);
    text += "    Log Proportion: ";
    appendBlanks(text, logGap);
    text += vocabulary::formatMask(b, "##0.00000");
    appendBlanks(text, 7);
    text += "S.E. of Log Prop.:";
    appendBlanks(text, 3);
    text += vocabulary::formatMask(f.se, "#0.0000");

    if (f.inconsistentWithModel) {
        appendLineEnd(text);
        appendLineEnd(text);
        text += "WARNING:  DATA IS INCONSISTENT WITH THE MODEL.";
    }

    if (f.hasTests) {
        appendLineEnd(text);
        appendLineEnd(text);
        text += "  Test for internal inconsistency in the assay";
        appendLineEnd(text);
        appendChiSquareLine(text, "    Chi-square (Pearson):", 5, f.pearsonChi, f.pearsonP);
        appendChiSquareLine(text, "    Chi-square (Deviance):", 4, f.deviance, f.devianceP);
        int dfGap = 7;
        if (f.rows > 10) {
            --dfGap;
        }
        if (f.rows > 100) {
            --dfGap;
        }
        text += "    Degrees of Freedom:";
        appendBlanks(text, dfGap);
        text += std::to_string(f.df);
        appendLineEnd(text);
        appendLineEnd(text);
        if (f.poorFit) {
            text += "WARNING:  DATA IS INCONSISTENT WITH THE MODEL. (p-value < 0.05)";
            appendLineEnd(text);
            text += "Recommendation: Consult a statician.";
            appendLineEnd(text);
            appendLineEnd(text);
        }
        text += "END";
    }

    appendLineEnd(text);
    appendLineEnd(text);
    if (!analysisFile.empty()) {
        appendFileLine(text, analysisFile);
    }
    text += table;
    return text;
}

} // namespace titron::analysis
