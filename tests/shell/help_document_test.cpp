// Which document Help Contents opens.
#include "shell/help_document.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace titron::shell {
namespace {

TEST(HelpDocumentTest, HelpFileBesideTheProgramFirstThenTheInstalledManualThenTheSourceTrees) {
    std::set<std::string> present;
    const auto exists = [&present](const std::string& path) { return present.count(path) > 0; };
    const std::string installed = "/opt/titron/share/doc/titron/manual/index.html";
    const std::string sourceTree = "/opt/titron/docs/manual/index.html";

    EXPECT_EQ(helpDocument("/opt/titron/bin", "TITRO.HLP", exists), std::nullopt);
    present.insert(sourceTree);
    EXPECT_EQ(helpDocument("/opt/titron/bin", "TITRO.HLP", exists), sourceTree);
    present.insert(installed);
    EXPECT_EQ(helpDocument("/opt/titron/bin", "TITRO.HLP", exists), installed);
    present.insert("/opt/titron/bin/TITRO.HLP");
    EXPECT_EQ(helpDocument("/opt/titron/bin", "TITRO.HLP", exists), "/opt/titron/bin/TITRO.HLP");
}

} // namespace
} // namespace titron::shell
