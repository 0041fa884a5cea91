#include "analysis/report.h"

#include <cmath>

#include "analysis/checked_math.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/text_routines.h"

namespace titron::analysis {

namespace {

std::string blanks(int count) {
    return std::string(static_cast<std::size_t>(count), ' ');
}

std::string frequency(double proportion) {
    return vocabulary::formatMask(checked::divide(1.0, proportion), "###,###");
}

// A line with a proportion and its frequency. The label widths differ, so each line
// brings the blanks that put the value at column 30 and the frequency at column 65.
std::string proportionLine(std::string_view label, int gap, double proportion,
                           std::string_view frequencyLabel, int frequencyGap) {
    std::string line(label);
    line += blanks(gap);
    line += vocabulary::formatMask(proportion, "0.0000000");
    line += blanks(5);
    line += frequencyLabel;
    line += blanks(frequencyGap);
    line += "1 in ";
    line += frequency(proportion);
    return line;
}

std::string pValueText(const std::optional<double>& p) {
    if (!p) {
        return "";
    }
    if (*p < 0.001) {
        return "< 0.001";
    }
    return vocabulary::formatMask(*p, "0.0000");
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

} // namespace

std::string fileLine(std::string_view analysisFile) {
    std::string line = "Titron Analysis File: [";
    line += vocabulary::lowerCase(analysisFile);
    line += "]";
    line += kLineEnd;
    line += kLineEnd;
    return line;
}

std::string reportText(const Figures& f, std::string_view name, std::string_view analysisFile,
                       std::string_view table) {
    const std::string crlf(kLineEnd);
    std::string text = "Analysis Name: ";
    text += name;
    text += crlf;
    if (f.converged) {
        text += "Iterations:     " + std::to_string(f.iterations) + crlf + crlf;
    } else {
        text += crlf + " NO CONVERGENCE after" + std::to_string(f.iterations) + " iterations." +
                crlf + crlf;
    }

    text += proportionLine("    Proportion:", 15, f.proportion, "Frequency:", 11) + crlf;
    text +=
        proportionLine("    Proportion - 1 S.E.:", 6, f.proportionMinus, "Frequency - 1 S.E.:", 2) +
        crlf;
    text +=
        proportionLine("    Proportion + 1 S.E.:", 6, f.proportionPlus, "Frequency + 1 S.E.:", 2) +
        crlf + crlf;
    text += "  95% Confidence Interval" + crlf;
    text += proportionLine("    Lower Proportion:", 9, f.lowerLimit, "Lower Frequency:", 5) + crlf;
    text += proportionLine("    Upper Proportion:", 9, f.upperLimit, "Upper Frequency:", 5) + crlf;

    const double b = f.logProportion;
    int logGap = 10;
    if (b < 0.0) {
        --logGap;
    }
    logGap = shrinkingGap(logGap, std::fabs(b), 10.0, 100.0);
    text += "    Log Proportion: " + blanks(logGap) + vocabulary::formatMask(b, "##0.00000") + blanks(7) +
            "S.E. of Log Prop.:" + blanks(3) + vocabulary::formatMask(f.se, "#0.0000");

    if (f.inconsistentWithModel) {
        text += crlf + crlf + "WARNING:  DATA IS INCONSISTENT WITH THE MODEL.";
    }

    if (f.hasTests) {
        text += crlf + crlf + "  Test for internal inconsistency in the assay" + crlf;
        text += "    Chi-square (Pearson):" + blanks(shrinkingGap(5, f.pearsonChi, 10.0, 100.0)) +
                vocabulary::formatMask(f.pearsonChi, "##0.000") + blanks(9) + "p-value:" + blanks(13) +
                pValueText(f.pearsonP) + crlf;
        text += "    Chi-square (Deviance):" + blanks(shrinkingGap(4, f.deviance, 10.0, 100.0)) +
                vocabulary::formatMask(f.deviance, "##0.000") + blanks(9) + "p-value:" + blanks(13) +
                pValueText(f.devianceP) + crlf;
        int dfGap = 7;
        if (f.rows > 10) {
            --dfGap;
        }
        if (f.rows > 100) {
            --dfGap;
        }
        text += "    Degrees of Freedom:" + blanks(dfGap) + std::to_string(f.df) + crlf + crlf;
        if (f.poorFit) {
            text += "WARNING:  DATA IS INCONSISTENT WITH THE MODEL. (p-value < 0.05)" + crlf;
            text += "Recommendation: Consult a statician." + crlf + crlf;
        }
        text += "END";
    }

    text += crlf + crlf;
    if (!analysisFile.empty()) {
        text += fileLine(analysisFile);
    }
    text += table;
    return text;
}

} // namespace titron::analysis
