#include "bench/bench_support.h"

#include <cmath>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace titron::bench {

ScratchDirectory::ScratchDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "titron-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make a scratch directory under " + pattern);
    }
    m_path = pattern;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::vector<AssayRowData> geometricAssay(int rows, unsigned seed) {
    constexpr int kTested = 24;
    constexpr double kFrequency = 1e-4;
    constexpr double kLowestDose = 10.0;
    constexpr double kHighestDose = 1e6;
    std::mt19937 random(seed);
    std::vector<AssayRowData> assay;
    assay.reserve(static_cast<std::size_t>(rows));
    for (int row = 1; row <= rows; ++row) {
        const double step = rows == 1 ? 0.0 : double(row - 1) / double(rows - 1);
        const double dose = std::round(kLowestDose * std::pow(kHighestDose / kLowestDose, step));
        std::binomial_distribution<int> responses(kTested, 1.0 - std::exp(-kFrequency * dose));
        assay.push_back({static_cast<long>(dose), responses(random), kTested});
    }
    return assay;
}

} // namespace titron::bench
