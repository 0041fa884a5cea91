#include "analysis/model_adequacy.h"

#include <cmath>
#include <limits>

#include "analysis/distributions.h"
#include "analysis/single_hit_terms.h"
#include "analysis/slope_fit.h"

namespace titron::analysis {

using single_hit::RowTerms;
using single_hit::rowTerms;

std::vector<DoseResidual> doseResiduals(const AssayTable& table,
                                        const std::optional<SingleHitFit>& fit) {
    std::vector<DoseResidual> doses;
    for (const AssayRow& row : table) {
        DoseResidual dose{row.dose, row.responses, row.tested, {}, {}, {}};
        if (fit) {
            const double x = fit->proportion * row.dose;
            const RowTerms t = rowTerms(x, row.responses, row.tested);
            dose.expected = row.tested * t.p;
            const double variance = row.tested * t.p * t.q;
            if (variance > 0.0) {
                dose.pearsonResidual = t.residual / std::sqrt(variance);
            }
            const double size = std::sqrt(single_hit::rowDeviance(x, row.responses, row.tested));
            dose.devianceResidual = t.residual < 0.0 ? -size : size;
        }
        doses.push_back(dose);
    }
    return doses;
}

namespace {

ChiSquareTest chiSquareTest(double statistic, int df) {
    ChiSquareTest test{statistic, df, {}};
    if (df > 0) {
        test.p = chiSquareUpperTail(statistic, df);
    }
    return test;
}

// Pearson's chi-square at the fit, from the residuals of the rows.
double pearsonChiSquare(const std::vector<DoseResidual>& doses) {
    double sum = 0.0;
    for (const DoseResidual& dose : doses) {
        if (dose.pearsonResidual) {
            sum += *dose.pearsonResidual * *dose.pearsonResidual;
        } else if (dose.devianceResidual && *dose.devianceResidual != 0.0) {
            return std::numeric_limits<double>::infinity(); // a miss where p is 0 or 1
        }
    }
    return sum;
}

ZTest zTest(double z) {
    return ZTest{z, normalTwoSidedP(z)};
}

// The score test, at the single-hit fit, for adding the covariate c(d) to the model:
// U / sqrt(I_cc - I_ca^2 / I_aa). Both are worked out with c centred at its weighted mean
// I_ca / I_aa, which leaves them unchanged at the fit (where sum (r - n p) h = 0) and
// spares the cancellation of large doses. None when c does not vary.
template <class Covariate>
std::optional<ZTest> scoreTest(const AssayTable& table, const SingleHitFit& fit,
                               const Covariate& covariate) {
    std::vector<RowTerms> terms;
    double sumWeight = 0.0;
    double sumWeighted = 0.0;
    for (const AssayRow& row : table) {
        terms.push_back(rowTerms(fit.proportion * row.dose, row.responses, row.tested));
        sumWeight += terms.back().fisherWeight;
        sumWeighted += terms.back().fisherWeight * covariate(row.dose);
    }
    const double mean = sumWeighted / sumWeight;
    double score = 0.0;
    double information = 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double centred = covariate(table[i].dose) - mean;
        score += terms[i].score * centred;
        information += terms[i].fisherWeight * centred * centred;
    }
    if (!(information > 0.0)) {
        return std::nullopt;
    }
    return zTest(score / std::sqrt(information));
}

} // namespace

void addSingleHitTests(const AssayTable& table, SingleHitStatistics& stats) {
    const SingleHitFit& fit = *stats.fit;
    const SlopeOutcome slope = fitFreeSlope(table, fit);
    stats.noSlopeReason = slope.noSlopeReason;
    if (slope.noSlopeReason == kNoSlopeOneDose) {
        return;
    }
    stats.scoreLogDose = scoreTest(table, fit, [](double d) { return std::log(d); });
    stats.scoreDose = scoreTest(table, fit, [](double d) { return d; });
    if (!slope.fit) {
        return;
    }
    stats.slope = slope.fit;
    stats.slopeWald = zTest((slope.fit->slope - 1.0) / slope.fit->seSlope);
    const double drop = std::sqrt(std::fmax(0.0, fit.deviance - slope.fit->deviance));
    stats.slopeLikelihoodRatio = zTest(slope.fit->slope < 1.0 ? -drop : drop);
}

void addGoodnessOfFit(SingleHitStatistics& stats) {
    if (!stats.fit) {
        return;
    }
    const int df = static_cast<int>(stats.doses.size()) - 1;
    stats.pearson = chiSquareTest(pearsonChiSquare(stats.doses), df);
    stats.deviance = chiSquareTest(stats.fit->deviance, df);
}

} // namespace titron::analysis
