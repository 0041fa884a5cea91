#include "shell/design_command.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/shell/command_fixture.h"

namespace titron::shell {
namespace {

class DesignCommandTest : public testing::CommandFixture {
  protected:
    // The plan's output, or its status and message when it has none.
    std::string design(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "design");
        status = run(arguments);
        return out.str();
    }

    int status = -1;
};

TEST_F(DesignCommandTest, JsonHoldsThePlanInItsFixedShape) {
    // The figures are those of the one-dose plan of the design tests.
    const std::string json =
        design({"--frequency", "1000", "--doses", "1000", "--tested", "50", "--format", "json"});
    EXPECT_EQ(status, kExitReport);
    EXPECT_EQ(err.str(), "");
    EXPECT_TRUE(json.starts_with(
        R"({"frequency":1000,"level":0.95,"doses":[{"dose":1000,"tested":50,"expected_responses":31.60602794142788)"))
        << json;
    std::size_t at = 0;
    for (const char* key :
         {"\"se_log\":0.185379709162521", "\"interval_ratio\":2.06819264358568",
          "\"probability_none\":1.928749847963917", "\"probability_all\":1.096467513061891"}) {
        at = json.find(key, at);
        EXPECT_NE(at, std::string::npos) << key << " in order in " << json;
    }
    EXPECT_TRUE(json.ends_with("}\n"));
    EXPECT_EQ(json.find("simulation"), std::string::npos);

    // Counts per dose, and the tests a target ratio asks for, at each dose.
    const std::string perDose =
        design({"--frequency", "1e4", "--doses", "5000, 10000,20000", "--tested", "10,20,30",
                "--format", "json", "--level", "0.9"});
    EXPECT_NE(perDose.find(R"("level":0.9,)"), std::string::npos);
    EXPECT_NE(perDose.find(R"({"dose":20000,"tested":30,)"), std::string::npos);
    const std::string target =
        design({"--frequency", "10000", "--target-ratio", "2", "--format", "json"});
    EXPECT_NE(target.find(R"({"dose":4000,"tested":17,)"), std::string::npos);
    EXPECT_NE(target.find(R"({"dose":32000,"tested":17,)"), std::string::npos);
}

TEST_F(DesignCommandTest, TextExplainsTheDosesAndTheGuessOutByThree) {
    const std::string text = design({"--frequency", "10000"});
    EXPECT_EQ(status, kExitReport);
    for (const char* part :
         {"1 in 10,000", "f d = 1.594", "rounded to 16,000", "         4,000       24",
          "        32,000       24", "1 in 3,333", "1 in 30,000", "upper / lower 1.78"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
    }
    // Given doses are not explained as proposed ones.
    EXPECT_EQ(design({"--frequency", "10000", "--doses", "1000,3000"}).find("Proposed"),
              std::string::npos);
}

TEST_F(DesignCommandTest, SimulationRepeatsWithItsSeed) {
    std::vector<std::string> arguments = {"--frequency", "100", "--simulate", "300"};
    const std::string first = design(arguments);
    EXPECT_EQ(status, kExitReport);
    EXPECT_NE(first.find("300 assays drawn from the model at 1 in 100 (seed 1)"),
              std::string::npos);
    EXPECT_EQ(design(arguments), first);
    arguments.insert(arguments.end(), {"--seed", "1"});
    EXPECT_EQ(design(arguments), first);
    arguments.back() = "99";
    EXPECT_NE(design(arguments), first);
}

// The cases part at ';', their arguments at spaces ('|' a space within one); those that
// don't begin with --frequency get --frequency 1000 first.
TEST_F(DesignCommandTest, BadInputIsWrongUsageWithNothingOnStandardOutput) {
    std::istringstream cases(
        "--frequency;--frequency 0;--frequency -5;--frequency many;--frequency 1e13;"
        "--doses 10,x,30;--doses 10,,30;--doses 10,|2|0;--doses 10,-3;--tested 0;--tested 2.5;"
        "--doses 10,20 --tested 5,6,7;--tested 5,6;--level 1;--target-ratio 1;--format tsv;"
        "--target-ratio wide;--target-ratio 2 --tested 10;--simulate 0;--seed 3;plan.txt;"
        "--simulate 10 --seed -3;--simulate 1000000 --tested 1000;--frequency inf;");
    EXPECT_EQ(design({}), "");
    EXPECT_EQ(status, kExitUsage);
    for (std::string bad; std::getline(cases, bad, ';');) {
        std::vector<std::string> arguments;
        if (!bad.starts_with("--frequency")) {
            arguments = {"--frequency", "1000"};
        }
        std::istringstream words(bad);
        for (std::string word; words >> word;) {
            std::replace(word.begin(), word.end(), '|', ' ');
            arguments.push_back(word);
        }
        EXPECT_EQ(design(arguments), "") << bad;
        EXPECT_EQ(status, kExitUsage) << bad;
        EXPECT_TRUE(err.str().starts_with("titron-cli: ")) << bad << err.str();
    }
    EXPECT_EQ(design({"--frequency", "1", "--doses", "1e6", "--target-ratio", "2"}), "");
    EXPECT_EQ(status, kExitBox);
    EXPECT_NE(err.str().find("no number of tests per dose"), std::string::npos);
}

} // namespace
} // namespace titron::shell
