// The outputs of "titron-cli groups": a table a person reads, or one JSON document.
#pragma once

#include <string>
#include <vector>

#include "analysis/group_comparison.h"

namespace titron::shell {

struct GroupsOutcome {
    double level = analysis::kDefaultLevel;
    analysis::PValueAdjustment adjustment = analysis::PValueAdjustment::Holm;
    std::vector<std::string> files; // one per group, as given
    std::vector<std::string> names; // the analysis names, empty where there is none
    analysis::GroupComparison comparison;
};

// The name of the adjustment as --adjust takes it: "holm", "bh", "none".
const char* adjustmentName(analysis::PValueAdjustment adjustment);

// Why a group without a fit has no estimate: "no test responded" or "every test responded".
const char* noEstimateReason(const analysis::GroupEstimate& group);

// The groups with their "1 in" estimates and intervals, the overall test and the pairs,
// those below 0.05 after adjustment marked; lines end in LF.
std::string groupsText(const GroupsOutcome& outcome);

// {"level", "adjust", "groups", "overall", "pairs"} and a line feed.
std::string groupsJson(const GroupsOutcome& outcome);

} // namespace titron::shell
