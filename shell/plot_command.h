// titron-cli plot: the analyses of the FILEs drawn in one SVG picture, each file opened and
// analysed as "analyze" does, with its fitted single-hit line and interval.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace titron::shell {

// Runs "plot [--level L] [--output OUT] FILE..." (arguments[0] is "plot"); returns the exit
// status.
int runPlotCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

} // namespace titron::shell
