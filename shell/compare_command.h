// titron-cli compare: the comparison of saved analyses without the window, for scripts. It
// drives the same Compare window logic, so its report is byte for byte the window's.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace titron::shell {

// Runs "compare [--row N] [--save OUT] FILE..." (arguments[0] is "compare"); returns the
// exit status.
int runCompareCommand(const std::vector<std::string>& arguments, std::ostream& out,
                      std::ostream& err);

} // namespace titron::shell
