// The results pane: a read-only rich text holding the report, with the look that the
// window gives it (text colour and tab stops, applied after each new text) and its font.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace titron::documents {

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

struct FontSpec {
    std::string name;
    double points = 0.0;
    bool bold = false;
};

// How the text is shown. A new text arrives unformatted: in the control's own colour,
// without tab stops, until the window formats it.
struct PaneLook {
    bool formatted = false;
    Rgb colour{};
    std::vector<int> tabStopsTwips;
};

class ResultsPane {
  public:
    explicit ResultsPane(FontSpec font, std::string text);

    const std::string& text() const { return m_text; }
    void setText(std::string_view text);
    // The same, taking the text itself rather than a copy of it.
    void adoptText(std::string text);

    const FontSpec& font() const { return m_font; }
    const PaneLook& look() const { return m_look; }
    bool visible() const { return m_visible; }
    int caret() const { return m_caret; }

    // Gives the whole text a colour and tab stops, with the control hidden meanwhile so
    // that the change doesn't flicker, and puts the caret at the start.
    void format(Rgb colour, std::vector<int> tabStopsTwips);

    void setListener(std::function<void()> listener) { m_listener = std::move(listener); }

  private:
    void textChanged();
    void changed();

    FontSpec m_font;
    std::string m_text;
    PaneLook m_look;
    bool m_visible = true;
    int m_caret = 0;
    std::function<void()> m_listener;
};

} // namespace titron::documents
