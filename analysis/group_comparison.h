// Several assays compared at once, each one group: do their proportions differ at all, and
// which pairs differ, with p-values adjusted for the number of pairs. Every group is fitted
// to full precision; a group without an estimate (no response, or every test responding)
// keeps its one-sided bound and takes no part in the tests.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/assay_table.h"
#include "analysis/p_value_adjustment.h"
#include "analysis/single_hit_model.h"

namespace titron::analysis {

struct GroupEstimate {
    double responses = 0.0; // over all rows
    double tested = 0.0;
    std::optional<SingleHitFit> fit;
    std::optional<Interval> wald;       // of f, with the fit
    std::optional<OneSidedBound> bound; // without a fit
};

struct GroupPair {
    std::size_t first = 0; // positions among the groups, from 0, first < second
    std::size_t second = 0;
    double ratio = 0.0; // f_first / f_second
    Interval wald;      // exp(b_first - b_second -/+ z sqrt(se_first^2 + se_second^2))
    double chiSquare = 0.0;
    double p = 0.0;
    double pAdjusted = 0.0; // over all pairs
};

struct GroupComparison {
    std::vector<GroupEstimate> groups; // in the order given
    std::vector<std::size_t> tested;   // positions of the groups with a fit
    // With two groups tested or more: that all tested groups share one proportion.
    std::optional<ChiSquareTest> overall;
    std::vector<GroupPair> pairs; // every two tested groups, in the order given
};

// The likelihood-ratio test that the tables share one proportion: the deviance of one fit
// to all their rows together minus the sum of each table's own deviance, on (tables - 1)
// degrees of freedom. Every table must have a fit (some responses, not all).
ChiSquareTest commonProportionTest(const std::vector<const AssayTable*>& tables);

// Each table (passed the row checks) one group; intervals at 0 < level < 1.
GroupComparison compareGroups(const std::vector<AssayTable>& tables, double level,
                              PValueAdjustment adjustment);

} // namespace titron::analysis
