// The question put before a changed document is dropped: by New, Open, the exit and the
// compare command. It is asked only while the changed flag is set.
#pragma once

#include "platform/platform.h"

namespace titron::documents {

inline constexpr const char* kSaveQuestion = "Save the Titron analysis file?";
// Open's wording: the file about to be opened is not the one meant.
inline constexpr const char* kSaveCurrentQuestion = "Save the current Titron analysis file?";

// Yes, No or Cancel, with Yes as the default button.
platform::Answer askSaveQuestion(platform::Dialogs& dialogs, const char* question);

} // namespace titron::documents
