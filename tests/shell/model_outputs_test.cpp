// "titron-cli analyze --format json" and "--extended" end to end, on the sample assays and
// on tables the report refuses.
#include <cmath>
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "shell/command_line.h"
#include "tests/documents/analyze_fixture.h"
#include "tests/shell/json_reader.h"

namespace titron::shell {
namespace {

using testing::JsonReader;
using testing::JsonValue;

class ModelOutputsTest : public documents::testing::AnalyzeFixture {
  protected:
    int run(std::vector<std::string> arguments) {
        out.str("");
        err.str("");
        return runCommandLine(arguments, out, err);
    }

    std::vector<std::string> lines() const {
        std::vector<std::string> result;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            result.push_back(line);
        }
        return result;
    }

    std::vector<JsonValue> jsonLines() const {
        std::vector<JsonValue> result;
        for (const std::string& line : lines()) {
            const std::optional<JsonValue> value = JsonReader::read(line);
            EXPECT_TRUE(value) << line;
            result.push_back(value.value_or(JsonValue{}));
        }
        return result;
    }

    std::ostringstream out;
    std::ostringstream err;
};

std::vector<std::string> exampleFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(TITRON_EXAMPLES_DIR)) {
        files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> tabFields(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream in(line + '\t');
    for (std::string field; std::getline(in, field, '\t');) {
        fields.push_back(field);
    }
    return fields;
}

// Every line is JSON; outcome, passes and report are the tsv's, figure for figure; the
// model's Wald interval at 0.95 and its estimate agree with the report's within the
// digits it prints (three or four significant ones).
TEST_F(ModelOutputsTest, JsonOfTheSamplesIsTheTsvsFiguresAndTheModelAgreesWithTheReport) {
    std::vector<std::string> arguments = {"analyze", "--format", "tsv"};
    for (const std::string& file : exampleFiles()) {
        arguments.push_back(file);
    }
    const int tsvStatus = run(arguments);
    const std::vector<std::string> tsv = lines();
    const std::string tsvErr = err.str();
    arguments[2] = "json";
    EXPECT_EQ(run(arguments), tsvStatus);
    EXPECT_EQ(err.str(), tsvErr);
    const std::vector<JsonValue> json = jsonLines();
    ASSERT_EQ(json.size() + 1, tsv.size());

    int reports = 0;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const JsonValue& line = json[i];
        const std::vector<std::string> fields = tabFields(tsv[i + 1]);
        const std::vector<std::string> names = tabFields(tsv[0]);
        EXPECT_EQ(line["file"].text, fields[0]);
        EXPECT_EQ(line["outcome"].text, fields[2]);
        EXPECT_EQ(line["passes"].isNull(), fields[3].empty()) << fields[0];
        if (line["report"].isNull()) {
            EXPECT_EQ(fields[4], "");
            continue;
        }
        ++reports;
        for (std::size_t f = 4; f < names.size(); ++f) {
            const JsonValue& figure = line["report"][names[f]];
            EXPECT_EQ(figure.isNull(), fields[f].empty()) << names[f];
            if (!figure.isNull()) {
                EXPECT_EQ(figure.number, std::stod(fields[f])) << names[f];
            }
        }
        const JsonValue& report = line["report"];
        const JsonValue& model = line["model"];
        EXPECT_EQ(model["level"].number, 0.95);
        EXPECT_TRUE(model["bound"].isNull());
        EXPECT_EQ(model["frequency"]["wald"][0].number,
                  1.0 / model["proportion"]["wald"][0].number);
        EXPECT_EQ(model["doses"].items.size(),
                  static_cast<std::size_t>(report["df"].isNull() ? 1 : report["df"].number + 1));
        if (fields[0].ends_with("culture-e.txt")) {
            // The report's stopping rule ends this assay on a proportion of 1 (Pearson 0),
            // far from the maximum; the model's fit goes on to it.
            EXPECT_LT(model["proportion"]["estimate"].number, 1e-5);
            continue;
        }
        // The report's z is 1.96 and its estimate stops when the deviance settles: the
        // model's figures differ from its in the fifth significant digit at most.
        const auto expectClose = [&](double figure, const char* name) {
            EXPECT_NEAR(figure / report[name].number, 1.0, 1e-4) << fields[0] << " " << name;
        };
        expectClose(model["proportion"]["wald"][0].number, "lower_proportion_95");
        expectClose(model["proportion"]["wald"][1].number, "upper_proportion_95");
        expectClose(model["proportion"]["estimate"].number, "proportion");
        expectClose(model["proportion"]["se_log"].number, "se_log_proportion");
    }
    EXPECT_GE(reports, 5);
}

// The report's boxes of the totals and its messages stand; the model gives the bound.
TEST_F(ModelOutputsTest, TablesWithoutAnEstimateGiveTheBoundAndFailedFilesNoModel) {
    const std::string none = writeFile("none.txt", "100\t0\t24\r\n1000\t0\t24\r\n");
    const std::string all = writeFile("all.txt", "100\t24\t24\r\n");
    const std::string bad = writeFile("bad.txt", "100\t5\t3\r\n");
    const std::string missing = path("missing.tna");
    const std::vector<std::string> files = {none, all, bad, missing};
    std::vector<std::string> arguments = {"analyze"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    const int status = run(arguments);
    const std::string reportErr = err.str();
    ASSERT_EQ(status, kExitBox);
    arguments.insert(arguments.begin() + 1, {"--format", "json", "--level", "0.99"});
    EXPECT_EQ(run(arguments), status);
    EXPECT_EQ(err.str(), reportErr);
    const std::vector<JsonValue> json = jsonLines();
    ASSERT_EQ(json.size(), 4u);

    const JsonValue& upper = json[0]["model"]["bound"];
    EXPECT_EQ(upper["side"].text, "upper");
    // -ln(0.01) / (100 * 24 + 1000 * 24)
    EXPECT_NEAR(upper["proportion"].number, 4.6051701859880914 / 26400, 1e-18);
    EXPECT_TRUE(json[0]["model"]["proportion"].isNull());
    EXPECT_TRUE(json[0]["report"].isNull());
    EXPECT_EQ(json[1]["model"]["bound"]["side"].text, "lower");
    // 24 ln(1 - exp(-100 L)) = ln(0.01): L = -ln(1 - 0.01^(1/24)) / 100
    EXPECT_NEAR(json[1]["model"]["bound"]["proportion"].number, 1.745281606471142 / 100, 1e-14);
    EXPECT_EQ(json[2]["outcome"].text, "INVALID RESPONSES/NUMBER TESTED");
    EXPECT_TRUE(json[2]["model"].isNull());
    EXPECT_EQ(json[3]["outcome"].text, "Titron ERROR #File not found");
    EXPECT_TRUE(json[3]["model"].isNull());

    // The section stands where the report would, after the box.
    EXPECT_EQ(run({"analyze", "--extended", none}), kExitBox);
    EXPECT_NE(out.str().find("No test responded, so there is no estimate.\r\n"), std::string::npos);
    EXPECT_NE(out.str().find("Upper 95% bound of the proportion:"), std::string::npos);
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
    const std::string second = extended.substr(extendedBreak + 3);
    for (const auto& [report, section] : {std::pair(plain.substr(0, plainBreak), first),
                                          std::pair(plain.substr(plainBreak + 3), second)}) {
        ASSERT_EQ(section.compare(0, report.size(), report), 0);
        const std::string heading = "\r\n  Single-hit model at the 95% level\r\n";
        EXPECT_EQ(section.compare(report.size(), heading.size(), heading), 0);
    }
    // The report's own 95% frequencies, 1 in 16,135 to 1 in 8,201.
    EXPECT_NE(first.find("Wald interval:              6.198e-05 to 0.0001219  1 in 16,135 to "
                         "1 in 8,201\r\n"),
              std::string::npos)
        << first;
    EXPECT_NE(first.find("Consistent with the single-hit model."), std::string::npos);
}

TEST_F(ModelOutputsTest, LevelOutsideZeroToOneAndOptionsThatDontGoTogetherAreWrongUsage) {
    const std::string spleen = TITRON_EXAMPLES_DIR "/spleen-a.tna";
    for (const char* level : {"0", "1", "1.5", "-0.5", "abc", "0.95x", "", "nan"}) {
        EXPECT_EQ(run({"analyze", "--format", "json", "--level", level, spleen}), kExitUsage);
        EXPECT_EQ(err.str().rfind("titron-cli: --level needs a number between 0 and 1", 0), 0u)
            << level;
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(run({"analyze", "--level", "0.9", spleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "tsv", "--level", "0.9", spleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "json", "--extended", spleen}), kExitUsage);
    EXPECT_EQ(run({"analyze", "--format", "json", spleen, "--level"}), kExitUsage);

    ASSERT_EQ(run({"analyze", "--format", "json", "--level", "0.99", spleen}), kExitReport);
    const JsonValue model = jsonLines().at(0)["model"];
    EXPECT_EQ(model["level"].number, 0.99);
    // exp(b - z se) with z = 2.5758293035489004, the normal quantile at 0.995.
    EXPECT_NEAR(model["proportion"]["wald"][0].number,
                model["proportion"]["estimate"].number *
                    std::exp(-2.5758293035489004 * model["proportion"]["se_log"].number),
                1e-18);
}

} // namespace
} // namespace titron::shell
