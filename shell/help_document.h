// Which document Help Contents opens: the help file beside the program while there is one,
// otherwise Titron's own manual in HTML, found relative to the program.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace titron::shell {

// Where the manual's first page may lie, in the order looked at: where an installation puts
// it (the program in bin/, the manual under share/ beside it), then the source tree of a
// program built in a folder of that tree.
std::vector<std::string> manualPlaces(const std::string& programDirectory);

// The help file in the program's directory if it exists, else the first manual place that
// exists; nothing when there is neither.
std::optional<std::string> helpDocument(const std::string& programDirectory,
                                        const std::string& helpFile,
                                        const std::function<bool(const std::string&)>& exists);

} // namespace titron::shell
