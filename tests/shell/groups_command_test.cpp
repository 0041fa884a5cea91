#include "shell/groups_command.h"

#include <algorithm>
#include <regex>

#include <gtest/gtest.h>

#include "tests/shell/command_fixture.h"

namespace titron::shell {
namespace {

const std::string kExamples = TITRON_EXAMPLES_DIR;
const std::string kSpleen = kExamples + "/spleen-a.tna";
const std::string kLymph = kExamples + "/lymph-node-d.csv";
const std::string kThymus = kExamples + "/thymus-c.txt";

class GroupsCommandTest : public testing::CommandFixture {
  protected:
    int groups(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "groups");
        return run(arguments);
    }
};

TEST_F(GroupsCommandTest, TextShowsEachGroupTheOverallTestAndThePairsMarkedAfterAdjustment) {
    const std::string none = writeFile("none.txt", "100\t0\t24\n300\t0\t24\n");
    ASSERT_EQ(groups({kSpleen, kLymph, none, kThymus}), kExitReport) << err.str();
    const std::string text = out.str();
    // Spleen A as its report has it; the Wald interval at 0.95 is that of the report's
    // limits to within their 1.96.
    EXPECT_NE(text.find("1  Spleen A  1 in 11,503  1 in 8,201 to 16,135"), std::string::npos)
        << text;
    EXPECT_NE(text.find("  no estimate  at most 1 in 3,205    " + none), std::string::npos);
    std::string flat = text; // the notes are broken into lines
    std::replace(flat.begin(), flat.end(), '\n', ' ');
    EXPECT_NE(flat.find("Group 3 (" + none +
                        "): no test responded, so there is no estimate, "
                        "only a one-sided 95% bound of its frequency. It is left out of the "
                        "tests."),
              std::string::npos);
    EXPECT_NE(text.find("Do the 3 groups tested share one frequency?\n  Likelihood-ratio "
                        "chi-square "),
              std::string::npos);
    EXPECT_NE(text.find("Pairs, 3 in all: "), std::string::npos);
    EXPECT_NE(text.find("adjusted by Holm's step-down\n"), std::string::npos);
    // Three pair lines, 1/2, 1/4, 2/4, and the mark's legend only when a pair is marked.
    const std::regex pairLine("\n  [124] / [24]  [^\n]*");
    EXPECT_EQ(std::distance(std::sregex_iterator(text.begin(), text.end(), pairLine),
                            std::sregex_iterator()),
              3);
    EXPECT_EQ(text.find("*") != std::string::npos,
              text.find("* below 0.05 after adjustment") != std::string::npos);
    EXPECT_EQ(err.str(), "");
}

TEST_F(GroupsCommandTest, JsonIsOneDocumentOfTheGivenShape) {
    const std::string none = writeFile("none.txt", "100\t0\t24\n");
    ASSERT_EQ(groups({"--format", "json", "--level", "0.9", "--adjust", "bh", kSpleen, kLymph, none,
                      kThymus}),
              kExitReport);
    // Numbers become #, files and names F and N; what stays is the document's shape.
    std::string shape =
        std::regex_replace(out.str(), std::regex(R"(-?[0-9][0-9.e+-]*(?=[,\]}]))"), "#");
    shape = std::regex_replace(shape, std::regex(R"("file":"[^"]*","name":"[^"]*")"),
                               R"("file":"F","name":"N")");
    const std::string group = R"({"file":"F","name":"N","frequency":{"estimate":#,"wald":[#,#]}})";
    const std::string noEstimate =
        R"({"file":"F","name":"N","frequency":{"estimate":null,"wald":null}})";
    const std::string pair =
        R"({"first":#,"second":#,"ratio":{"estimate":#,"wald":[#,#]},"chi_square":#,"p":#,"p_adjusted":#})";
    EXPECT_EQ(shape, R"({"level":#,"adjust":"bh","groups":[)" + group + "," + group + "," +
                         noEstimate + "," + group +
                         R"(],"overall":{"chi_square":#,"df":#,"p":#},"pairs":[)" + pair + "," +
                         pair + "," + pair + "]}\n");
    EXPECT_EQ(out.str().rfind(R"({"level":0.9,"adjust":"bh","groups":[{"file":")" + kSpleen +
                                  R"(","name":"Spleen A",)",
                              0),
              0u);
    EXPECT_NE(out.str().find(R"("df":2,)"), std::string::npos);
    EXPECT_NE(out.str().find(R"({"first":2,"second":4,)"), std::string::npos);
}

TEST_F(GroupsCommandTest, FewerThanTwoGroupsWithAnEstimateIsStatusTwo) {
    const std::string none = writeFile("none.txt", "100\t0\t24\n");
    const std::string all = writeFile("all.txt", "100\t24\t24\n");
    EXPECT_EQ(groups({none, kSpleen, all}), kExitBox);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "titron-cli: no comparison: fewer than two groups have an estimate\n  " +
                             none + ": no test responded\n  " + all + ": every test responded\n");
}

TEST_F(GroupsCommandTest, BadInputIsStatus64OrTheFilesOwnAndWritesNothingOnStandardOutput) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{kSpleen},
                                               {"--adjust", "bonferroni", kSpleen, kLymph},
                                               {"--level", "95", kSpleen, kLymph},
                                               {"--level", "x", kSpleen, kLymph},
                                               {"--format", "tsv", kSpleen, kLymph}}) {
        EXPECT_EQ(groups(arguments), kExitUsage) << arguments[0];
        EXPECT_EQ(out.str(), "");
        EXPECT_NE(err.str().find("titron-cli: "), std::string::npos);
    }
    const std::string wrong = writeFile("wrong.txt", "100\t30\t24\n");
    // The worst status of the files, as analyze gives it: the box's 2 over the unread 1.
    EXPECT_EQ(groups({kSpleen, wrong, kExamples + "/missing.tna"}), kExitBox);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str().rfind(wrong + ": INVALID RESPONSES/NUMBER TESTED: ", 0), 0u) << err.str();
    EXPECT_NE(err.str().find(kExamples + "/missing.tna: "), std::string::npos);
}

} // namespace
} // namespace titron::shell
