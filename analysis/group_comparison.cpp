#include "analysis/group_comparison.h"

#include <algorithm>
#include <cmath>

#include "analysis/distributions.h"

namespace titron::analysis {

ChiSquareTest commonProportionTest(const std::vector<const AssayTable*>& tables) {
    AssayTable pooled;
    double separateDeviance = 0.0;
    for (const AssayTable* table : tables) {
        pooled.insert(pooled.end(), table->begin(), table->end());
        separateDeviance += fitSingleHit(*table).value().deviance;
    }
    ChiSquareTest test;
    test.df = static_cast<int>(tables.size()) - 1;
    // The pooled fit can never fit better than the separate ones; a difference rounding
    // leaves a little below 0 is 0.
    test.chiSquare = std::max(0.0, fitSingleHit(pooled).value().deviance - separateDeviance);
    if (test.df > 0) {
        test.p = chiSquareUpperTail(test.chiSquare, test.df);
    }
    return test;
}

GroupComparison compareGroups(const std::vector<AssayTable>& tables, double level,
                              PValueAdjustment adjustment) {
    const double z = normalUpperQuantile((1.0 - level) / 2.0);
    GroupComparison comparison;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        GroupEstimate group;
        for (const AssayRow& row : tables[i]) {
            group.responses += row.responses;
            group.tested += row.tested;
        }
        group.fit = fitSingleHit(tables[i]);
        if (group.fit) {
            const double b = group.fit->logProportion;
            const double margin = z * group.fit->seLog;
            group.wald = Interval{std::exp(b - margin), std::exp(b + margin)};
            comparison.tested.push_back(i);
        } else {
            group.bound = examineSingleHit(tables[i], level).bound;
        }
        comparison.groups.push_back(group);
    }
    if (comparison.tested.size() < 2) {
        return comparison;
    }

    std::vector<const AssayTable*> testedTables;
    for (std::size_t i : comparison.tested) {
        testedTables.push_back(&tables[i]);
    }
    comparison.overall = commonProportionTest(testedTables);

    std::vector<double> p;
    for (std::size_t a = 0; a < comparison.tested.size(); ++a) {
        for (std::size_t c = a + 1; c < comparison.tested.size(); ++c) {
            GroupPair pair;
            pair.first = comparison.tested[a];
            pair.second = comparison.tested[c];
            const SingleHitFit& first = *comparison.groups[pair.first].fit;
            const SingleHitFit& second = *comparison.groups[pair.second].fit;
            const double difference = first.logProportion - second.logProportion;
            const double margin =
                z * std::sqrt(first.seLog * first.seLog + second.seLog * second.seLog);
            pair.ratio = std::exp(difference);
            pair.wald = Interval{std::exp(difference - margin), std::exp(difference + margin)};
            const ChiSquareTest test =
                commonProportionTest({&tables[pair.first], &tables[pair.second]});
            pair.chiSquare = test.chiSquare;
            pair.p = test.p.value();
            p.push_back(pair.p);
            comparison.pairs.push_back(pair);
        }
    }
    const std::vector<double> adjusted = adjustPValues(p, adjustment);
    for (std::size_t k = 0; k < adjusted.size(); ++k) {
        comparison.pairs[k].pAdjusted = adjusted[k];
    }
    return comparison;
}

} // namespace titron::analysis
