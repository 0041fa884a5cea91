// titron-cli groups: two or more assays, each FILE one group, compared at once: one test
// that all share a frequency, and every pair with p-values adjusted over the pairs.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace titron::shell {

// Runs "groups [--level L] [--adjust holm|bh|none] [--format text|json] FILE..."
// (arguments[0] is "groups"); returns the exit status.
int runGroupsCommand(const std::vector<std::string>& arguments, std::ostream& out,
                     std::ostream& err);

} // namespace titron::shell
