// The analysis report: one fixed-pitch text with CR LF line ends. Other parts of the
// program find values in it by column (the comparison reads the log proportion and its
// standard error from it), so every blank of the layout is part of the format.
#pragma once

#include <string>
#include <string_view>

#include "analysis/figures.h"

namespace titron::analysis {

inline constexpr std::string_view kLineEnd = "\r\n";

// The report of an analysis. name is the analysis name as typed; analysisFile the
// document's file path ("" for none), shown as given; table the assay table already
// laid out on tab stops (it ends in CR LF); it comes last, so a long table may as well be
// appended to a report made without it. Frequencies (1 / proportion) are worked out
// here, line by line; a lower limit of 0 throws Failure 11.
std::string reportText(const Figures& figures, std::string_view name, std::string_view analysisFile,
                       std::string_view table);

// The line that names an analysis's file: "Titron Analysis File: [path]", the path as given,
// followed by an empty line.
std::string fileLine(std::string_view analysisFile);

} // namespace titron::analysis
