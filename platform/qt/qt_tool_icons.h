// Pictures of the toolbar's buttons: the desktop's icon theme where it has one, else a
// standard icon of the style or a small drawing of our own, so every button has a picture.
#pragma once

#include <string_view>

#include <QIcon>

class QStyle;

namespace titron::qt {

QIcon toolIcon(std::string_view key, const QStyle& style);

} // namespace titron::qt
