// Pieces the benchmark programs share: a scratch directory and a realistic assay.
#pragma once

#include <filesystem>
#include <vector>

namespace titron::bench {

// A directory made for this run under the system's temporary directory, removed with
// everything in it when the object goes.
class ScratchDirectory {
  public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    const std::filesystem::path& path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

struct AssayRowData {
    long dose = 0;
    int responses = 0;
    int tested = 0;
};

// An assay of the given number of rows: doses spaced geometrically from 10 to 1,000,000,
// 24 tests a row, responses drawn from the single-hit model with a frequency of 1e-4 and a
// fixed seed, so that every run measures the same table.
std::vector<AssayRowData> geometricAssay(int rows, unsigned seed);

} // namespace titron::bench
