// "titron-cli analyze --format json" and "--extended" end to end, on the sample assays and
// on tables the report refuses.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/shell/command_fixture.h"
#include "tests/shell/json_reader.h"

namespace titron::shell {
namespace {

using testing::JsonPaths;

class ModelOutputsTest : public testing::CommandFixture {
  protected:
    // Each line of the output, split at Tabs (the tsv) or read as JSON.
    std::vector<std::vector<std::string>> tsvLines() const {
        std::vector<std::vector<std::string>> lines;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            std::istringstream fields(line + '\t'); // the last field, empty too, ends in a Tab
            lines.emplace_back();
            for (std::string field; std::getline(fields, field, '\t');) {
                lines.back().push_back(field);
            }
        }
        return lines;
    }
    std::vector<JsonPaths> jsonLines() const {
        std::vector<JsonPaths> lines;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            std::optional<JsonPaths> json = testing::JsonReader::read(line);
            EXPECT_TRUE(json) << line;
            lines.push_back(json.value_or(JsonPaths{}));
        }
        return lines;
    }
};

double number(const JsonPaths& json, const std::string& path) {
    return std::stod(json.at(path));
}

// Every line is JSON; outcome, passes and report are the tsv's, figure for figure; the
// model's Wald interval at 0.95 and its estimate agree with the report's within the
// digits it prints (three or four significant ones).
TEST_F(ModelOutputsTest, JsonOfTheSamplesIsTheTsvsFiguresAndTheModelAgreesWithTheReport) {
    std::vector<std::string> arguments = {"analyze", "--format", "tsv"};
    for (const auto& entry : std::filesystem::directory_iterator(TITRON_EXAMPLES_DIR)) {
        arguments.push_back(entry.path().string());
    }
    const int tsvStatus = run(arguments);
    const auto tsv = tsvLines();
    const std::string tsvErr = err.str();
    arguments[2] = "json";
    EXPECT_EQ(run(arguments), tsvStatus);
    EXPECT_EQ(err.str(), tsvErr);
    const std::vector<JsonPaths> json = jsonLines();
    ASSERT_EQ(json.size() + 1, tsv.size());

    for (std::size_t i = 0; i < json.size(); ++i) {
        const JsonPaths& line = json[i];
        const std::vector<std::string>& fields = tsv[i + 1];
        EXPECT_EQ(line.at("file"), fields[0]);
        EXPECT_EQ(line.at("outcome"), fields[2]);
        EXPECT_EQ(line.at("passes"), fields[3].empty() ? "null" : fields[3]);
        ASSERT_EQ(line.at("outcome"), "report") << fields[0];
        for (std::size_t f = 4; f < fields.size(); ++f) {
            const std::string& figure = line.at("report." + tsv[0][f]);
            EXPECT_EQ(figure == "null", fields[f].empty()) << tsv[0][f];
            EXPECT_TRUE(figure == "null" || std::stod(figure) == std::stod(fields[f]));
        }
        EXPECT_EQ(line.at("model.level"), "0.95");
        if (fields[0].ends_with("culture-e.txt")) {
            // The report's stopping rule ends this assay on a proportion of 1 (Pearson 0),
            // far from the maximum; the model's fit goes on to it.
            EXPECT_LT(number(line, "model.proportion.estimate"), 1e-5);
            continue;
        }
        // The report's z is 1.96 and its estimate stops when the deviance settles: the
        // model's figures differ from its in the fifth significant digit at most.
        for (const auto& [model, report] :
             {std::pair("wald.0", "lower_proportion_95"),
              std::pair("wald.1", "upper_proportion_95"), std::pair("estimate", "proportion"),
              std::pair("se_log", "se_log_proportion")}) {
            EXPECT_NEAR(number(line, std::string("model.proportion.") + model) /
                            number(line, std::string("report.") + report),
                        1.0, 1e-4)
                << fields[0] << " " << report;
        }
    }
}

// The report's boxes and messages stand; the model gives the bound, or is null.
TEST_F(ModelOutputsTest, TablesWithoutAnEstimateGiveTheBoundAndFailedFilesNoModel) {
    const std::string none = writeFile("none.txt", "100\t0\t24\r\n1000\t0\t24\r\n");
    std::vector<std::string> arguments = {"analyze",
                                          none,
                                          writeFile("all.txt", "100\t24\t24\r\n"),
                                          writeFile("bad.txt", "100\t5\t3\r\n"),
                                          path("missing.tna"),
                                          writeFile("six.txt", "1234567\t3\t24\r\n"
                                                               "30000000000\t20\t24\r\n")};
    ASSERT_EQ(run(arguments), kExitBox);
    const std::string reportErr = err.str();
    arguments.insert(arguments.begin() + 1, {"--format", "json", "--level", "0.99"});
    EXPECT_EQ(run(arguments), kExitBox);
    EXPECT_EQ(err.str(), reportErr);
    const std::vector<JsonPaths> json = jsonLines();
    ASSERT_EQ(json.size(), 5u);
    EXPECT_EQ(json[0].at("model.bound.side"), "upper");
    // -ln(0.01) / (100 * 24 + 1000 * 24)
    EXPECT_NEAR(number(json[0], "model.bound.proportion"), 4.6051701859880914 / 26400, 1e-18);
    EXPECT_EQ(json[0].at("model.proportion"), "null");
    EXPECT_EQ(json[1].at("model.bound.side"), "lower");
    // 24 ln(1 - exp(-100 L)) = ln(0.01): L = -ln(1 - 0.01^(1/24)) / 100
    EXPECT_NEAR(number(json[1], "model.bound.proportion"), 1.745281606471142 / 100, 1e-14);
    EXPECT_EQ(json[2].at("outcome"), "INVALID RESPONSES/NUMBER TESTED");
    EXPECT_EQ(json[2].at("model"), "null");
    EXPECT_EQ(json[3].at("outcome"), "Titron ERROR #File not found");
    EXPECT_EQ(json[3].at("model"), "null");
    // The report's arithmetic failed after the rows passed their checks: the model stands.
    EXPECT_EQ(json[4].at("outcome"), "Titron ERROR #6");
    EXPECT_NE(json[4].at("model.proportion.estimate"), "null");

    // The section stands where the report would, after the box.
    EXPECT_EQ(run({"analyze", "--extended", none}), kExitBox);
    EXPECT_NE(out.str().find("No test responded, so there is no estimate.\r\n    Upper 95% bound"),
              std::string::npos);
}

// The reports stay byte for byte; each section follows its report before the form feed.
TEST_F(ModelOutputsTest, ExtendedLeavesTheReportsAsTheyAreAndAddsASectionToEach) {
    const std::string spleen = TITRON_EXAMPLES_DIR "/spleen-a.tna";
    const std::string culture = TITRON_EXAMPLES_DIR "/culture-e.txt";
    const int status = run({"analyze", spleen, culture});
    const std::string plain = out.str();
    const std::size_t plainBreak = plain.find("\f\r\n");
    EXPECT_EQ(run({"analyze", "--extended", spleen, culture}), status);
    const std::string extended = out.str();
    const std::size_t extendedBreak = extended.find("\f\r\n");
    ASSERT_NE(extendedBreak, std::string::npos);
    const std::string first = extended.substr(0, extendedBreak);
    const std::string heading = "\r\n  Single-hit model at the 95% level\r\n";
    for (const auto& [report, section] :
         {std::pair(plain.substr(0, plainBreak), first),
          std::pair(plain.substr(plainBreak + 3), extended.substr(extendedBreak + 3))}) {
        ASSERT_EQ(section.compare(0, report.size(), report), 0);
        EXPECT_EQ(section.compare(report.size(), heading.size(), heading), 0);
    }
    // The report's own 95% frequencies, 1 in 16,135 to 1 in 8,201.
    EXPECT_NE(first.find("Wald interval:              6.198e-05 to 0.0001219  1 in 16,135 to "
                         "1 in 8,201\r\n"),
              std::string::npos)
        << first;
}

TEST_F(ModelOutputsTest, LevelOutsideZeroToOneAndOptionsThatDontGoTogetherAreWrongUsage) {
    const std::string spleen = TITRON_EXAMPLES_DIR "/spleen-a.tna";
    for (const char* level : {"0", "1", "1.5", "-0.5", "abc", "0.95x", "", "nan"}) {
        EXPECT_EQ(run({"analyze", "--format", "json", "--level", level, spleen}), kExitUsage);
        EXPECT_EQ(err.str().rfind("titron-cli: --level needs a number between 0 and 1", 0), 0u)
            << level;
    }
    EXPECT_EQ(run({"analyze", "--level", "0.9", spleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "tsv", "--level", "0.9", spleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "json", "--extended", spleen}), kExitUsage);
    EXPECT_EQ(out.str(), "");

    ASSERT_EQ(run({"analyze", "--format", "json", "--level", "0.99", spleen}), kExitReport);
    const JsonPaths json = jsonLines().at(0);
    EXPECT_EQ(json.at("model.level"), "0.99");
    // exp(b - z se) with z = 2.5758293035489004, the normal quantile at 0.995.
    EXPECT_NEAR(number(json, "model.proportion.wald.0"),
                number(json, "model.proportion.estimate") *
                    std::exp(-2.5758293035489004 * number(json, "model.proportion.se_log")),
                1e-18);
}

} // namespace
} // namespace titron::shell
