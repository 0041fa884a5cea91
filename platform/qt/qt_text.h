// The core's text is Latin-1 bytes with CR LF line ends; Qt's is Unicode with "\n". These
// convert at the edge between the two.
#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace titron::qt {

// The bytes as Latin-1 characters, line ends kept.
QString fromLatin1(std::string_view text);
// The same with every CR LF made "\n", for message boxes and the results pane.
QString toDisplayText(std::string_view text);
// Back to Latin-1 bytes; a character outside Latin-1 becomes '?'.
std::string toLatin1(const QString& text);

} // namespace titron::qt
