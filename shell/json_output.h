// The JSON Lines form of "titron-cli analyze": one object per file, with the outcome, the
// report's own figures and the single-hit model examined in full.
#pragma once

#include <string>

#include "analysis/single_hit_model.h"
#include "shell/file_analysis.h"

namespace titron::shell {

// Appends the line of one file, with its line feed. model is the single-hit model of the
// rows the analysis read; none when they failed a check other than those of the totals.
void appendJsonLine(std::string& line, const std::string& file, const FileResult& result,
                    const analysis::SingleHitStatistics* model);

} // namespace titron::shell
