// The rules of the name box. A name holds neither double quotation marks nor commas: typing
// drops them, and a name that got one by pasting is pointed out whenever the box loses the
// focus. The text itself is left for the user to mend.
#include "documents/analyze.h"
#include "entry/key_codes.h"

namespace titron::documents {

int Analyze::nameBoxKeyPress(int character) {
    if (character == '"' || character == ',') {
        return 0;
    }
    if (character == entry::key::Enter) {
        setFocus(Control::Grid);
        return 0;
    }
    return character;
}

void Analyze::nameBoxLostFocus() {
    if (m_checkingName) {
        return;
    }
    m_checkingName = true;
    // Two separate checks, so that a name with both characters shows both boxes.
    const std::string& name = m_name.text();
    if (name.find('"') != std::string::npos) {
        m_platform.dialogs.messageBox(
            {session::kProgramTitle,
             "The Analysis Name cannot contain double quotation marks (\").", platform::Buttons::Ok,
             platform::Icon::None, 1});
        setFocus(Control::AnalysisName);
    }
    if (name.find(',') != std::string::npos) {
        m_platform.dialogs.messageBox({session::kProgramTitle,
                                       "The Analysis Name cannot contain commas.",
                                       platform::Buttons::Ok, platform::Icon::None, 1});
        setFocus(Control::AnalysisName);
    }
    m_checkingName = false;
}

} // namespace titron::documents
