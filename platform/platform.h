// The narrow services that the window logic needs of the platform. The desktop program
// implements them with Qt; tests and the command line use the scripted platform.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/common_dialog.h"
#include "platform/printer.h"

namespace titron::platform {

enum class Icon { None, Stop, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
// Values as the buttons are numbered throughout the program: 1 OK, 2 Cancel, 4 Retry, ...
enum class Answer { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct MessageBoxRequest {
    std::string title;
    std::string text;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    int defaultButton = 1; // 1 = first button, 2 = second, 3 = third
};

struct InputBoxRequest {
    std::string title;
    std::string prompt;
    std::string defaultEntry;
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual Answer messageBox(const MessageBoxRequest& request) = 0;
    // The text the user entered; Cancel gives the empty text.
    virtual std::string inputBox(const InputBoxRequest& request) = 0;
};

// The mouse pointer. No nesting: the last setting counts.
class Pointer {
  public:
    virtual ~Pointer() = default;
    virtual void setBusy(bool busy) = 0;
};

class EventLoop {
  public:
    virtual ~EventLoop() = default;
    // Lets the window events that are already queued run.
    virtual void processQueuedEvents() = 0;
    // Blocks the interface for the given time.
    virtual void wait(int milliseconds) = 0;
};

// The largest file that readAll takes: 64 MB, twice a table of 32,767 rows of 1,000
// characters.
inline constexpr std::size_t kLargestReadableFile = std::size_t{64} * 1024 * 1024;

// Whole-file access. A file is open only inside one call. Failures throw vocabulary::Failure
// with the number and description of the cause (53 "File not found", 70, 75, ...).
class Files {
  public:
    virtual ~Files() = default;
    // The text of a regular file, without a UTF-8 byte-order mark at its start. Anything
    // else (a folder, FIFO, device or socket) fails at once with 75; a file larger than
    // kLargestReadableFile fails with 7 before it is read.
    virtual std::string readAll(const std::string& path) = 0;
    // Replaces the file's contents; a failed write leaves the old file as it was, and its
    // failure's description gives the system's reason.
    virtual void writeAll(const std::string& path, const std::string& text) = 0;
    virtual bool exists(const std::string& path) = 0;
    // Names (not paths) of the files in the current directory that match a pattern such
    // as "*.tna", in the order the file system lists them.
    virtual std::vector<std::string> list(const std::string& pattern) = 0;
    virtual std::string currentDirectory() = 0;
    // Makes path the current directory; false if it can't be.
    virtual bool setCurrentDirectory(const std::string& path) = 0;
};

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    virtual void clear() = 0;
    virtual void setText(const std::string& text) = 0;
    virtual bool hasText() = 0;
    virtual std::string text() = 0;
};

struct CalendarDate {
    int year = 2000;
    int month = 1; // 1 to 12
    int day = 1;   // 1 to 31
};

class Clock {
  public:
    virtual ~Clock() = default;
    virtual CalendarDate today() = 0;
};

// The services of one run, handed by reference to every window.
struct Platform {
    Dialogs& dialogs;
    Pointer& pointer;
    EventLoop& events;
    Files& files;
    Clipboard& clipboard;
    Clock& clock;
    CommonDialogs& commonDialogs;
    Printer& printer;
};

} // namespace titron::platform
