#include "platform/qt/qt_twips.h"

#include <cmath>

#include <QPaintDevice>

namespace titron::qt {

namespace {

int scale(int value, int numerator, int denominator) {
    return static_cast<int>(std::lround(static_cast<double>(value) * numerator / denominator));
}

} // namespace

int twipsToPixelsX(int twips, const QPaintDevice& device) {
    return scale(twips, device.logicalDpiX(), kTwipsPerInch);
}

int twipsToPixelsY(int twips, const QPaintDevice& device) {
    return scale(twips, device.logicalDpiY(), kTwipsPerInch);
}

int pixelsToTwipsX(int pixels, const QPaintDevice& device) {
    return scale(pixels, kTwipsPerInch, device.logicalDpiX());
}

int pixelsToTwipsY(int pixels, const QPaintDevice& device) {
    return scale(pixels, kTwipsPerInch, device.logicalDpiY());
}

} // namespace titron::qt
