// What the splash window TitleForm and the About box AboutHelp show: the product's name,
// version and disclaimer. Both windows show the same texts; About adds its title, the build
// and an OK button.
#pragma once

namespace titron::shell {

inline constexpr const char* kTitleName = "Titron";     // Times New Roman, 48 points
inline constexpr const char* kTitleNameMark = "TM";     // small, beside the name
inline constexpr const char* kTitleFor = " for";        // Times New Roman, small
inline constexpr const char* kTitleWindows = "Windows"; // Times New Roman, small
// The trade mark sign beside "Windows" (Arial, small). It has no Latin-1 code, so it is
// given as its Unicode code point for the view to draw.
inline constexpr char32_t kTradeMarkSign = U'\u2122';
inline constexpr const char* kTitleSubtitle = "Limiting Dilution Analysis Software"; // 12 points
inline constexpr const char* kTitleVersion = "Version 1.1";
inline constexpr const char* kAboutBuild = "Build 2001122011";
inline constexpr const char* kAboutTitle = "Titron";
inline constexpr const char* kAboutOkCaption = "&OK";
inline constexpr double kTitleNamePoints = 48.0;
inline constexpr double kTitleSubtitlePoints = 12.0;
inline constexpr double kDisclaimerPoints = 6.75; // Arial

inline constexpr const char* kDisclaimer =
    "Disclaimer: in view of the potential variability in the quality of data entered into "
    "this program, the results generated should not be used as a basis for clinical "
    "decisions, patient care and/or publication.  The user of the Titron for Windows software "
    "acknowledges and agrees that this software is designed merely to assist the user in the "
    "performance of his or her professional activities and is not intended to replace the "
    "professional skill and judgement of the user.  Accordingly, the user accepts all "
    "professional responsibility arising out of the use of the software.  This package is for "
    "research purposes only.";

} // namespace titron::shell
