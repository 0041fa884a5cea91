// The tsv form of "titron-cli analyze": a heading, then one line of figures per file.
#pragma once

#include <string>

#include "shell/file_analysis.h"

namespace titron::shell {

// The heading line, with its line feed.
extern const char* const kTsvHeading;

// Appends the line of one file, with its line feed, to line. Every figure has 17 significant
// digits (printf's %.17g); fields that the outcome doesn't give are empty.
void appendTsvLine(std::string& line, const std::string& file, const FileResult& result);

// Appends value as printf's %.17g writes it.
void appendFullPrecision(std::string& text, double value);

} // namespace titron::shell
