// p-values adjusted for making several tests at once, so that a family of comparisons can
// be read at the level of a single one.
#pragma once

#include <vector>

namespace titron::analysis {

enum class PValueAdjustment {
    Holm,              // step-down; holds the chance of any false finding at the level
    BenjaminiHochberg, // step-up; holds the expected share of false findings at the level
    None,
};

// The adjusted p-values, in the order of p. Holm: the k-th smallest p times (m - k + 1),
// never below the adjusted value before it. Benjamini-Hochberg: the k-th smallest p times
// m / k, never above the adjusted value after it. Both at most 1; equal p-values get equal
// adjusted values.
std::vector<double> adjustPValues(const std::vector<double>& p, PValueAdjustment adjustment);

} // namespace titron::analysis
