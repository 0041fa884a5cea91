// The settings at start-up: the fixed defaults, placed for the screen, overlaid with the
// settings file "titro.ini" of the current directory if there is one. Nothing writes it.
#pragma once

#include <string_view>

#include "platform/platform.h"
#include "session/app_settings.h"

namespace titron::shell {

// The defaults, with the frame centred on the screen (all lengths in twips) and normal on a
// screen higher than 7500, maximised otherwise. Places beyond the signed 16-bit range are
// clamped to it, so a huge screen puts the frame at 32767 rather than wrapping round.
session::AppSettings defaultSettings(int screenHeightTwips, int screenWidthTwips,
                                     int frameHeightTwips, int frameWidthTwips);

// Overlays settings with the 18 fields of a settings text, in the order of AppSettings.
// Fields run in sequence regardless of lines: a field ends at a comma or a line end (CR, LF
// or CR LF), a number also at a blank or Tab; blanks, Tabs and line ends before a field are
// skipped. A text may stand in double quotes, which let it hold a comma; whatever follows
// the closing quote up to the next comma or line end is dropped. A number that is not a
// number or lies outside the signed 16-bit range leaves its field as it was, and reading
// goes on at the next field. The end of the text ends the reading; later fields keep their
// values. Never fails.
void readSettingsText(std::string_view text, session::AppSettings& settings);

// Overlays settings with "titro.ini" of the current directory if it exists. Every failure
// of the file is ignored: whatever was read before it stands.
void readSettingsFile(platform::Files& files, session::AppSettings& settings);

} // namespace titron::shell
