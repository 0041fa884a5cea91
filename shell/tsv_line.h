// The tsv form of "titron-cli analyze": a heading, then one line of figures per file.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "shell/file_analysis.h"

namespace titron::shell {

// The heading line, with its line feed.
extern const char* const kTsvHeading;

// Appends the line of one file, with its line feed, to line. Every figure has 17 significant
// digits (printf's %.17g); fields that the outcome doesn't give are empty.
void appendTsvLine(std::string& line, const std::string& file, const FileResult& result);

// One of the report's figures as the machine-readable outputs give it: the tsv's column
// name, and the value, none where the report has no such figure (df is whole).
struct ReportField {
    const char* name;
    std::optional<double> value;
};
inline constexpr std::size_t kReportFieldCount = 13;

// The report's figures, in the order of the tsv's columns behind passes.
std::array<ReportField, kReportFieldCount> reportFields(const analysis::Figures& figures);

// The passes the outcome tells of: with a report or no convergence, none otherwise.
std::optional<std::int32_t> passesOf(const FileResult& result);

// Appends value as printf's %.17g writes it.
void appendFullPrecision(std::string& text, double value);

} // namespace titron::shell
