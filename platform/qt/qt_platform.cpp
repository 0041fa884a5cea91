#include "platform/qt/qt_platform.h"

namespace titron::qt {

QtPlatform::QtPlatform()
    : m_services{m_dialogs, m_pointer, m_events, m_files, m_clipboard, m_clock} {
}

} // namespace titron::qt
