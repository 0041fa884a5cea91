#include "platform/qt/qt_platform.h"

namespace titron::qt {

QtPlatform::QtPlatform()
    : m_qprinter(QPrinter::HighResolution), m_commonDialogs(m_qprinter),
      m_printer(m_qprinter), m_services{m_dialogs,   m_pointer, m_events,        m_files,
                                        m_clipboard, m_clock,   m_commonDialogs, m_printer} {
}

} // namespace titron::qt
