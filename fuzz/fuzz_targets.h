// The fuzz targets: each takes any bytes and returns normally, or throws when it finds a
// defect (a FuzzFinding from its own checks, or a failure that should never have left the
// program's own failure paths). libFuzzer and the corpus replay test call the same
// functions, so every input the fuzzers found stays checked in every test run.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace titron::fuzz {

// A file opened into a document: empty grid, append (Yes), replace (No) or Cancel at the
// append question, then saved and opened again.
void loadDocument(std::string_view bytes);
// The comparison's reader of a saved analysis, and the comparison made from what it read.
void savedAnalysis(std::string_view bytes);
// The settings file read at start-up.
void settingsText(std::string_view bytes);
// The strict and lenient number conversions, the general form and every number mask.
void numberTexts(std::string_view bytes);
// replaceText and closeTabs against a step-by-step model of the same routines.
void textRoutines(std::string_view bytes);
// A whole analysis on cell texts that are set, typed through the key filter or pasted.
void analysisOfCells(std::string_view bytes);

// Thrown when a target's own check fails: two routines disagree or a promise is broken.
class FuzzFinding : public std::logic_error {
  public:
    explicit FuzzFinding(const std::string& what) : std::logic_error(what) {}
};

inline void check(bool condition, const std::string& what) {
    if (!condition) {
        throw FuzzFinding(what);
    }
}

} // namespace titron::fuzz
