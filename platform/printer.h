// The print device as the window logic drives it: a left origin, the orientation, one font
// (name, size, emphasis) and lines of text. The device breaks pages by itself. Lengths are
// twips (1/1440 inch).
#pragma once

#include <string>

namespace titron::platform {

enum class Orientation { Portrait = 1, Landscape = 2 };

class Printer {
  public:
    virtual ~Printer() = default;
    // The position of the page's left edge: -700 puts position 0 at 700 twips inside it.
    virtual void setLeftOrigin(int twips) = 0;
    virtual void setOrientation(Orientation orientation) = 0;
    virtual void setFontName(const std::string& name) = 0;
    virtual void setFontSize(double points) = 0;
    // The one emphasis of the printed pages: bold.
    virtual void setEmphasis(bool on) = 0;
    // Prints text, which may hold CR LF line ends, and one line end after it. A Tab moves on
    // to the next stop of eight characters; a line that doesn't fit goes to the next page.
    virtual void printText(const std::string& text) = 0;
    // Ends the document: the job goes out.
    virtual void endDocument() = 0;
};

} // namespace titron::platform
