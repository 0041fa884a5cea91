// The plot of one or several analyses as an SVG picture: the log fraction of tests that did
// not respond, ln(1 - r/n), against dose. Under the single-hit model the points lie on the
// straight line -f d through the origin, so a reader sees at a glance how well they follow
// it. Each analysis has its own colour, marker shape and dash pattern, so that the picture
// stays readable when printed in grey.
#pragma once

#include <string>
#include <vector>

#include "analysis/assay_table.h"
#include "analysis/single_hit_model.h"

namespace titron::shell {

// One analysis as the plot draws it.
struct PlotAnalysis {
    std::string label;           // the name in the legend
    analysis::AssayTable rows;   // a marker per row
    double proportion = 0.0;     // f of the fitted line -f d
    analysis::Interval interval; // of f: the two dashed lines
};

// Where the plot's area lies in the picture, in pixels from its top left corner, and the
// values its edges stand for: dose 0 at the left edge, log fraction 0 at the top.
struct PlotFrame {
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    double doseEnd = 1.0;   // the dose at the right edge, a tick
    double doseStep = 1.0;  // between dose ticks
    double valueEnd = -1.0; // the log fraction at the bottom edge, a tick, below 0
    double valueStep = 1.0; // between log fraction ticks

    double x(double dose) const;
    double y(double value) const;
};

// The frame that holds every marker and line of the analyses, with round tick values.
PlotFrame framePlot(const std::vector<PlotAnalysis>& analyses);

// The whole picture; level is that of the intervals, for the legend. Each analysis is a
// group of class "analysis" with its colour as stroke; its rows are markers of class "row",
// rows where every test responded triangles of class "all-responded" at the bottom edge,
// its fitted line a line of class "fit" and the interval's lines of class "interval".
std::string plotSvg(const std::vector<PlotAnalysis>& analyses, double level);

} // namespace titron::shell
