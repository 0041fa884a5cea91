// The dialog object of a window (CMDialog): the fields that a command sets before showing a
// file or printer dialog, and the service that shows them. One object per window, so that
// its file name outlives a command: the next save offers it again.
#pragma once

#include <string>

namespace titron::platform {

// Flags of the dialog object, numbered as it has always taken them.
namespace dialog_flag {
inline constexpr long OverwritePrompt = 0x2;     // ask before replacing a file
inline constexpr long HideReadOnly = 0x4;        // no "open as read-only" box
inline constexpr long PrintSetup = 0x40;         // the printer dialog chooses a printer only
inline constexpr long PathMustExist = 0x800;     // the directory must exist
inline constexpr long FileMustExist = 0x1000;    // open: the file must exist
inline constexpr long NoReadOnlyReturn = 0x8000; // save: the file must not be read-only
} // namespace dialog_flag

struct CommonDialog {
    long flags = 0;
    // Pairs of a label and a pattern, separated by "|": "Text Files (*.txt)|*.txt|...".
    std::string filter;
    // Added to a typed name that has no extension; without the dot.
    std::string defaultExt;
    std::string dialogTitle;
    // Before showing: the name offered. After an accepted file dialog: the chosen full path.
    std::string fileName;
    // The print dialog's job: its name, which a print to a file offers as the file's name.
    std::string documentName;
};

class CommonDialogs {
  public:
    virtual ~CommonDialogs() = default;
    // Each returns false when the user cancelled. An accepted file dialog puts the chosen
    // path into dialog.fileName and leaves the process's current directory where the file
    // is, so that the next dialog opens there.
    virtual bool showOpen(CommonDialog& dialog) = 0;
    virtual bool showSave(CommonDialog& dialog) = 0;
    // The print dialog, or with dialog_flag::PrintSetup the choice of the printer and the
    // paper. Both have titles of their own, not dialogTitle. What the user set in them
    // (copies, page range) is not read back.
    virtual bool showPrinter(CommonDialog& dialog) = 0;
};

} // namespace titron::platform
