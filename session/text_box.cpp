#include "session/text_box.h"

namespace titron::session {

void TextBox::setText(std::string_view text) {
    if (text == m_text) {
        return;
    }
    m_text.assign(text);
    if (m_changeHandler) {
        m_changeHandler();
    }
    if (m_listener) {
        m_listener();
    }
}

} // namespace titron::session
