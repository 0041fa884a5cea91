// The failure reporter: turns a run-time failure number into a message box and keeps the
// box's message, kind, title and answer readable for the failure path of start-up.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace titron::shell {

// Box kinds of the failure table.
inline constexpr std::int16_t styleExclamation = 48; // exclamation, OK, back to the caller
inline constexpr std::int16_t styleStop = 16;        // stop icon, OK, the program ends
inline constexpr std::int16_t styleRetry = 53;       // exclamation, Retry (default) and Cancel

struct ErrorEntry {
    std::string_view message;
    std::int16_t style;
};

// The row of the failure table for a failure number; numbers in no row give
// "Unexpected error." with the exclamation kind. Multi-line messages end lines with CR LF.
ErrorEntry errorEntry(int failureNumber);

// The values the reporter leaves behind, named as the rest of the program reads them.
struct ErrorValues {
    std::string ErrorMessage;
    std::int16_t ErrorStyle = 0;
    std::string ErrorTitle;
    std::int16_t ErrorAnswer = 0; // 1 OK, 2 Cancel, 4 Retry
};

enum class ErrorOutcome { Return, EndProgram };

class ErrorReporter {
  public:
    explicit ErrorReporter(platform::Dialogs& dialogs) : m_dialogs(dialogs) {}

    // Shows the box for the failure and waits for the answer. A stop-kind failure (16)
    // means the program must end at once, saving nothing and asking nothing; the reporter
    // does not end it itself but returns EndProgram, and the caller must end the program
    // without further work. Every other kind returns Return and the caller reads
    // ErrorAnswer to decide what Retry or Cancel mean.
    [[nodiscard]] ErrorOutcome reportError(int failureNumber);

    const ErrorValues& values() const { return m_values; }
    bool endsProgram() const { return m_values.ErrorStyle == styleStop; }

  private:
    platform::Dialogs& m_dialogs;
    ErrorValues m_values;
};

} // namespace titron::shell
