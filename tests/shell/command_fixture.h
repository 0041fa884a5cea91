// A run of titron-cli's commands in the process, its two streams kept for the test; the
// scratch directory and its files are the document tests' fixture.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "shell/command_line.h"
#include "tests/documents/analyze_fixture.h"

namespace titron::shell::testing {

class CommandFixture : public documents::testing::AnalyzeFixture {
  protected:
    int run(const std::vector<std::string>& arguments) {
        out.str("");
        err.str("");
        return runCommandLine(arguments, out, err);
    }

    std::ostringstream out;
    std::ostringstream err;
};

} // namespace titron::shell::testing
