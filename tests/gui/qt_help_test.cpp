// Help Contents on screen: F1 hands the manual to the desktop's browser when no help file
// lies beside the program.
#include <filesystem>
#include <fstream>

#include <QApplication>
#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include "tests/gui/qt_frame_fixture.h"
#include "tests/scratch_directory.h"

namespace titron::qt {
namespace {

// Takes the place of the desktop's handler for local files, and keeps what it was asked.
class OpenedUrls : public QObject {
    Q_OBJECT
  public:
    QList<QUrl> urls;
  public slots:
    void open(const QUrl& url) { urls.append(url); }
};

using QtHelpTest = testing::QtFrameFixture;

TEST_F(QtHelpTest, F1OpensTheInstalledManualInTheDesktopsBrowser) {
    titron::testing::ScratchDirectory prefix;
    const std::filesystem::path manual = prefix.path / "share/doc/titron/manual/index.html";
    std::filesystem::create_directories(manual.parent_path());
    std::ofstream(manual) << "<html></html>";
    shell::Main installed(platform.services(), windows, session, analyze, compare,
                          (prefix.path / "bin").string());
    window.setMain(installed);

    OpenedUrls opened;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &opened, "open");
    // A box instead of the browser would wait for an answer: close it, and the check below
    // finds nothing opened.
    QTimer closeBox;
    closeBox.setSingleShot(true);
    QObject::connect(&closeBox, &QTimer::timeout, [] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            box->close();
        }
    });
    closeBox.start(2000);
    QTest::keyClick(&nameBox(), Qt::Key_F1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    window.setMain(frame);

    ASSERT_EQ(opened.urls.size(), 1);
    EXPECT_EQ(opened.urls.front(), QUrl::fromLocalFile(QString::fromStdString(manual.string())));
}

} // namespace
} // namespace titron::qt

#include "qt_help_test.moc"
