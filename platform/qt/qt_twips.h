// Lengths of the window logic are twips (1/1440 inch); the screen counts pixels. These
// convert with the screen's real resolution (its logical dots per inch).
#pragma once

class QPaintDevice;

namespace titron::qt {

inline constexpr int kTwipsPerInch = 1440;

// Horizontal and vertical conversions, rounded to the nearest whole unit.
int twipsToPixelsX(int twips, const QPaintDevice& device);
int twipsToPixelsY(int twips, const QPaintDevice& device);
int pixelsToTwipsX(int pixels, const QPaintDevice& device);
int pixelsToTwipsY(int pixels, const QPaintDevice& device);

} // namespace titron::qt
