#include "shell/extended_text.h"

#include <gtest/gtest.h>

namespace titron::shell {
namespace {

using namespace analysis;

std::string lineWith(const std::string& text, const std::string& part) {
    const std::size_t at = text.find(part);
    if (at == std::string::npos) {
        return "";
    }
    const std::size_t start = text.rfind('\n', at) + 1;
    return text.substr(start, text.find("\r\n", at) - start);
}

// Each test gets the verdict its sign and p-value call for; a residual beyond 2 in size
// marks its row and brings the note.
TEST(ExtendedTextTest, VerdictsFollowTheDirectionOfTheDepartureAndLargeResidualsAreMarked) {
    SingleHitStatistics model;
    model.fit = SingleHitFit{-9.35, 8.69e-5, 0.1726, 0, 0};
    model.wald = Interval{6.2e-5, 1.219e-4};
    model.likelihoodRatio = Interval{6.1e-5, 1.2e-4};
    model.slope = SlopeFit{0, 1.8, 0.3, 0};
    model.slopeWald = ZTest{4.2, 0.00003};
    model.slopeLikelihoodRatio = ZTest{-2.4, 0.0164};
    model.scoreLogDose = ZTest{2.5, 0.0501};
    model.scoreDose = ZTest{-3.0, 0.0027};
    model.pearson = ChiSquareTest{0.09, 3, 0.993};
    model.deviance = ChiSquareTest{0, 0, std::nullopt};
    model.doses = {{1000, 2, 24, 1.98, 2.01, 1.5}, {3000, 6, 24, 5.6, -1.99, -2.0}};
    std::string text = "END\r\n";
    appendExtendedText(text, model);

    EXPECT_EQ(text.rfind("END\r\n\r\n  Single-hit model at the 95% level\r\n"), 0u);
    EXPECT_NE(lineWith(text, "Proportion:").find("8.69e-05"), std::string::npos);
    EXPECT_NE(lineWith(text, "Wald interval:").find("6.2e-05 to 0.0001219"), std::string::npos);
    EXPECT_NE(lineWith(text, "Wald interval:").find("1 in 16,129 to 1 in 8,203"),
              std::string::npos);
    EXPECT_NE(lineWith(text, "Slope, Wald:").find("z =    4.200    p < 0.0001"), std::string::npos);
    EXPECT_NE(lineWith(text, "Score, dose:").find("p = 0.0027"), std::string::npos);
    const auto verdictAfter = [&](const std::string& label) {
        const std::size_t at = text.find(label);
        return at == std::string::npos ? "" : lineWith(text.substr(text.find('\n', at) + 1), " ");
    };
    EXPECT_EQ(verdictAfter("Slope, Wald:"),
              "      Steeper than one hit allows: a test may need more than one active unit.");
    EXPECT_EQ(verdictAfter("Slope, likelihood ratio:"),
              "      Less steep than one hit allows: the active units may differ in activity.");
    EXPECT_EQ(verdictAfter("Score, log dose:"), "      Consistent with the single-hit model.");
    EXPECT_EQ(verdictAfter("Score, dose:").find("      Fewer responses at high doses than"), 0u);
    EXPECT_EQ(verdictAfter("Deviance:"), "      No test of fit with a single row.");
    EXPECT_EQ(lineWith(text, "        1000").substr(lineWith(text, "        1000").size() - 3),
              "  *");
    EXPECT_EQ(lineWith(text, "        3000").back(), '0'); // -1.99 and -2.0: not beyond 2
    EXPECT_NE(text.find("    * A residual beyond 2 in size"), std::string::npos);
}

} // namespace
} // namespace titron::shell
