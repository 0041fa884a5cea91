// What the comparison takes out of a saved analysis: the name, the log proportion and its
// standard error, read by fixed columns from the report's results line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace titron::comparison {

struct SavedAnalysis {
    std::string name; // after "Analysis Name: " up to the line end, blanks kept; may be empty
    double logProportion = 0;
    double standardError = 0;
};

// The figures of an analysis file's text, or nothing for a file without results: no
// "    Log Proportion:  " line, or one whose columns hold no numbers or no line end.
std::optional<SavedAnalysis> readSavedAnalysis(std::string_view text);

} // namespace titron::comparison
