#include "shell/plot_command.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

#include "tests/shell/command_fixture.h"
#include "tests/shell/svg_reading.h"

namespace titron::shell {
namespace {

using testing::attribute;
using testing::elements;
using testing::isWellFormedXml;

const std::string kSpleen = TITRON_EXAMPLES_DIR "/spleen-a.tna";
const std::string kLymphNode = TITRON_EXAMPLES_DIR "/lymph-node-d.csv";

using PlotCommandTest = testing::CommandFixture;

TEST_F(PlotCommandTest, DrawsEachFileInItsOwnColourWithItsFrequencyInTheLegend) {
    // Each analysis differs from the others in colour, marker shape and dash pattern, so
    // that the picture reads in grey as well.
    EXPECT_EQ(run({"plot", kSpleen, kLymphNode}), kExitReport);
    const std::string two = out.str();
    EXPECT_TRUE(isWellFormedXml(two));
    const auto kinds = [&two](const char* cls, const char* name) {
        std::set<std::string> seen;
        for (const std::string& tag : elements(two, cls)) {
            seen.insert(*name != '\0' ? attribute(tag, name) : tag.substr(0, tag.find(' ')));
        }
        return seen.size();
    };
    EXPECT_EQ(kinds("analysis", "stroke"), 2u);
    EXPECT_EQ(kinds("interval", "stroke-dasharray"), 2u);
    EXPECT_EQ(kinds("row", ""), 2u); // a marker's shape is its element
    // A file without a name is named by its path in the legend, and noted as analyze does.
    EXPECT_NE(two.find(">" + kLymphNode + ": 1 in "), std::string::npos);
    EXPECT_EQ(err.str(), kLymphNode + ": note: ANALYSIS NAME: There is no Analysis Name.\n");
}

TEST_F(PlotCommandTest, FilesWithoutAFitAreLeftOutWithTheMessagesAndStatusesOfAnalyze) {
    const std::vector<std::string> files = {writeFile("bad.txt", "100\t5\t3\r\n"), kSpleen,
                                            writeFile("all.txt", "100\t3\t3\r\n"),
                                            path("missing.tna")};
    std::vector<std::string> arguments = {"analyze"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    const int analyzeStatus = run(arguments);
    const std::string analyzeErr = err.str();
    arguments[0] = "plot";
    EXPECT_EQ(run(arguments), analyzeStatus);
    EXPECT_EQ(analyzeStatus, kExitBox);
    EXPECT_EQ(err.str(), analyzeErr);
    EXPECT_NE(analyzeErr.find("100% RESPONSES"), std::string::npos);
    EXPECT_EQ(elements(out.str(), "analysis").size(), 1u);
    EXPECT_NE(out.str().find(">Spleen A: 1 in 11,503<"), std::string::npos);

    // With nothing to draw there is no picture.
    EXPECT_EQ(run({"plot", files[0], files[2]}), kExitBox);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find("no analysis to plot"), std::string::npos);
}

// ln(upper / f) of the drawn lines: z se of the interval at its level.
double upperLineSpread(const std::string& svg) {
    const auto drop = [](const std::string& line) {
        return std::stod(attribute(line, "y2")) - std::stod(attribute(line, "y1"));
    };
    const std::vector<std::string> intervals = elements(svg, "interval");
    const std::vector<std::string> fits = elements(svg, "fit");
    if (intervals.size() != 2 || fits.size() != 1) {
        return std::nan("");
    }
    return std::log(drop(intervals[1]) / drop(fits[0]));
}

TEST_F(PlotCommandTest, LevelSetsTheIntervalAndOnlyLevelsBetweenZeroAndOneAreTaken) {
    EXPECT_EQ(run({"plot", "--level", "0.5", kSpleen}), kExitReport);
    EXPECT_NE(out.str().find("the 50% interval of f"), std::string::npos);
    const double half = upperLineSpread(out.str());
    EXPECT_EQ(run({"plot", kSpleen}), kExitReport);
    EXPECT_NE(out.str().find("the 95% interval of f"), std::string::npos);
    // The lines lie z se from the fit, z the normal quantile of the level: 1.959964 at
    // 0.95 and 0.674490 at 0.5.
    EXPECT_NEAR(upperLineSpread(out.str()) / half, 1.959964 / 0.674490, 1e-3);
    for (const char* level : {"0", "1", "1.5", "-0.5", "95%", ""}) {
        EXPECT_EQ(run({"plot", "--level", level, kSpleen}), kExitUsage) << level;
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(run({"plot"}), kExitUsage);
    EXPECT_EQ(run({"plot", "--colour", kSpleen}), kExitUsage);
}

TEST_F(PlotCommandTest, OutputWritesThePictureToTheFileInsteadOfStandardOutput) {
    EXPECT_EQ(run({"plot", kSpleen}), kExitReport);
    const std::string picture = out.str();
    EXPECT_EQ(run({"plot", "--output", path("spleen.svg"), kSpleen}), kExitReport);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(readFile("spleen.svg"), picture);
    const std::string nowhere = path("no-such-folder/spleen.svg");
    EXPECT_EQ(run({"plot", "--output", nowhere, kSpleen}), kExitUnreadable);
    EXPECT_EQ(err.str().rfind("cannot write " + nowhere + ": ", 0), 0u);
}

} // namespace
} // namespace titron::shell
