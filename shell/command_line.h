// titron-cli: the analysis without the window, for scripts and pipelines. It drives the
// same Analyze window logic on the scripted platform, so its reports are byte for byte
// those of the desktop program.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace titron::shell {

// Exit statuses, worst last; several files give the worst of theirs.
inline constexpr int kExitReport = 0;
inline constexpr int kExitUnreadable = 1;
inline constexpr int kExitBox = 2;
inline constexpr int kExitNoConvergence = 3;
inline constexpr int kExitUsage = 64;

// An argument that is no option of the command: a FILE, or "--" with every FILE behind it
// (i then moves past the end). False, told on err, for an unknown option.
bool takeFileArgument(const std::vector<std::string>& arguments, std::size_t& i,
                      std::vector<std::string>& files, std::ostream& err);

// The value of a whole-number option, or nothing when it isn't one or is below least.
std::optional<int> wholeNumberOption(const std::string& value, int least);

// The value of --level: a number strictly between 0 and 1, written in full ("0.95"); or
// nothing, with the message on err.
std::optional<double> levelOption(const std::string& value, std::ostream& err);

// Ends a command that was called wrongly: points to the help on err; returns kExitUsage.
int usageError(std::ostream& err);

// Runs the command line (arguments without the program name); returns the exit status.
int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

} // namespace titron::shell
