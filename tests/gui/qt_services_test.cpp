// The Qt services: message and input boxes as the user meets them, the busy pointer, the
// blocking wait, the clipboard and the Latin-1 edge.
#include <string>
#include <vector>

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_pointer.h"
#include "tests/gui/gui_helpers.h"

namespace titron::qt {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using testing::whenModal;

// What a message box showed, taken while it was up.
struct SeenBox {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QList<QMessageBox::StandardButton> buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// Shows the request and presses Enter on the box, which takes its default button.
Answer showAndPressEnter(const platform::MessageBoxRequest& request, SeenBox& seen) {
    whenModal([&seen](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box == nullptr) {
            modal->close();
            return;
        }
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.icon = box->icon();
        for (QAbstractButton* button : box->buttons()) {
            seen.buttons.append(box->standardButton(button));
        }
        seen.defaultButton = box->standardButton(box->defaultButton());
        QTest::keyClick(box, Qt::Key_Return);
    });
    QtDialogs dialogs;
    return dialogs.messageBox(request);
}

// The button sets the program asks with, each with every default; the icons take turns.
TEST(QtDialogsTest, BoxesShowTheirRequestAndEnterGivesTheNumberedDefault) {
    const std::vector<std::pair<Icon, QMessageBox::Icon>> icons = {
        {Icon::None, QMessageBox::NoIcon},
        {Icon::Stop, QMessageBox::Critical},
        {Icon::Question, QMessageBox::Question},
        {Icon::Exclamation, QMessageBox::Warning},
        {Icon::Information, QMessageBox::Information},
    };
    struct Case {
        Buttons set;
        QList<QMessageBox::StandardButton> shown;
        std::vector<Answer> answers; // of default button 1, 2, 3
    };
    const std::vector<Case> cases = {
        {Buttons::Ok, {QMessageBox::Ok}, {Answer::Ok}},
        {Buttons::YesNoCancel,
         {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel},
         {Answer::Yes, Answer::No, Answer::Cancel}},
        {Buttons::YesNo, {QMessageBox::Yes, QMessageBox::No}, {Answer::Yes, Answer::No}},
        {Buttons::RetryCancel,
         {QMessageBox::Retry, QMessageBox::Cancel},
         {Answer::Retry, Answer::Cancel}},
    };
    std::size_t boxes = 0;
    for (const Case& c : cases) {
        for (std::size_t i = 0; i < c.answers.size(); ++i) {
            const auto& [icon, qtIcon] = icons[boxes++ % icons.size()];
            SeenBox seen;
            const Answer answer =
                showAndPressEnter({"INVALID ENTRY", "Invalid entry: f\xfcnf\r\n\r\nnext line",
                                   c.set, icon, static_cast<int>(i) + 1},
                                  seen);
            EXPECT_EQ(answer, c.answers[i])
                << "set " << static_cast<int>(c.set) << " default " << i + 1;
            EXPECT_EQ(seen.title, QStringLiteral("INVALID ENTRY"));
            EXPECT_EQ(seen.text, QString::fromUtf8("Invalid entry: f\u00fcnf\n\nnext line"));
            EXPECT_EQ(seen.icon, qtIcon);
            // The platform's style may order the buttons its own way; the set is what counts.
            EXPECT_EQ(seen.buttons.size(), c.shown.size());
            for (QMessageBox::StandardButton b : c.shown) {
                EXPECT_TRUE(seen.buttons.contains(b));
            }
            EXPECT_EQ(seen.defaultButton, c.shown[static_cast<qsizetype>(i)]);
        }
    }
}

// Escape is Cancel where the box has one; a box without Cancel can't be escaped from, so
// nobody takes a "No" that they never chose.
TEST(QtDialogsTest, EscapeAnswersCancelAndOnlyWhereThereIsOne) {
    whenModal([](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); });
    QtDialogs dialogs;
    EXPECT_EQ(dialogs.messageBox({"T", "text", Buttons::YesNoCancel, Icon::Question, 1}),
              Answer::Cancel);

    bool stayedUp = false;
    whenModal([&stayedUp](QWidget* box) {
        QTest::keyClick(box, Qt::Key_Escape);
        box->close();
        stayedUp = box->isVisible();
        QTest::keyClick(box, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.messageBox({"T", "text", Buttons::YesNo, Icon::Question, 1}), Answer::Yes);
    EXPECT_TRUE(stayedUp);
}

TEST(QtDialogsTest, InputBoxOffersTheDefaultAndReturnsTheEntryInLatin1) {
    QString title, label, offered;
    whenModal([&](QWidget* modal) {
        auto* dialog = qobject_cast<QInputDialog*>(modal);
        if (dialog == nullptr) {
            modal->close();
            return;
        }
        title = dialog->windowTitle();
        label = dialog->labelText();
        offered = dialog->textValue();
        auto* edit = dialog->findChild<QLineEdit*>();
        edit->selectAll();
        testing::typeCharacters(edit, QString::fromUtf8("3\u00bd \u20ac"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    QtDialogs dialogs;
    const std::string entry = dialogs.inputBox(
        {"ADDITIONAL ITERATIONS", "After 10 iterations\r\n\r\nEnter the number:", "20"});
    EXPECT_EQ(title, QStringLiteral("ADDITIONAL ITERATIONS"));
    EXPECT_EQ(label, QStringLiteral("After 10 iterations\n\nEnter the number:"));
    EXPECT_EQ(offered, QStringLiteral("20"));
    EXPECT_EQ(entry, "3\xbd ?");

    whenModal([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    EXPECT_EQ(dialogs.inputBox({"T", "prompt", "20"}), "");
}

// Qt's override cursor is a stack; the busy pointer is a switch.
TEST(QtPointerTest, BusyPointerDoesNotNest) {
    {
        QtPointer pointer;
        pointer.setBusy(true);
        pointer.setBusy(true);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        pointer.setBusy(false);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

        // Not busy, it leaves alone a cursor that someone else set.
        QGuiApplication::setOverrideCursor(Qt::CrossCursor);
        pointer.setBusy(false);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::CrossCursor);
        QGuiApplication::restoreOverrideCursor();
        pointer.setBusy(true);
    }
    // A pointer that goes away busy takes its cursor with it.
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(QtEventLoopTest, WaitTakesItsTimeWhileTimersRun) {
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(20);
    QElapsedTimer clock;
    clock.start();
    QtEventLoop().wait(200);
    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_GE(ticks, 3);
}

TEST(QtClipboardTest, TextGoesBothWaysInLatin1) {
    QtClipboard clipboard;
    clipboard.setText("1000\t2\r\n\xb5g\r\n");
    EXPECT_TRUE(clipboard.hasText());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("1000\t2\r\n\u00b5g\r\n"));
    EXPECT_EQ(clipboard.text(), "1000\t2\r\n\xb5g\r\n");

    QGuiApplication::clipboard()->setText(QString::fromUtf8("\u20ac5"));
    EXPECT_EQ(clipboard.text(), "?5");

    clipboard.clear();
    EXPECT_FALSE(clipboard.hasText());
}

} // namespace
} // namespace titron::qt
