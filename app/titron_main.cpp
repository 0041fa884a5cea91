// Titron, the desktop program: the Qt windows over the core's window logic.
#include <QApplication>
#include <QFile>

#include "documents/analyze.h"
#include "platform/qt/qt_frame_windows.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_platform.h"
#include "shell/main_frame.h"
#include "shell/session.h"
#include "shell/startup.h"

int main(int argc, char* argv[]) {
    using namespace titron;
    QApplication application(argc, argv);
    qt::QtPlatform platform;
    shell::Session session;
    documents::Analyze analyze(platform.services(), session);
    qt::QtMainWindow window(session, analyze);
    qt::QtFrameWindows windows(window);
    shell::Main frame(platform.services(), windows, session, analyze,
                      QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
    window.setMain(frame);
    if (shell::Startup(platform.services(), windows, session, analyze).run() ==
        shell::StartupOutcome::EndProgram) {
        windows.endProgram();
    }
    return QApplication::exec();
}
