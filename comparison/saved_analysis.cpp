#include "comparison/saved_analysis.h"

#include "vocabulary/failure.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::comparison {

namespace {

constexpr std::string_view kMarker = "    Log Proportion:  ";
constexpr std::string_view kNameLabel = "Analysis Name: ";
constexpr std::string_view kLineEnd = "\r\n";
// From the first blank after the marker's colon: the log proportion fills 23 characters,
// the standard error starts 44 characters on and runs to the line end.
constexpr std::size_t kColonOffset = 19;
constexpr std::size_t kLogWidth = 23;
constexpr std::size_t kErrorOffset = 44;

} // namespace

std::optional<SavedAnalysis> readSavedAnalysis(std::string_view text) {
    const std::size_t marker = text.find(kMarker);
    if (marker == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t q = marker + kColonOffset;
    const std::size_t lineEnd = text.find(kLineEnd, q);
    if (lineEnd == std::string_view::npos || lineEnd < q + kErrorOffset) {
        return std::nullopt;
    }
    SavedAnalysis saved;
    try {
        saved.logProportion =
            vocabulary::strictNumber(vocabulary::trimSpaces(text.substr(q, kLogWidth)));
        saved.standardError = vocabulary::strictNumber(
            vocabulary::trimSpaces(text.substr(q + kErrorOffset, lineEnd - q - kErrorOffset)));
    } catch (const vocabulary::Failure&) {
        return std::nullopt; // the marker without figures: no row rather than a wrong one
    }
    const std::size_t name = text.find(kNameLabel);
    if (name != std::string_view::npos) {
        const std::size_t start = name + kNameLabel.size();
        const std::size_t end = text.find(kLineEnd, start);
        saved.name = std::string(
            text.substr(start, end == std::string_view::npos ? text.npos : end - start));
    }
    return saved;
}

} // namespace titron::comparison
