// A text control as the window logic sees it: its text, and a change handler that runs at
// once, inside the write, whenever the text really changes (from code or from the user).
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace titron::session {

class TextBox {
  public:
    explicit TextBox(std::string text = {}) : m_text(std::move(text)) {}

    const std::string& text() const { return m_text; }
    // Writes the text; runs the change handler and then the view's listener if it differs.
    void setText(std::string_view text);

    // The window's rule for a changed text.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }
    // The view's listener, told after every change.
    void setListener(std::function<void()> listener) { m_listener = std::move(listener); }

  private:
    std::string m_text;
    std::function<void()> m_changeHandler;
    std::function<void()> m_listener;
};

} // namespace titron::session
