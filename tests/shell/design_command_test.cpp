#include "shell/design_command.h"

#include <sstream>

#include <gtest/gtest.h>

#include "shell/command_line.h"

namespace titron::shell {
namespace {

struct DesignRun {
    int status = -1;
    std::string out;
    std::string err;
};

DesignRun design(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "design");
    std::ostringstream out;
    std::ostringstream err;
    DesignRun run;
    run.status = runCommandLine(arguments, out, err);
    run.out = out.str();
    run.err = err.str();
    return run;
}

TEST(DesignCommandTest, JsonHoldsThePlanInItsFixedShape) {
    // The figures are those of the one-dose plan of the design tests.
    const DesignRun run =
        design({"--frequency", "1000", "--doses", "1000", "--tested", "50", "--format", "json"});
    EXPECT_EQ(run.status, kExitReport);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(run.out.starts_with(
        R"({"frequency":1000,"level":0.95,"doses":[{"dose":1000,"tested":50,"expected_responses":31.60602794142788)"))
        << run.out;
    std::size_t at = 0;
    for (const char* key :
         {"\"se_log\":0.185379709162521", "\"interval_ratio\":2.06819264358568",
          "\"probability_none\":1.928749847963917", "\"probability_all\":1.096467513061891"}) {
        at = run.out.find(key, at);
        EXPECT_NE(at, std::string::npos) << key << " in order in " << run.out;
    }
    EXPECT_TRUE(run.out.ends_with("}\n"));
    EXPECT_EQ(run.out.find("simulation"), std::string::npos);

    // Counts per dose, and the tests a target ratio asks for, at each dose.
    const DesignRun perDose =
        design({"--frequency", "1e4", "--doses", "5000, 10000,20000", "--tested", "10,20,30",
                "--format", "json", "--level", "0.9"});
    EXPECT_NE(perDose.out.find(R"("level":0.9,)"), std::string::npos);
    EXPECT_NE(perDose.out.find(R"({"dose":20000,"tested":30,)"), std::string::npos);
    const DesignRun target =
        design({"--frequency", "10000", "--target-ratio", "2", "--format", "json"});
    EXPECT_NE(target.out.find(R"({"dose":4000,"tested":17,)"), std::string::npos);
    EXPECT_NE(target.out.find(R"({"dose":32000,"tested":17,)"), std::string::npos);
}

TEST(DesignCommandTest, TextExplainsTheDosesAndTheGuessOutByThree) {
    const DesignRun run = design({"--frequency", "10000"});
    EXPECT_EQ(run.status, kExitReport);
    for (const char* part :
         {"1 in 10,000", "f d = 1.594", "rounded to 16,000", "         4,000       24",
          "        32,000       24", "1 in 3,333", "1 in 30,000", "upper / lower 1.78"}) {
        EXPECT_NE(run.out.find(part), std::string::npos) << part << " in\n" << run.out;
    }
    // Given doses are not explained as proposed ones.
    const DesignRun given = design({"--frequency", "10000", "--doses", "1000,3000"});
    EXPECT_EQ(given.out.find("Proposed"), std::string::npos);
}

TEST(DesignCommandTest, SimulationRepeatsWithItsSeed) {
    const std::vector<std::string> arguments = {"--frequency", "100", "--simulate", "300"};
    const DesignRun first = design(arguments);
    EXPECT_EQ(first.status, kExitReport);
    EXPECT_NE(first.out.find("300 assays drawn from the model at 1 in 100 (seed 1)"),
              std::string::npos);
    EXPECT_EQ(design(arguments).out, first.out);
    std::vector<std::string> seeded = arguments;
    seeded.insert(seeded.end(), {"--seed", "1"});
    EXPECT_EQ(design(seeded).out, first.out);
    seeded.back() = "99";
    EXPECT_NE(design(seeded).out, first.out);
}

TEST(DesignCommandTest, BadInputIsWrongUsageWithNothingOnStandardOutput) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"--frequency", "0"},
        {"--frequency", "-5"},
        {"--frequency", "many"},
        {"--frequency", "inf"},
        {"--frequency", "1e13"},
        {"--frequency", "1000", "--doses", "10,x,30"},
        {"--frequency", "1000", "--doses", "10,,30"},
        {"--frequency", "1000", "--doses", "10, 2 0"},
        {"--frequency", "1000", "--doses", "10,-3"},
        {"--frequency", "1000", "--doses", "10,20", "--tested", "5,6,7"},
        {"--frequency", "1000", "--tested", "5,6"},
        {"--frequency", "1000", "--tested", "0"},
        {"--frequency", "1000", "--tested", "2.5"},
        {"--frequency", "1000", "--level", "1"},
        {"--frequency", "1000", "--target-ratio", "1"},
        {"--frequency", "1000", "--target-ratio", "wide"},
        {"--frequency", "1000", "--target-ratio", "2", "--tested", "10"},
        {"--frequency", "1000", "--format", "tsv"},
        {"--frequency", "1000", "--simulate", "0"},
        {"--frequency", "1000", "--seed", "3"},
        {"--frequency", "1000", "--simulate", "10", "--seed", "-3"},
        {"--frequency", "1000", "--simulate", "1000000", "--tested", "1000"},
        {"--frequency", "1000", "plan.txt"},
        {"--frequency"},
    };
    for (const std::vector<std::string>& arguments : cases) {
        const DesignRun run = design(arguments);
        std::string shown;
        for (const std::string& argument : arguments) {
            shown += argument + " ";
        }
        EXPECT_EQ(run.status, kExitUsage) << shown;
        EXPECT_EQ(run.out, "") << shown;
        EXPECT_TRUE(run.err.starts_with("titron-cli: ")) << shown << run.err;
    }
    const DesignRun unreachable =
        design({"--frequency", "1", "--doses", "1e6", "--target-ratio", "2"});
    EXPECT_EQ(unreachable.status, kExitBox);
    EXPECT_EQ(unreachable.out, "");
    EXPECT_NE(unreachable.err.find("no number of tests per dose"), std::string::npos);
}

} // namespace
} // namespace titron::shell
