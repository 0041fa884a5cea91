// Titron, the desktop program: the Qt windows over the core's window logic. A file named on
// the command line (as a double-click on an analysis file names it) opens once start-up is
// done.
#include <QApplication>
#include <QFile>
#include <QIcon>

#include "comparison/compare.h"
#include "documents/analyze.h"
#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_frame_windows.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_platform.h"
#include "session/session.h"
#include "shell/main_frame.h"
#include "shell/startup.h"

int main(int argc, char* argv[]) {
    using namespace titron;
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("titron"));
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("titron"), QIcon(QStringLiteral(":/titron.png"))));
    qt::QtPlatform platform;
    session::Session session;
    documents::Analyze analyze(platform.services(), session);
    comparison::Compare compare(platform.services(), session);
    qt::QtMainWindow window(session, analyze, compare);
    qt::QtFrameWindows windows(window);
    shell::Main frame(platform.services(), windows, session, analyze, compare,
                      QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
    window.setMain(frame);
    const shell::StartupOutcome started =
        shell::Startup(platform.services(), windows, session, analyze).run();
    if (started == shell::StartupOutcome::EndProgram) {
        windows.endProgram();
    }
    // Qt has taken its own options out of the arguments; the first one left is the file.
    const QStringList arguments = QCoreApplication::arguments();
    if (started == shell::StartupOutcome::Ready && arguments.size() > 1) {
        frame.openGivenFile(QFile::encodeName(arguments.at(1)).toStdString());
        window.analyzeWindow()->followFocus();
    }
    return QApplication::exec();
}
