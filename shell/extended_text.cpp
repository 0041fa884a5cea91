#include "shell/extended_text.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "shell/figure_text.h"

namespace titron::shell {

namespace {

using analysis::SingleHitStatistics;
using analysis::ZTest;

constexpr double kVerdictLevel = 0.05; // a test below this p-value tells of a departure
constexpr double kResidualMark = 2.0;  // a residual beyond this in size is marked
constexpr const char* kConsistent = "Consistent with the single-hit model.";

// printf into the text; the lines here are short.
void appendFormatted(std::string& text, const char* format, ...) {
    char buffer[256];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    if (length > 0) {
        text.append(buffer,
                    std::min<std::size_t>(static_cast<std::size_t>(length), sizeof buffer - 1));
    }
}

// Four significant digits: proportions span many powers of ten.
std::string proportionText(double value) {
    return printedNumber("%.4g", value);
}

// "1 in" so many: whole and grouped by threes where that keeps four digits or more.
std::string frequencyText(double value) {
    if (!std::isfinite(value)) {
        return "1 in -";
    }
    return "1 in " + groupedOrFourDigits(value);
}

std::string optionalText(const std::optional<double>& value, const char* format) {
    if (!value || !std::isfinite(*value)) {
        return "-";
    }
    return printedNumber(format, *value);
}

// "p = " the p-value to four decimals, or "p < 0.0001" below them.
std::string pText(const std::optional<double>& p) {
    if (p && *p < 0.0001) {
        return "p < 0.0001";
    }
    return "p = " + optionalText(p, "%.4f");
}

std::string percentText(double level) {
    return printedNumber("%.6g%%", level * 100.0);
}

void appendInterval(std::string& text, const char* label,
                    const std::optional<analysis::Interval>& interval) {
    if (!interval) {
        appendFormatted(text, "    %-28s-\r\n", label);
        return;
    }
    const std::string proportions =
        proportionText(interval->lower) + " to " + proportionText(interval->upper);
    appendFormatted(text, "    %-28s%-24s%s to %s\r\n", label, proportions.c_str(),
                    frequencyText(1.0 / interval->lower).c_str(),
                    frequencyText(1.0 / interval->upper).c_str());
}

void appendEstimate(std::string& text, const SingleHitStatistics& model) {
    const analysis::SingleHitFit& fit = *model.fit;
    appendFormatted(text, "    %-28s%-24s%s\r\n",
                    "Proportion:", proportionText(fit.proportion).c_str(),
                    frequencyText(1.0 / fit.proportion).c_str());
    appendFormatted(text, "    %-28s%.5f (S.E. %.4f)\r\n", "Log proportion:", fit.logProportion,
                    fit.seLog);
    appendInterval(text, "Wald interval:", model.wald);
    appendInterval(text, "Likelihood-ratio interval:", model.likelihoodRatio);
}

void appendBound(std::string& text, const SingleHitStatistics& model) {
    const analysis::OneSidedBound& bound = *model.bound;
    const bool upper = bound.side == analysis::OneSidedBound::Side::Upper;
    text += upper ? "    No test responded, so there is no estimate.\r\n"
                  : "    Every test responded, so there is no estimate.\r\n";
    const std::string label = std::string(upper ? "Upper " : "Lower ") + percentText(model.level) +
                              " bound of the proportion:";
    appendFormatted(text, "    %-36s%-12s%s %s\r\n", label.c_str(),
                    proportionText(bound.proportion).c_str(),
                    upper ? "frequency at least" : "frequency at most",
                    frequencyText(1.0 / bound.proportion).c_str());
}

// What a departure in the slope's direction suggests: a response steeper than one hit
// allows, or less steep.
const char* slopeVerdict(const ZTest& test) {
    if (test.p >= kVerdictLevel) {
        return kConsistent;
    }
    return test.z > 0 ? "Steeper than one hit allows: a test may need more than one active unit."
                      : "Less steep than one hit allows: the active units may differ in activity.";
}

// The same for a term in the dose itself, which weighs the high doses most.
const char* doseVerdict(const ZTest& test) {
    if (test.p >= kVerdictLevel) {
        return kConsistent;
    }
    return test.z > 0 ? "More responses at high doses than one hit allows: a test may need "
                        "several units."
                      : "Fewer responses at high doses than one hit allows: the units may "
                        "differ in activity.";
}

void appendZTest(std::string& text, const char* label, const std::optional<ZTest>& test,
                 const char* (*verdict)(const ZTest&)) {
    if (!test) {
        return;
    }
    appendFormatted(text, "    %-28sz = %8.3f    %s\r\n      %s\r\n", label, test->z,
                    pText(test->p).c_str(), verdict(*test));
}

void appendChiSquare(std::string& text, const char* label,
                     const std::optional<analysis::ChiSquareTest>& test) {
    if (!test) {
        return;
    }
    appendFormatted(text, "    %-28schi-square = %.3f on %d df    %s\r\n      %s\r\n", label,
                    test->chiSquare, test->df, pText(test->p).c_str(),
                    !test->p                    ? "No test of fit with a single row."
                    : *test->p >= kVerdictLevel ? kConsistent
                                                : "The rows scatter about the fit more than "
                                                  "chance allows.");
}

void appendTests(std::string& text, const SingleHitStatistics& model) {
    text += "\r\n  Tests of the single-hit model (verdicts at the 5% level)\r\n";
    if (model.slope) {
        appendFormatted(text, "    %-28s%.4f (S.E. %.4f; one hit is 1)\r\n",
                        "Slope of log dose:", model.slope->slope, model.slope->seSlope);
    } else if (!model.noSlopeReason.empty()) {
        appendFormatted(text, "    %-28s%s\r\n",
                        "Slope of log dose:", ("none: " + model.noSlopeReason).c_str());
    }
    appendZTest(text, "Slope, Wald:", model.slopeWald, slopeVerdict);
    appendZTest(text, "Slope, likelihood ratio:", model.slopeLikelihoodRatio, slopeVerdict);
    appendZTest(text, "Score, log dose:", model.scoreLogDose, slopeVerdict);
    appendZTest(text, "Score, dose:", model.scoreDose, doseVerdict);
    appendChiSquare(text, "Pearson:", model.pearson);
    appendChiSquare(text, "Deviance:", model.deviance);
}

bool marked(const analysis::DoseResidual& row) {
    const auto beyond = [](const std::optional<double>& residual) {
        return residual && std::fabs(*residual) > kResidualMark;
    };
    return beyond(row.pearsonResidual) || beyond(row.devianceResidual);
}

void appendDoses(std::string& text, const SingleHitStatistics& model) {
    text += "\r\n  Observed and expected responses\r\n";
    text += "            Dose   Responses     Tested   Expected    Pearson   Deviance\r\n";
    bool anyMarked = false;
    for (const analysis::DoseResidual& row : model.doses) {
        const bool mark = marked(row);
        anyMarked = anyMarked || mark;
        appendFormatted(text, "    %12.10g  %10.0f %10.0f %10s %10s %10s%s\r\n", row.dose,
                        row.responses, row.tested, optionalText(row.expected, "%.3f").c_str(),
                        optionalText(row.pearsonResidual, "%.3f").c_str(),
                        optionalText(row.devianceResidual, "%.3f").c_str(), mark ? "  *" : "");
    }
    if (anyMarked) {
        text += "    * A residual beyond 2 in size: the row departs from the model.\r\n";
    }
}

} // namespace

void appendExtendedText(std::string& text, const SingleHitStatistics& model) {
    appendFormatted(text, "\r\n  Single-hit model at the %s level\r\n",
                    percentText(model.level).c_str());
    if (model.fit) {
        appendEstimate(text, model);
    } else if (model.bound) {
        appendBound(text, model);
    }
    if (model.fit) {
        appendTests(text, model);
    }
    appendDoses(text, model);
}

} // namespace titron::shell
