// replaceText and closeTabs against a plain model that does each step of the routine
// as it is described, with positions from 1 and a fresh search each time. The routines
// themselves work in one pass; on every input both must leave the same text, and fail
// alike where the model fails.
#include <optional>
#include <string>

#include "fuzz/fuzz_bytes.h"
#include "fuzz/fuzz_targets.h"
#include "fuzz/text_routines_model.h"
#include "vocabulary/failure.h"
#include "vocabulary/text_routines.h"

namespace titron::fuzz {

namespace {

using vocabulary::Failure;

// Runs a routine on a copy of text; the failure number if it failed. The text is what it
// was left as either way.
template <typename Routine> std::optional<int> run(std::string& text, Routine routine) {
    try {
        routine(text);
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure.number();
    }
}

std::string shown(const std::string& text) {
    std::string out;
    for (const char c : text) {
        out += c == '\t'   ? std::string("[T]")
               : c == '\r' ? "[CR]"
               : c == '\n' ? "[LF]"
                           : std::string(1, c);
    }
    return out;
}

void compare(const std::string& what, const std::string& input, std::string& ours,
             std::optional<int> ourFailure, std::string& model, std::optional<int> modelFailure) {
    check(ourFailure == modelFailure,
          what + " fails differently from its model on " + shown(input));
    check(ours == model,
          what + " on " + shown(input) + " gives " + shown(ours) + ", its model " + shown(model));
}

} // namespace

void textRoutines(std::string_view bytes) {
    FuzzBytes in(bytes);
    const std::uint8_t mode = in.byte();
    if ((mode & 1) == 0) {
        // replaceText with a find of 1 to 3 characters and a replacement of 0 to 3.
        std::string find;
        std::string replace;
        for (int i = 0, n = 1 + (mode >> 1) % 3; i < n; ++i) {
            find += static_cast<char>(in.byte());
        }
        for (int i = 0, n = (mode >> 3) % 4; i < n; ++i) {
            replace += static_cast<char>(in.byte());
        }
        const std::string input(in.rest());
        std::string ours = input;
        std::string model = input;
        const auto ourFailure =
            run(ours, [&](std::string& t) { vocabulary::replaceText(t, find, replace); });
        const auto modelFailure =
            run(model, [&](std::string& t) { modelReplaceText(t, find, replace); });
        compare("replaceText(" + shown(find) + ", " + shown(replace) + ")", input, ours, ourFailure,
                model, modelFailure);
        return;
    }
    // closeTabs as the table layout calls it: on a text whose Tabs were doubled, and on
    // the raw text.
    const std::string input(in.rest());
    std::string ours = input;
    std::string model = input;
    if (mode & 2) {
        vocabulary::replaceText(ours, "\t", "\t\t");
        modelReplaceText(model, "\t", "\t\t");
        check(ours == model, "doubling the Tabs of " + shown(input) + " differs from its model");
    }
    const auto ourFailure = run(ours, [](std::string& t) { vocabulary::closeTabs(t); });
    const auto modelFailure = run(model, [](std::string& t) { modelCloseTabs(t); });
    compare("closeTabs", input, ours, ourFailure, model, modelFailure);
}

} // namespace titron::fuzz
