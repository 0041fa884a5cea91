// The services of the desktop program: Qt dialogs, pointer, event loop, clipboard, clock,
// file and printer dialogs and the print device, with files on the local file system.
#pragma once

#include <QPrinter>

#include "platform/local_files.h"
#include "platform/platform.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_common_dialogs.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_pointer.h"
#include "platform/qt/qt_printer.h"

namespace titron::qt {

class QtPlatform {
  public:
    QtPlatform();
    QtPlatform(const QtPlatform&) = delete;
    QtPlatform& operator=(const QtPlatform&) = delete;

    platform::Platform& services() { return m_services; }
    QtPointer& pointer() { return m_pointer; }
    // The printer that the printer dialogs choose and the print device prints on.
    QPrinter& qprinter() { return m_qprinter; }

  private:
    QtDialogs m_dialogs;
    QtPointer m_pointer;
    QtEventLoop m_events;
    platform::LocalFiles m_files;
    QtClipboard m_clipboard;
    QtClock m_clock;
    // Before the dialogs and the device that refer to it.
    QPrinter m_qprinter;
    QtCommonDialogs m_commonDialogs;
    QtPrinter m_printer;
    platform::Platform m_services;
};

} // namespace titron::qt
