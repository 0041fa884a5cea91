#include "shell/groups_output.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "shell/figure_text.h"
#include "shell/json_writer.h"
#include "vocabulary/number_mask.h"

namespace titron::shell {

namespace {

using analysis::GroupComparison;
using analysis::OneSidedBound;
using analysis::PValueAdjustment;

// A figure or "infinity" where an interval is too wide for a double.
std::string readable(double value) {
    if (!std::isfinite(value)) {
        // An interval too wide for a double: exp of a huge margin, or 1 over an underflow.
        return value > 0 ? "infinity" : "?";
    }
    return groupedOrFourDigits(value);
}

// As the report writes p-values.
std::string pText(double p) {
    return p < 0.001 ? "< 0.001" : vocabulary::formatMask(p, "0.0000");
}

std::string levelText(double level) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g%%", level * 100.0);
    return text;
}

const char* adjustmentTitle(PValueAdjustment adjustment) {
    switch (adjustment) {
    case PValueAdjustment::Holm:
        return "Holm's step-down";
    case PValueAdjustment::BenjaminiHochberg:
        return "Benjamini-Hochberg's false discovery rate";
    case PValueAdjustment::None:
        break;
    }
    return "no adjustment";
}

// Rows of cells, each column as wide as its widest cell, two blanks between columns; the
// first column right-aligned (positions), the others left-aligned.
void appendTable(std::string& text, const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t c = 0; c < row.size(); ++c) {
            widths[c] = std::max(widths[c], row[c].size());
        }
    }
    for (const auto& row : rows) {
        std::string line = "  ";
        for (std::size_t c = 0; c < row.size(); ++c) {
            const std::string padding(widths[c] - row[c].size(), ' ');
            line += c == 0 ? padding + row[c] : row[c] + padding;
            line += "  ";
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
}

// A paragraph broken at blanks into lines of at most 88 characters where its words allow.
std::string wrapped(const std::string& paragraph) {
    constexpr std::size_t kWidth = 88;
    std::string text;
    std::size_t start = 0;
    while (paragraph.size() - start > kWidth) {
        std::size_t end = paragraph.rfind(' ', start + kWidth);
        if (end == std::string::npos || end <= start) {
            end = paragraph.find(' ', start + kWidth);
            if (end == std::string::npos) {
                break;
            }
        }
        text += paragraph.substr(start, end - start) + "\n";
        start = end + 1;
    }
    return text + paragraph.substr(start) + "\n";
}

std::string groupLabel(const GroupsOutcome& outcome, std::size_t i) {
    return outcome.names[i].empty() ? outcome.files[i] : outcome.names[i];
}

void appendGroups(std::string& text, const GroupsOutcome& outcome) {
    const GroupComparison& comparison = outcome.comparison;
    text +=
        "Groups, each with its frequency and " + levelText(outcome.level) + " Wald interval\n\n";
    std::vector<std::vector<std::string>> rows{{"Group", "Name", "Frequency", "Interval", "File"}};
    std::vector<std::string> notes;
    for (std::size_t i = 0; i < comparison.groups.size(); ++i) {
        const analysis::GroupEstimate& group = comparison.groups[i];
        std::vector<std::string> row{std::to_string(i + 1), outcome.names[i]};
        if (group.fit) {
            row.push_back("1 in " + readable(1.0 / group.fit->proportion));
            row.push_back("1 in " + readable(1.0 / group.wald->upper) + " to " +
                          readable(1.0 / group.wald->lower));
        } else {
            row.push_back("no estimate");
            std::string bound;
            if (group.bound) {
                const bool upper = group.bound->side == OneSidedBound::Side::Upper;
                bound = upper ? "at most 1 in " : "at least 1 in ";
                bound += readable(1.0 / group.bound->proportion);
            }
            row.push_back(bound);
            std::string note = "Group " + std::to_string(i + 1) + " (" + groupLabel(outcome, i) +
                               "): " + noEstimateReason(group) + ", so there is no estimate";
            if (group.bound) {
                note +=
                    ", only a one-sided " + levelText(outcome.level) + " bound of its frequency";
            }
            notes.push_back(note + ". It is left out of the tests.");
        }
        row.push_back(outcome.files[i]);
        rows.push_back(row);
    }
    appendTable(text, rows);
    for (const std::string& note : notes) {
        text += "\n" + wrapped(note);
    }
}

void appendTests(std::string& text, const GroupsOutcome& outcome) {
    const GroupComparison& comparison = outcome.comparison;
    if (!comparison.overall) {
        return;
    }
    const analysis::ChiSquareTest& overall = *comparison.overall;
    text += "\nDo the " + std::to_string(comparison.tested.size()) +
            " groups tested share one frequency?\n  Likelihood-ratio chi-square " +
            vocabulary::formatMask(overall.chiSquare, "##0.000") + " on " +
            std::to_string(overall.df) + (overall.df == 1 ? " degree" : " degrees") +
            " of freedom, p-value " + pText(overall.p.value_or(1.0)) + "\n";

    const std::size_t count = comparison.pairs.size();
    text += "\nPairs, " + std::to_string(count) + " in all: the ratio of proportions first / " +
            "second with its " + levelText(outcome.level) + " Wald interval,\nthe " +
            "likelihood-ratio chi-square on 1 degree of freedom, its p-value, and the p-value\n" +
            (outcome.adjustment == PValueAdjustment::None
                 ? std::string("left unadjusted")
                 : std::string("adjusted by ") + adjustmentTitle(outcome.adjustment)) +
            "\n\n";
    std::vector<std::vector<std::string>> rows{
        {"Pair", "Ratio", "Interval", "Chi-square", "p-value", "Adjusted", ""}};
    bool anyMarked = false;
    for (const analysis::GroupPair& pair : comparison.pairs) {
        const bool marked = pair.pAdjusted < 0.05;
        anyMarked = anyMarked || marked;
        rows.push_back({std::to_string(pair.first + 1) + " / " + std::to_string(pair.second + 1),
                        readable(pair.ratio),
                        readable(pair.wald.lower) + " to " + readable(pair.wald.upper),
                        vocabulary::formatMask(pair.chiSquare, "##0.000"), pText(pair.p),
                        pText(pair.pAdjusted), marked ? "*" : ""});
    }
    appendTable(text, rows);
    const bool adjusted = outcome.adjustment != PValueAdjustment::None;
    if (anyMarked) {
        text += adjusted ? "\n  * below 0.05 after adjustment: these groups differ\n"
                         : "\n  * below 0.05, not adjusted for the number of pairs\n";
    } else {
        text += adjusted ? "\n  No pair is below 0.05 after adjustment.\n"
                         : "\n  No pair is below 0.05.\n";
    }
}

void writeInterval(JsonWriter& json, const analysis::Interval& interval) {
    json.beginArray().number(interval.lower).number(interval.upper).endArray();
}

} // namespace

const char* adjustmentName(PValueAdjustment adjustment) {
    switch (adjustment) {
    case PValueAdjustment::Holm:
        return "holm";
    case PValueAdjustment::BenjaminiHochberg:
        return "bh";
    case PValueAdjustment::None:
        break;
    }
    return "none";
}

const char* noEstimateReason(const analysis::GroupEstimate& group) {
    if (group.responses == 0.0) {
        return "no test responded";
    }
    return group.responses == group.tested ? "every test responded"
                                           : "the single-hit model could not be fitted";
}

std::string groupsText(const GroupsOutcome& outcome) {
    std::string text;
    appendGroups(text, outcome);
    appendTests(text, outcome);
    return text;
}

std::string groupsJson(const GroupsOutcome& outcome) {
    const GroupComparison& comparison = outcome.comparison;
    std::string text;
    JsonWriter json(text);
    json.beginObject().key("level").number(outcome.level);
    json.key("adjust").string(adjustmentName(outcome.adjustment));
    json.key("groups").beginArray();
    for (std::size_t i = 0; i < comparison.groups.size(); ++i) {
        const analysis::GroupEstimate& group = comparison.groups[i];
        json.beginObject().key("file").string(outcome.files[i]);
        json.key("name").string(outcome.names[i]);
        // The "1 in" number, its interval as [1 / lower proportion, 1 / upper proportion].
        json.key("frequency").beginObject().key("estimate");
        if (group.fit) {
            json.number(1.0 / group.fit->proportion).key("wald");
            writeInterval(json, {1.0 / group.wald->lower, 1.0 / group.wald->upper});
        } else {
            json.null().key("wald").null();
        }
        json.endObject().endObject();
    }
    json.endArray().key("overall");
    if (comparison.overall) {
        json.beginObject().key("chi_square").number(comparison.overall->chiSquare);
        json.key("df").integer(comparison.overall->df).key("p").number(comparison.overall->p);
        json.endObject();
    } else {
        json.null();
    }
    json.key("pairs").beginArray();
    for (const analysis::GroupPair& pair : comparison.pairs) {
        json.beginObject().key("first").integer(static_cast<long long>(pair.first + 1));
        json.key("second").integer(static_cast<long long>(pair.second + 1));
        json.key("ratio").beginObject().key("estimate").number(pair.ratio).key("wald");
        writeInterval(json, pair.wald);
        json.endObject().key("chi_square").number(pair.chiSquare).key("p").number(pair.p);
        json.key("p_adjusted").number(pair.pAdjusted).endObject();
    }
    json.endArray().endObject();
    return text + "\n";
}

} // namespace titron::shell
