// The values that the windows of one run share: the document's changed flag and file,
// the directory of the last accepted file dialog, the settings, and the frame's caption,
// menus and toolbar.
#pragma once

#include <cstdint>
#include <string>

#include "session/app_settings.h"
#include "session/frame_model.h"
#include "session/text_box.h"

namespace titron::session {

// The changed flag is a 16-bit 0 or -1, as the program has always stored it.
inline constexpr std::int16_t kChanged = -1;
inline constexpr std::int16_t kUnchanged = 0;

inline constexpr const char* kProgramTitle = "Titron";

struct Session {
    std::int16_t AnalysisChanged = kUnchanged;
    std::string AnalysisFile;  // full path of the document's file; empty for none
    std::string LastDirectory; // current directory after the last accepted file dialog
    std::string HelpFile;      // the help file's name, set at start-up
    AppSettings settings;
    TextBox frameCaption{kProgramTitle};
    FrameModel frame; // the menu bar, the toolbar and the grid's pop-up menu
};

// "Titron - [path]", the path as given: on a file system that tells case apart, another
// case names another file.
std::string captionWithFile(const std::string& path);

} // namespace titron::session
