#include "analysis/p_value_adjustment.h"

#include <algorithm>
#include <numeric>

namespace titron::analysis {

std::vector<double> adjustPValues(const std::vector<double>& p, PValueAdjustment adjustment) {
    if (adjustment == PValueAdjustment::None) {
        return p;
    }
    const std::size_t m = p.size();
    std::vector<std::size_t> order(m);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&p](std::size_t a, std::size_t b) { return p[a] < p[b]; });
    std::vector<double> adjusted(m);
    const auto count = static_cast<double>(m);
    if (adjustment == PValueAdjustment::Holm) {
        // From the smallest p up: each adjusted value at least the one before it.
        double running = 0.0;
        for (std::size_t k = 0; k < m; ++k) {
            const double scaled = (count - static_cast<double>(k)) * p[order[k]];
            running = std::max(running, std::min(1.0, scaled));
            adjusted[order[k]] = running;
        }
    } else {
        // From the largest p down: each adjusted value at most the one after it.
        double running = 1.0;
        for (std::size_t k = m; k-- > 0;) {
            const double scaled = count / static_cast<double>(k + 1) * p[order[k]];
            running = std::min(running, scaled);
            adjusted[order[k]] = running;
        }
    }
    return adjusted;
}

} // namespace titron::analysis
