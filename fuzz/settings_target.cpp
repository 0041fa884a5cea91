// The settings file as start-up reads it. Reading never fails and never goes past the
// text; whatever the file holds, the program starts with settings in their ranges.
#include "fuzz/fuzz_targets.h"
#include "session/app_settings.h"
#include "shell/settings_file.h"

namespace titron::fuzz {

namespace {

bool same(const session::AppSettings& a, const session::AppSettings& b) {
    return a.WindowState == b.WindowState && a.WindowTop == b.WindowTop &&
           a.WindowLeft == b.WindowLeft && a.WindowHeight == b.WindowHeight &&
           a.WindowWidth == b.WindowWidth && a.ColHeading == b.ColHeading &&
           a.ColWidth == b.ColWidth && a.GridHeight == b.GridHeight &&
           a.ConfirmInsert == b.ConfirmInsert && a.ConfirmDelete == b.ConfirmDelete;
}

} // namespace

void settingsText(std::string_view bytes) {
    session::AppSettings settings = shell::defaultSettings(11520, 15360, 7200, 9600);
    shell::readSettingsText(bytes, settings);

    // Reading the same text over the result again changes nothing: every field the text
    // reaches is taken from the text alone.
    session::AppSettings again = settings;
    shell::readSettingsText(bytes, again);
    check(same(again, settings), "reading a settings text twice gives two different settings");
}

} // namespace titron::fuzz
