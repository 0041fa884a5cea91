#include "shell/error_reporter.h"

#include <array>

#include "vocabulary/number_mask.h"

namespace titron::shell {

namespace {

using platform::Buttons;
using platform::Icon;

// The same two texts serve every data file, whichever file really failed. They differ in
// where the line breaks around "backup to".
constexpr std::string_view messageMissing = "The Cohortrak data file is missing.\r\n\r\n"
                                            "Exit Cohortrak and copy the backup\r\n"
                                            "to the C:\\COHORTRK subdirectory.";
constexpr std::string_view messageBadEnd =
    "The Cohortrak data file has a non-standard end-of-file marker, or an attempt was made "
    "to read beyond the end-of-file marker.\r\n\r\n"
    "Exit Cohortrak and copy the backup to\r\n"
    "the C:\\COHORTRK subdirectory.";
constexpr std::string_view messageDll = "Error in loading DLL (Dynamic Link Library).";

struct ErrorRow {
    int number;
    ErrorEntry entry;
};

constexpr std::array<ErrorRow, 23> errorTable{{
    {5, {"Illegal function call.", styleExclamation}},
    {6, {"Overflow.", styleExclamation}},
    {7, {"Out of memory.", styleStop}},
    {14, {"Out of string space.", styleStop}},
    {17, {"Cannot continue.", styleStop}},
    {28, {"Out of stack space.", styleStop}},
    {48, {messageDll, styleStop}},
    {49, {messageDll, styleStop}},
    {51, {"Internal error.", styleExclamation}},
    {52, {messageMissing, styleStop}},
    {53, {messageMissing, styleStop}},
    {54, {"Cannot open file for that type of access.", styleExclamation}},
    {55, {"File already open.", styleExclamation}},
    {57, {"Device I/O error.", styleRetry}},
    {58, {"File already exists.", styleExclamation}},
    {61, {"Disk full.", styleRetry}},
    {62, {messageBadEnd, styleStop}},
    {64, {messageMissing, styleStop}},
    {68, {"Device unavailable.", styleRetry}},
    {71, {"Insert a disk in the drive.", styleRetry}},
    {74, {"Cannot rename to different disk-drive.", styleExclamation}},
    {75, {"An error occurred accessing the drive or path.", styleExclamation}},
    {76, {"Path does not exist.", styleExclamation}},
}};

platform::MessageBoxRequest boxFor(const ErrorValues& values) {
    platform::MessageBoxRequest request{values.ErrorTitle, values.ErrorMessage};
    switch (values.ErrorStyle) {
    case styleStop:
        request.icon = Icon::Stop;
        break;
    case styleRetry:
        request.icon = Icon::Exclamation;
        request.buttons = Buttons::RetryCancel;
        request.defaultButton = 1; // Retry
        break;
    default:
        request.icon = Icon::Exclamation;
        break;
    }
    return request;
}

} // namespace

ErrorEntry errorEntry(int failureNumber) {
    for (const ErrorRow& row : errorTable) {
        if (row.number == failureNumber) {
            return row.entry;
        }
    }
    return {"Unexpected error.", styleExclamation};
}

ErrorOutcome ErrorReporter::reportError(int failureNumber) {
    m_values.ErrorStyle = styleExclamation;
    const ErrorEntry entry = errorEntry(failureNumber);
    m_values.ErrorMessage = std::string(entry.message);
    m_values.ErrorStyle = entry.style;
    m_values.ErrorTitle =
        "Cohortrak Error #" + vocabulary::formatMask(static_cast<double>(failureNumber), "#####");
    m_values.ErrorAnswer = static_cast<std::int16_t>(m_dialogs.messageBox(boxFor(m_values)));
    return endsProgram() ? ErrorOutcome::EndProgram : ErrorOutcome::Return;
}

} // namespace titron::shell
