#include "shell/design_report.h"

#include <cmath>
#include <cstdio>

#include "analysis/distributions.h"
#include "shell/figure_text.h"
#include "shell/json_writer.h"
#include "vocabulary/number_mask.h"
#include "vocabulary/number_text.h"

namespace titron::shell {

namespace {

// Counts and "1 in" figures of 100 and more in whole numbers with groups of three;
// smaller ones to three significant figures.
std::string grouped(double value) {
    return value >= 100.0 ? vocabulary::formatMask(value, "###,###") : printedNumber("%.3g", value);
}

// A dose as given, with groups of three when it is whole and large.
std::string doseText(double dose) {
    return dose >= 1000.0 && dose == std::floor(dose) && dose < 1e15
               ? vocabulary::formatMask(dose, "###,###")
               : vocabulary::generalNumber(dose);
}

std::string chance(double probability) {
    return probability == 0.0 ? std::string("0") : printedNumber("%.2g", probability);
}

std::string percent(double level) {
    return vocabulary::generalNumber(level * 100.0) + "%";
}

void appendDoseReason(std::string& text, const DesignPlan& plan) {
    const double best = analysis::mostInformativeFd();
    text += "One test tells most about f = 1/" + grouped(plan.frequency) +
            " where f d = " + printedNumber("%.3f", best) +
            ": there its information,\n(f d)^2 exp(-f d) / p, peaks at " +
            printedNumber("%.3f", analysis::informationPerTest(best)) +
            "; here that is a dose of " + grouped(best * plan.frequency) + ".\n";
    if (plan.proposedDoses) {
        text += "Proposed: four doses a factor of 2 apart, that dose rounded to " +
                doseText(plan.doses[2].dose) +
                " with a quarter,\n"
                "a half and twice it. Above it nearly every test responds and tells little,\n"
                "below it the information falls slowly, so the series reaches further below\n"
                "than above; a frequency three times higher or lower then costs about the same.\n";
    }
}

void appendDoseTable(std::string& text, const DesignPlan& plan,
                     const analysis::DesignFigures& figures) {
    char line[160];
    std::snprintf(line, sizeof line, "\n%14s%9s%9s%21s%23s\n", "Dose", "Tested", "f d",
                  "Expected responses", "Information per test");
    text += line;
    const double proportion = 1.0 / plan.frequency;
    for (std::size_t i = 0; i < plan.doses.size(); ++i) {
        const double x = proportion * plan.doses[i].dose;
        std::snprintf(line, sizeof line, "%14s%9s%9s%21s%23s\n",
                      doseText(plan.doses[i].dose).c_str(), grouped(plan.doses[i].tested).c_str(),
                      printedNumber("%.3g", x).c_str(),
                      printedNumber("%.1f", figures.expectedResponses[i]).c_str(),
                      printedNumber("%.3f", analysis::informationPerTest(x)).c_str());
        text += line;
    }
}

void appendPrecision(std::string& text, const DesignPlan& plan,
                     const analysis::DesignFigures& figures) {
    text += "\nExpected S.E. of log proportion:  ";
    if (!std::isfinite(figures.seLog)) {
        text += "none: these doses tell nothing of the frequency\n";
    } else {
        const double z = analysis::normalUpperQuantile((1.0 - plan.level) / 2.0);
        text += printedNumber("%.4f", figures.seLog) + "\nExpected " + percent(plan.level) +
                " interval:            1 in " +
                grouped(plan.frequency * std::exp(z * figures.seLog)) + " to 1 in " +
                grouped(plan.frequency * std::exp(-z * figures.seLog)) + " (upper / lower " +
                printedNumber("%.3g", figures.intervalRatio) + ")\n";
    }
    text += "Chance of no estimate:            " +
            chance(figures.probabilityNone + figures.probabilityAll) +
            "\n  no test responding:             " + chance(figures.probabilityNone) +
            "\n  every test responding:          " + chance(figures.probabilityAll) + "\n";
}

void appendSensitivity(std::string& text, const DesignPlan& plan) {
    text += "\nIf the true frequency is three times higher or lower than the guess:\n";
    char line[160];
    std::snprintf(line, sizeof line, "%22s%16s%18s%24s\n", "Frequency", "S.E. of log",
                  "Interval ratio", "Chance of no estimate");
    text += line;
    for (const double factor : {1.0 / 3.0, 1.0, 3.0}) {
        const double frequency = plan.frequency * factor;
        const analysis::DesignFigures figures =
            analysis::assessDesign(1.0 / frequency, plan.doses, plan.level);
        std::snprintf(line, sizeof line, "%22s%16s%18s%24s\n",
                      ("1 in " + grouped(frequency)).c_str(),
                      printedNumber("%.4f", figures.seLog).c_str(),
                      printedNumber("%.3g", figures.intervalRatio).c_str(),
                      chance(figures.probabilityNone + figures.probabilityAll).c_str());
        text += line;
    }
}

void appendSimulation(std::string& text, const DesignPlan& plan) {
    const analysis::SimulationOutcome& outcome = *plan.simulation;
    const long estimated = outcome.runs - outcome.noEstimate;
    text += "\nSimulation: " + grouped(static_cast<double>(outcome.runs)) +
            " assays drawn from the model at 1 in " + grouped(plan.frequency) + " (seed " +
            std::to_string(plan.seed) + ")\n  No estimate:                 " +
            grouped(static_cast<double>(outcome.noEstimate)) + "\n  " + percent(plan.level) +
            " Wald interval held f:    " + grouped(static_cast<double>(outcome.covered)) + " of " +
            grouped(static_cast<double>(estimated)) + " with an estimate";
    if (estimated > 0) {
        text += " (" +
                printedNumber("%.1f", 100.0 * static_cast<double>(outcome.covered) /
                                          static_cast<double>(estimated)) +
                "%)";
    }
    text += "\n";
}

} // namespace

std::string designText(const DesignPlan& plan) {
    const analysis::DesignFigures figures =
        analysis::assessDesign(1.0 / plan.frequency, plan.doses, plan.level);
    std::string text = "Assay plan for an expected frequency of 1 in " + grouped(plan.frequency) +
                       " (proportion " + printedNumber("%.3g", 1.0 / plan.frequency) + ")\n\n";
    appendDoseReason(text, plan);
    if (plan.targetRatio) {
        text += "Tests per dose: " + grouped(plan.doses.front().tested) +
                ", the fewest whose expected " + percent(plan.level) +
                " interval has upper / lower at most " +
                vocabulary::generalNumber(*plan.targetRatio) + ".\n";
    }
    appendDoseTable(text, plan, figures);
    appendPrecision(text, plan, figures);
    appendSensitivity(text, plan);
    if (plan.simulation) {
        appendSimulation(text, plan);
    }
    return text;
}

std::string designJson(const DesignPlan& plan) {
    const analysis::DesignFigures figures =
        analysis::assessDesign(1.0 / plan.frequency, plan.doses, plan.level);
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("frequency").number(plan.frequency);
    json.key("level").number(plan.level).key("doses").beginArray();
    for (std::size_t i = 0; i < plan.doses.size(); ++i) {
        json.beginObject().key("dose").number(plan.doses[i].dose);
        json.key("tested").number(plan.doses[i].tested);
        json.key("expected_responses").number(figures.expectedResponses[i]).endObject();
    }
    json.endArray().key("se_log").number(figures.seLog);
    json.key("interval_ratio").number(figures.intervalRatio);
    json.key("probability_none").number(figures.probabilityNone);
    json.key("probability_all").number(figures.probabilityAll);
    if (plan.simulation) {
        const analysis::SimulationOutcome& outcome = *plan.simulation;
        const long estimated = outcome.runs - outcome.noEstimate;
        json.key("simulation").beginObject().key("runs").integer(outcome.runs);
        json.key("seed").integer(static_cast<long long>(plan.seed));
        json.key("no_estimate").integer(outcome.noEstimate);
        json.key("covered").integer(outcome.covered).key("coverage");
        if (estimated > 0) {
            json.number(static_cast<double>(outcome.covered) / static_cast<double>(estimated));
        } else {
            json.null();
        }
        json.endObject();
    }
    json.endObject();
    return text + "\n";
}

} // namespace titron::shell
