#include "shell/json_output.h"

#include <gtest/gtest.h>

#include "tests/shell/json_reader.h"

namespace titron::shell {
namespace {

using namespace analysis;

// Every member in its place, the frequency intervals as 1 / the proportion's bounds (so the
// lower proportion comes first), null for each figure that doesn't exist.
TEST(JsonOutputTest, WritesTheReportAndTheModelWithNullsForMissingFigures) {
    FileResult result;
    result.outcome = "report";
    result.name = "A \"1\"";
    result.passes = 4;
    Figures figures;
    figures.logProportion = -2;
    figures.se = 0.5;
    figures.proportion = 0.125;
    figures.proportionMinus = 0.1;
    figures.proportionPlus = 0.2;
    figures.lowerLimit = 0.05;
    figures.upperLimit = 0.25;
    figures.pearsonChi = 0.75;
    result.figures = figures;

    SingleHitStatistics model;
    model.level = 0.9;
    model.fit = SingleHitFit{-2.0, 0.125, 0.5, -3.0, 1.0};
    model.wald = Interval{0.0625, 0.25};
    model.likelihoodRatio = Interval{0.05, 0.5};
    model.slope = SlopeFit{0.1, 1.5, 0.25, 3.0};
    model.slopeWald = ZTest{2.0, 0.0455};
    model.scoreDose = ZTest{-1.0, 0.3173};
    model.pearson = ChiSquareTest{1.5, 1, 0.22};
    model.deviance = ChiSquareTest{0.0, 0, std::nullopt};
    model.doses = {{8, 1, 10, 6.3, -3.5, std::nullopt}};

    std::string line;
    appendJsonLine(line, "a.tna", result, &model);
    EXPECT_EQ(line, R"({"file":"a.tna","name":"A \"1\"","outcome":"report","passes":4,)"
                    R"("report":{"log_proportion":-2,"se_log_proportion":0.5,"proportion":0.125,)"
                    R"("proportion_minus_1se":0.1,"proportion_plus_1se":0.2,)"
                    R"("lower_proportion_95":0.05,"upper_proportion_95":0.25,"frequency":8,)"
                    R"("pearson_chi_square":0.75,"deviance_chi_square":0,"df":null,)"
                    R"("pearson_p":null,"deviance_p":null},)"
                    R"("model":{"level":0.9,"bound":null,)"
                    R"("proportion":{"estimate":0.125,"se_log":0.5,"wald":[0.0625,0.25],)"
                    R"("likelihood_ratio":[0.05,0.5]},)"
                    R"("frequency":{"estimate":8,"wald":[16,4],"likelihood_ratio":[20,2]},)"
                    R"("slope":{"estimate":1.5,"se":0.25},)"
                    R"("tests":{"slope_wald":{"z":2,"p":0.0455},"slope_likelihood_ratio":null,)"
                    R"("score_log_dose":null,"score_dose":{"z":-1,"p":0.3173},)"
                    R"("pearson":{"chi_square":1.5,"df":1,"p":0.22},)"
                    R"("deviance":{"chi_square":0,"df":0,"p":null}},)"
                    R"("doses":[{"dose":8,"responses":1,"tested":10,"expected":6.3,)"
                    R"("pearson_residual":-3.5,"deviance_residual":null}]}})"
                    "\n");
}

// The reader the tests rely on refuses what isn't JSON.
TEST(JsonOutputTest, ReaderRefusesWhatIsNotJson) {
    for (const char* bad : {"", "{", "{\"a\":1,}", "[1 2]", "01", "1.", "-", ".5", "nul",
                            "\"a\nb\"", "\"\\x\"", "{\"a\":1,\"a\":2}", "{} {}", "NaN"}) {
        EXPECT_FALSE(testing::JsonReader::read(bad)) << bad;
    }
    const auto json = testing::JsonReader::read(R"( {"a":[-0.5e-3,true,null,"\u00e9\""]} )");
    ASSERT_TRUE(json);
    EXPECT_EQ(json->at("a.0"), "-0.5e-3");
    EXPECT_EQ(json->at("a.3"), "\\u00e9\\\"");
}

} // namespace
} // namespace titron::shell
