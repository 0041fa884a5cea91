#include "shell/svg_plot.h"

#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/svg_reading.h"

namespace titron::shell {
namespace {

using testing::attribute;
using testing::elements;
using testing::isWellFormedXml;

// The worked four-row assay: doses 1000 to 30000, 24 tested at each; f about 1 in 11,503.
PlotAnalysis spleen(const std::string& label, double lastResponses = 22) {
    return {label,
            {{1000, 2, 24}, {3000, 6, 24}, {10000, 14, 24}, {30000, lastResponses, 24}},
            1.0 / 11503.4,
            {6.2e-5, 1.219e-4}};
}

TEST(SvgPlotTest, IsWellFormedXmlWhateverTheNames) {
    const std::string svg =
        plotSvg({spleen("Spleen <A> & \"B\" 'C'\x01 Caf\xE9"), spleen("B")}, 0.95);
    EXPECT_TRUE(isWellFormedXml(svg));
    // The name is Latin-1, as the window shows it; the picture is UTF-8.
    EXPECT_NE(svg.find("Spleen &lt;A&gt; &amp; &quot;B&quot; &apos;C&apos;\xEF\xBF\xBD "
                       "Caf\xC3\xA9: 1 in 11,503"),
              std::string::npos);
    EXPECT_NE(svg.find(">ln(1 \xE2\x88\x92 r/n)<"), std::string::npos); // its own text is UTF-8
    // The checker itself refuses what is not well formed.
    EXPECT_FALSE(isWellFormedXml("<svg><g></svg></g>"));
    EXPECT_FALSE(isWellFormedXml("<svg><text>a & b</text></svg>"));
    EXPECT_FALSE(isWellFormedXml("<svg a=\"<\"/>"));
}

TEST(SvgPlotTest, LinesRunFromTheOriginToWhereMinusFDPutsThemAtTheLargestDose) {
    const PlotAnalysis analysis = spleen("Spleen A");
    const PlotFrame frame = framePlot({analysis});
    // Round ends that hold every point and line: 30,000 and -4 (the upper line ends at
    // -3.657).
    EXPECT_EQ(frame.doseEnd, 30000);
    EXPECT_EQ(frame.valueEnd, -4);
    const std::string svg = plotSvg({analysis}, 0.95);
    const auto xOf = [&](double dose) {
        return frame.left + (frame.right - frame.left) * dose / frame.doseEnd;
    };
    const auto yOf = [&](double value) {
        return frame.top + (frame.bottom - frame.top) * value / frame.valueEnd;
    };
    const std::vector<std::string> fits = elements(svg, "fit");
    ASSERT_EQ(fits.size(), 1u);
    EXPECT_NEAR(std::stod(attribute(fits[0], "x1")), xOf(0), 0.01);
    EXPECT_NEAR(std::stod(attribute(fits[0], "y1")), yOf(0), 0.01);
    EXPECT_NEAR(std::stod(attribute(fits[0], "x2")), xOf(30000), 0.01);
    EXPECT_NEAR(std::stod(attribute(fits[0], "y2")), yOf(-30000 / 11503.4), 0.01);
    const std::vector<std::string> intervals = elements(svg, "interval");
    ASSERT_EQ(intervals.size(), 2u);
    EXPECT_NEAR(std::stod(attribute(intervals[1], "y2")), yOf(-1.219e-4 * 30000), 0.01);
    EXPECT_FALSE(attribute(intervals[1], "stroke-dasharray").empty());
    // The axes are labelled at round values.
    for (const char* tick : {">0<", ">30,000<", ">5,000<", ">-4<", ">-1<"}) {
        EXPECT_NE(svg.find(tick), std::string::npos) << tick;
    }
}

TEST(SvgPlotTest, RowWhereEveryTestRespondedIsADownwardTriangleAtTheBottomEdge) {
    const PlotFrame frame = framePlot({spleen("Spleen A", 24)});
    const std::string svg = plotSvg({spleen("Spleen A", 24)}, 0.95);
    EXPECT_EQ(elements(svg, "row").size(), 3u);
    const std::vector<std::string> triangles = elements(svg, "all-responded");
    ASSERT_EQ(triangles.size(), 1u);
    double points[6];
    char more = 0; // three points and nothing after them
    ASSERT_EQ(std::sscanf(attribute(triangles[0], "points").c_str(), "%lf,%lf %lf,%lf %lf,%lf %c",
                          &points[0], &points[1], &points[2], &points[3], &points[4], &points[5],
                          &more),
              6);
    const double x = frame.left + (frame.right - frame.left) * 30000 / frame.doseEnd;
    // The tip, last, is at the dose on the bottom edge; the base lies above it.
    EXPECT_NEAR(points[4], x, 0.01);
    EXPECT_NEAR(points[5], frame.bottom, 0.01);
    EXPECT_LT(points[1], frame.bottom);
    EXPECT_EQ(points[1], points[3]);
    EXPECT_NEAR(points[0] + points[2], 2 * points[4], 0.02);
}

} // namespace
} // namespace titron::shell
