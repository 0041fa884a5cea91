// titron-cli design: plans an assay for an expected frequency of 1 in X: the precision the
// doses and tests can be expected to give, a proposed dose series, the fewest tests for a
// wanted interval, and a check of the plan by simulation.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace titron::shell {

// Runs "design --frequency X [--doses D1,D2,...] [--tested N | --tested N1,N2,...]
// [--level L] [--target-ratio R] [--format text|json] [--simulate N [--seed S]]"
// (arguments[0] is "design"); returns the exit status.
int runDesignCommand(const std::vector<std::string>& arguments, std::ostream& out,
                     std::ostream& err);

} // namespace titron::shell
