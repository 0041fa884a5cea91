#include "shell/svg_plot.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "vocabulary/number_mask.h"

namespace titron::shell {

namespace {

// The picture and the plot area in it, in pixels.
constexpr double kWidth = 760.0;
constexpr double kLeft = 90.0;
constexpr double kRight = 730.0;
constexpr double kTop = 50.0;
constexpr double kBottom = 430.0;
constexpr double kLegendTop = kBottom + 72.0;
constexpr int kLegendNoteLines = 2;
constexpr double kLegendRow = 22.0;
constexpr double kMarkerSize = 4.5;
// About this many steps between ticks along each axis.
constexpr double kTickSteps = 6.0;

// Colours that differ in lightness as well as in hue, and are told apart by most readers
// with a colour vision deficiency (the palette of Okabe and Ito).
constexpr std::array<std::string_view, 7> kColours = {"#000000", "#0072B2", "#D55E00", "#009E73",
                                                      "#CC79A7", "#E69F00", "#56B4E9"};
// Dash patterns of the interval's lines; the fitted line is always solid.
constexpr std::array<std::string_view, 5> kDashes = {"8 4", "2 3", "10 3 2 3", "5 2", "1 3"};
enum class Shape { Circle, Square, Diamond, Cross };
constexpr std::array<Shape, 4> kShapes = {Shape::Circle, Shape::Square, Shape::Diamond,
                                          Shape::Cross};

struct Style {
    std::string_view colour;
    std::string_view dash;
    Shape shape;
    bool filled;
};

// Colour, dash and shape each cycle on their own, and open and filled markers alternate,
// so that neighbours in the list differ in all of them.
Style styleOf(std::size_t index) {
    return {kColours[index % kColours.size()], kDashes[index % kDashes.size()],
            kShapes[index % kShapes.size()], (index + index / kShapes.size()) % 2 == 0};
}

// A number for a coordinate: two decimals at most, no trailing zeros.
void appendNumber(std::string& out, double value) {
    std::array<char, 64> buffer{};
    auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, 2);
    if (error != std::errc()) {
        out += '0';
        return;
    }
    std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    text = text.substr(0, text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.remove_suffix(1);
    }
    out += text == "-0" ? "0" : text;
}

std::string number(double value) {
    std::string text;
    appendNumber(text, value);
    return text;
}

// Text for XML content and attribute values: markup characters as entities, and control
// characters, which XML cannot hold, as U+FFFD, so that any analysis name gives a
// well-formed picture.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r') {
                out += "\xEF\xBF\xBD";
            } else {
                out += c;
            }
        }
    }
    return out;
}

// The program's texts are Latin-1, one byte a character, as the window shows them; the
// picture is UTF-8.
std::string utf8FromLatin1(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out += c;
        } else {
            out += static_cast<char>(0xC0 | (byte >> 6));
            out += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return out;
}

// A round step (1, 2 or 5 times a power of ten) that divides span into about kTickSteps.
double niceStep(double span) {
    const double raw = span / kTickSteps;
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    const double fraction = raw / magnitude;
    const double nice = fraction <= 1.0   ? 1.0
                        : fraction <= 2.0 ? 2.0
                        : fraction <= 5.0 ? 5.0
                                          : 10.0;
    return nice * magnitude;
}

// The least multiple of step that is value or more; a quotient that rounding leaves a hair
// above a whole number counts as that number.
double roundUp(double value, double step) {
    return std::max(1.0, std::ceil(value / step - 1e-9)) * step;
}

// The tick values 0, step, 2 step, ... up to end (end negative: 0, -step, ...).
std::vector<double> ticks(double end, double step) {
    const auto count = static_cast<int>(std::lround(std::fabs(end) / step));
    std::vector<double> values;
    for (int k = 0; k <= count; ++k) {
        values.push_back(std::copysign(k * step, end));
    }
    return values;
}

// A tick value as the axes label it: the decimals of the step, thousands grouped, or all
// of an axis in powers of ten ("5e6", "1.5e7", "5e-6") where the plain form would be long.
std::string tickText(double value, double step, double axisEnd) {
    if (value == 0.0) {
        return "0";
    }
    const int stepExponent = static_cast<int>(std::floor(std::log10(step) + 1e-9));
    if (std::fabs(axisEnd) >= 1e7 || stepExponent < -4) {
        const int exponent = static_cast<int>(std::floor(std::log10(std::fabs(value)) + 1e-9));
        const int decimals = std::max(0, exponent - stepExponent);
        std::array<char, 64> buffer{};
        auto [end, error] =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                          value / std::pow(10.0, exponent), std::chars_format::fixed, decimals);
        std::string text = error == std::errc() ? std::string(buffer.data(), end) : "?";
        if (text.find('.') != std::string::npos) {
            text.erase(text.find_last_not_of('0') + 1);
            if (text.back() == '.') {
                text.pop_back();
            }
        }
        return text + "e" + std::to_string(exponent);
    }
    if (stepExponent >= 0) {
        return vocabulary::formatMask(value, "###,###");
    }
    return vocabulary::formatMask(
        value, "#0." + std::string(static_cast<std::size_t>(-stepExponent), '0'));
}

// ln(1 - r/n) of a row where some test did not respond.
double logFraction(const analysis::AssayRow& row) {
    return std::log1p(-row.responses / row.tested);
}

bool allResponded(const analysis::AssayRow& row) {
    return row.responses >= row.tested;
}

double largestDose(const analysis::AssayTable& rows) {
    double largest = 0.0;
    for (const analysis::AssayRow& row : rows) {
        largest = std::max(largest, row.dose);
    }
    return largest;
}

// Writes a marker of class cls centred on (x, y).
void appendMarker(std::string& out, Shape shape, double x, double y, std::string_view cls) {
    const double s = kMarkerSize;
    const double d = s * 1.35; // the diamond's half diagonal: as large to the eye as the square
    std::string element;
    switch (shape) {
    case Shape::Circle:
        element = "circle cx=\"" + number(x) + "\" cy=\"" + number(y) + "\" r=\"" + number(s);
        break;
    case Shape::Square:
        element = "rect x=\"" + number(x - s) + "\" y=\"" + number(y - s) + "\" width=\"" +
                  number(2 * s) + "\" height=\"" + number(2 * s);
        break;
    case Shape::Diamond:
        element = "polygon points=\"" + number(x) + "," + number(y - d) + " " + number(x + d) +
                  "," + number(y) + " " + number(x) + "," + number(y + d) + " " + number(x - d) +
                  "," + number(y);
        break;
    case Shape::Cross:
        element = "path stroke-width=\"2\" d=\"M" + number(x - s) + " " + number(y - s) + "L" +
                  number(x + s) + " " + number(y + s) + "M" + number(x - s) + " " + number(y + s) +
                  "L" + number(x + s) + " " + number(y - s);
        break;
    }
    const std::size_t blank = element.find(' ');
    out += '<';
    out += element.substr(0, blank);
    out += " class=\"";
    out += cls;
    out += '"';
    out += element.substr(blank);
    out += "\"/>\n";
}

// A line from the origin along -slope d up to dose end, cut off at the bottom edge should it
// leave the plot there (a slope that is not finite runs down the left edge).
void appendLine(std::string& out, const PlotFrame& frame, std::string_view kind, double slope,
                double end, std::string_view dash) {
    double dose = end;
    double value = -slope * end;
    if (!(value >= frame.valueEnd)) {
        dose = std::isfinite(slope) && slope > 0.0 ? frame.valueEnd / -slope : 0.0;
        value = frame.valueEnd;
    }
    out += "<line class=\"";
    out += kind;
    out += "\" x1=\"" + number(frame.x(0.0)) + "\" y1=\"" + number(frame.y(0.0)) + "\" x2=\"" +
           number(frame.x(dose)) + "\" y2=\"" + number(frame.y(value)) + "\"";
    if (!dash.empty()) {
        out += " stroke-dasharray=\"";
        out += dash;
        out += "\"";
    }
    out += "/>\n";
}

void appendText(std::string& out, double x, double y, std::string_view anchor,
                std::string_view text, std::string_view extra = {}) {
    out += "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\" text-anchor=\"";
    out += anchor;
    out += "\"";
    out += extra;
    out += '>';
    out += escaped(text);
    out += "</text>\n";
}

void appendAxes(std::string& out, const PlotFrame& frame) {
    out += "<g class=\"grid\" stroke=\"#d9d9d9\" stroke-width=\"1\">\n";
    for (const double dose : ticks(frame.doseEnd, frame.doseStep)) {
        out += "<line x1=\"" + number(frame.x(dose)) + "\" y1=\"" + number(frame.top) + "\" x2=\"" +
               number(frame.x(dose)) + "\" y2=\"" + number(frame.bottom) + "\"/>\n";
    }
    for (const double value : ticks(frame.valueEnd, frame.valueStep)) {
        out += "<line x1=\"" + number(frame.left) + "\" y1=\"" + number(frame.y(value)) +
               "\" x2=\"" + number(frame.right) + "\" y2=\"" + number(frame.y(value)) + "\"/>\n";
    }
    out += "</g>\n<g class=\"axes\" stroke=\"#000000\" stroke-width=\"1\">\n";
    out += "<rect x=\"" + number(frame.left) + "\" y=\"" + number(frame.top) + "\" width=\"" +
           number(frame.right - frame.left) + "\" height=\"" + number(frame.bottom - frame.top) +
           "\" fill=\"none\"/>\n";
    for (const double dose : ticks(frame.doseEnd, frame.doseStep)) {
        out += "<line x1=\"" + number(frame.x(dose)) + "\" y1=\"" + number(frame.bottom) +
               "\" x2=\"" + number(frame.x(dose)) + "\" y2=\"" + number(frame.bottom + 6) +
               "\"/>\n";
    }
    for (const double value : ticks(frame.valueEnd, frame.valueStep)) {
        out += "<line x1=\"" + number(frame.left - 6) + "\" y1=\"" + number(frame.y(value)) +
               "\" x2=\"" + number(frame.left) + "\" y2=\"" + number(frame.y(value)) + "\"/>\n";
    }
    out += "</g>\n<g class=\"tick-labels\">\n";
    for (const double dose : ticks(frame.doseEnd, frame.doseStep)) {
        appendText(out, frame.x(dose), frame.bottom + 22, "middle",
                   tickText(dose, frame.doseStep, frame.doseEnd));
    }
    for (const double value : ticks(frame.valueEnd, frame.valueStep)) {
        appendText(out, frame.left - 10, frame.y(value) + 4.5, "end",
                   tickText(value, frame.valueStep, frame.valueEnd));
    }
    out += "</g>\n";
    appendText(out, (frame.left + frame.right) / 2, frame.bottom + 48, "middle", "Dose");
    const double middle = (frame.top + frame.bottom) / 2;
    appendText(out, 0, 0, "middle", "ln(1 \xE2\x88\x92 r/n)",
               " transform=\"translate(24 " + number(middle) + ") rotate(-90)\"");
}

std::string percent(double level) {
    std::array<char, 64> buffer{};
    auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), level * 100,
                                      std::chars_format::general, 6);
    return error == std::errc() ? std::string(buffer.data(), end) : "?";
}

// The style of an analysis as the attributes of its group.
std::string groupAttributes(const Style& style) {
    std::string out = " stroke=\"";
    out += style.colour;
    out += "\" fill=\"";
    out += style.filled ? style.colour : "#ffffff";
    out += "\" stroke-width=\"1.5\"";
    return out;
}

} // namespace

double PlotFrame::x(double dose) const {
    return left + (right - left) * dose / doseEnd;
}

double PlotFrame::y(double value) const {
    return top + (bottom - top) * value / valueEnd;
}

PlotFrame framePlot(const std::vector<PlotAnalysis>& analyses) {
    double doses = 0.0;
    double lowest = 0.0;
    for (const PlotAnalysis& analysis : analyses) {
        const double end = largestDose(analysis.rows);
        doses = std::max(doses, end);
        for (const analysis::AssayRow& row : analysis.rows) {
            if (!allResponded(row)) {
                lowest = std::min(lowest, logFraction(row));
            }
        }
        // The steepest line, that of the interval's upper end, goes lowest at the end.
        const double lineEnd = -std::max(analysis.proportion, analysis.interval.upper) * end;
        if (std::isfinite(lineEnd)) {
            lowest = std::min(lowest, lineEnd);
        }
    }
    PlotFrame frame;
    frame.left = kLeft;
    frame.right = kRight;
    frame.top = kTop;
    frame.bottom = kBottom;
    if (doses > 0.0 && std::isfinite(doses)) {
        frame.doseStep = niceStep(doses);
        frame.doseEnd = roundUp(doses, frame.doseStep);
    }
    if (lowest < 0.0) {
        frame.valueStep = niceStep(-lowest);
        frame.valueEnd = -roundUp(-lowest, frame.valueStep);
    }
    return frame;
}

std::string plotSvg(const std::vector<PlotAnalysis>& analyses, double level) {
    const PlotFrame frame = framePlot(analyses);
    const double height =
        kLegendTop + kLegendRow * static_cast<double>(analyses.size() + kLegendNoteLines);
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    out += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(kWidth) + "\" height=\"" +
           number(height) + "\" viewBox=\"0 0 " + number(kWidth) + " " + number(height) +
           "\" font-family=\"DejaVu Sans, Arial, Helvetica, sans-serif\" font-size=\"13\">\n";
    out += "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    appendText(out, kWidth / 2, 28, "middle",
               "Log fraction of tests not responding, ln(1 \xE2\x88\x92 r/n), against dose",
               " font-size=\"15\"");
    appendAxes(out, frame);

    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const PlotAnalysis& analysis = analyses[i];
        const Style style = styleOf(i);
        const double end = largestDose(analysis.rows);
        out += "<g class=\"analysis\"" + groupAttributes(style) + ">\n";
        appendLine(out, frame, "interval", analysis.interval.lower, end, style.dash);
        appendLine(out, frame, "interval", analysis.interval.upper, end, style.dash);
        out += "<g stroke-width=\"2\">\n";
        appendLine(out, frame, "fit", analysis.proportion, end, {});
        out += "</g>\n";
        for (const analysis::AssayRow& row : analysis.rows) {
            const double x = frame.x(row.dose);
            if (allResponded(row)) {
                out += "<polygon class=\"all-responded\" points=\"" + number(x - 5) + "," +
                       number(frame.bottom - 9) + " " + number(x + 5) + "," +
                       number(frame.bottom - 9) + " " + number(x) + "," + number(frame.bottom) +
                       "\"/>\n";
            } else {
                appendMarker(out, style.shape, x, frame.y(logFraction(row)), "row");
            }
        }
        out += "</g>\n";
    }

    const std::string note = "Solid: the fitted line \xE2\x88\x92"
                             "f d. Dashed: the " +
                             percent(level) + "% interval of f (Wald).";
    appendText(out, kLeft, kLegendTop, "start", note, " fill=\"#444444\"");
    appendText(out, kLeft, kLegendTop + kLegendRow, "start",
               "\xE2\x96\xBC at the bottom edge: a dose where every test responded.",
               " fill=\"#444444\"");
    for (std::size_t i = 0; i < analyses.size(); ++i) {
        const Style style = styleOf(i);
        const double y = kLegendTop + kLegendRow * static_cast<double>(i + kLegendNoteLines);
        out += "<g class=\"legend\"" + groupAttributes(style) + ">\n";
        appendMarker(out, style.shape, kLeft + 8, y - 4.5, "legend-marker");
        out += "<line x1=\"" + number(kLeft + 20) + "\" y1=\"" + number(y - 4.5) + "\" x2=\"" +
               number(kLeft + 50) + "\" y2=\"" + number(y - 4.5) + "\" stroke-width=\"2\"/>\n";
        out += "<line x1=\"" + number(kLeft + 58) + "\" y1=\"" + number(y - 4.5) + "\" x2=\"" +
               number(kLeft + 98) + "\" y2=\"" + number(y - 4.5) + "\" stroke-dasharray=\"" +
               std::string(style.dash) + "\"/>\n";
        appendText(out, kLeft + 108, y, "start",
                   utf8FromLatin1(analyses[i].label) + ": 1 in " +
                       vocabulary::formatMask(1.0 / analyses[i].proportion, "###,###"),
                   " stroke=\"none\" fill=\"#000000\"");
        out += "</g>\n";
    }
    out += "</svg>\n";
    return out;
}

} // namespace titron::shell
