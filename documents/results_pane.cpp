#include "documents/results_pane.h"

#include <functional>
#include <utility>

namespace titron::documents {

ResultsPane::ResultsPane(FontSpec font, std::string text)
    : m_font(std::move(font)), m_text(std::move(text)) {
}

void ResultsPane::setText(std::string_view text) {
    // A short text after a long one, or a long one after a short one, gets a buffer of its
    // own size: the pane never holds a report's memory twice over.
    const std::less<const char*> before;
    const bool ownText =
        !before(text.data(), m_text.data()) && before(text.data(), m_text.data() + m_text.size());
    if (!ownText && (text.size() > m_text.capacity() || text.size() < m_text.capacity() / 2)) {
        std::string().swap(m_text);
    }
    m_text.assign(text);
    textChanged();
}

void ResultsPane::adoptText(std::string text) {
    std::string().swap(m_text); // the old text goes before anyone looks at the new
    m_text = std::move(text);
    textChanged();
}

void ResultsPane::textChanged() {
    m_look = PaneLook{};
    m_caret = 0;
    changed();
}

void ResultsPane::format(Rgb colour, std::vector<int> tabStopsTwips) {
    m_visible = false;
    m_look.formatted = true;
    m_look.colour = colour;
    m_look.tabStopsTwips = std::move(tabStopsTwips);
    m_caret = 0;
    m_visible = true;
    changed();
}

void ResultsPane::changed() {
    if (m_listener) {
        m_listener();
    }
}

} // namespace titron::documents
