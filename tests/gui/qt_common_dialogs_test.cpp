// The file dialogs: Qt's filters from the program's, and a save as the user goes through it
// from the keyboard.
#include <deque>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "platform/qt/qt_platform.h"
#include "tests/gui/gui_helpers.h"

namespace titron::qt {
namespace {

namespace flag = platform::dialog_flag;

TEST(QtNameFiltersTest, LabelsCarryQtsFormOfTheirPatterns) {
    EXPECT_EQ(
        qtNameFilters("Titron Analysis Files (*.tna)|*.tna|Text Files (*.txt)|*.txt|"
                      "All Files (*.*)|*.*"),
        QStringList({"Titron Analysis Files (*.tna)", "Text Files (*.txt)", "All Files (*)"}));
    EXPECT_EQ(qtNameFilters("Data|*.tna;*.txt|Everything|*.*"),
              QStringList({"Data (*.tna *.txt)", "Everything (*)"}));
}

class QtCommonDialogsTest : public ::testing::Test {
  protected:
    QtCommonDialogsTest() : previous(QDir::currentPath()) { QDir::setCurrent(directory.path()); }
    ~QtCommonDialogsTest() override { QDir::setCurrent(previous); }

    // Answers each modal window in turn: a file dialog with the name, a message box with
    // Enter (its text kept). Anything else fails and is closed. The window just answered
    // may still be up when the next one is looked for (on a busy machine): it is passed over.
    void answerInTurn(std::deque<QString> names, QPointer<QWidget> answered = nullptr) {
        const auto nextModal = [answered]() -> QWidget* {
            QWidget* modal = QApplication::activeModalWidget();
            return modal == answered.data() ? nullptr : modal;
        };
        testing::whenUp<QWidget>(nextModal, [this, names](QWidget* modal) mutable {
            const QString name = names.front();
            names.pop_front();
            if (!names.empty()) {
                answerInTurn(names, modal); // before this answer opens the next window
            }
            auto* edit = modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            auto* box = qobject_cast<QMessageBox*>(modal);
            if (name.isEmpty() && box != nullptr) {
                shown.append(box->windowTitle() + ": " + box->text());
                QTest::keyClick(box, Qt::Key_Return);
            } else if (!name.isEmpty() && edit != nullptr) {
                // The dialog drops the file selected before only while the name box has the
                // focus, as it has for a user typing; offscreen, a closed box doesn't give
                // it back by itself.
                modal->activateWindow();
                EXPECT_TRUE(QTest::qWaitForWindowActive(modal));
                edit->setFocus();
                edit->setText(name);
                QTest::keyClick(edit, Qt::Key_Return);
            } else {
                ADD_FAILURE() << "unexpected " << modal->metaObject()->className();
                modal->close();
            }
        });
    }

    QStringList shown;
    QString previous;
    QTemporaryDir directory;
    QtPlatform platform;
};

// A read-only file or a missing directory is explained and the dialog asks again; the
// accepted file's directory becomes current.
TEST_F(QtCommonDialogsTest, SaveRefusesWhatCantBeWrittenAndTakesTheNextChoice) {
    QFile locked(directory.filePath("locked.tna"));
    ASSERT_TRUE(locked.open(QIODevice::WriteOnly));
    locked.close();
    locked.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    ASSERT_TRUE(QDir(directory.path()).mkdir("kept"));

    answerInTurn({"locked.tna", "", "missing/x.tna", "", "kept/assay"});
    // Without OverwritePrompt: Qt's dialog would ask about replacing the file first.
    platform::CommonDialog dialog{flag::PathMustExist | flag::NoReadOnlyReturn,
                                  "Analysis|*.tna",
                                  "tna",
                                  "Save As",
                                  "untitled.tna",
                                  ""};
    ASSERT_TRUE(platform.services().commonDialogs.showSave(dialog));

    const QString kept = QDir(directory.path()).absoluteFilePath("kept");
    EXPECT_EQ(QFile::decodeName(dialog.fileName.c_str()), kept + "/assay.tna");
    EXPECT_EQ(QDir::currentPath(), kept);
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0], "Save As: " + locked.fileName() +
                            "\nThis file is set to read-only.\nTry again with a different "
                            "file name.");
    EXPECT_TRUE(shown[1].startsWith("Save As: " + directory.filePath("missing/x.tna")));
}

} // namespace
} // namespace titron::qt
