#include "documents/save_question.h"

namespace titron::documents {

platform::Answer askSaveQuestion(platform::Dialogs& dialogs, const char* question) {
    return dialogs.messageBox({"SAVE ANALYSIS FILE?", question, platform::Buttons::YesNoCancel,
                               platform::Icon::Question, 1});
}

} // namespace titron::documents
