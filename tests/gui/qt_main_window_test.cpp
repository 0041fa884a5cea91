// The frame and Analyze on screen: the menus and toolbar show the frame model, real keys
// reach the frame's commands past the focused control, and the views follow the models.
#include <string>

#include <QAction>
#include <QClipboard>
#include <QFontInfo>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolBar>

#include <gtest/gtest.h>

#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_twips.h"
#include "tests/gui/gui_helpers.h"
#include "tests/gui/qt_frame_fixture.h"

namespace titron::qt {
namespace {

using testing::whenModal;
using testing::whenPopup;

class QtMainWindowTest : public testing::QtFrameFixture {
  protected:
    QAction* action(const std::string& name) {
        return window.findChild<QAction*>(QString::fromStdString(name));
    }
};

TEST_F(QtMainWindowTest, MenusToolbarAndTitleShowTheFrameModelAndFollowIt) {
    for (const session::MenuEntry& item : session.frame.menuItems()) {
        const int at = static_cast<int>(item.item);
        QAction* a = window.menuAction(item.item);
        ASSERT_NE(a, nullptr) << at;
        EXPECT_EQ(a->isSeparator(), item.separator()) << at;
        if (!item.separator()) {
            EXPECT_EQ(a->text(), QString::fromStdString(item.caption)) << at;
        }
        EXPECT_EQ(a->shortcut(), QKeySequence(QString::fromStdString(item.shortcut)));
        EXPECT_EQ(a->isVisible(), item.visible) << at;
        // Qt disables what it hides.
        EXPECT_EQ(a->isEnabled(), item.usable() && item.visible) << at;
    }
    QStringList bar;
    for (QAction* menu : window.menuBar()->actions()) {
        if (menu->isVisible()) {
            bar << menu->text();
        }
    }
    EXPECT_EQ(bar, QStringList({"&File", "&Edit", "&Analyze", "&Help"}));

    const QList<QAction*> tools = window.toolBar()->actions();
    const auto& buttons = session.frame.toolButtons();
    ASSERT_EQ(tools.size(), static_cast<qsizetype>(buttons.size()));
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        QAction* a = tools[static_cast<qsizetype>(i)];
        EXPECT_EQ(a->isSeparator(), buttons[i].separator());
        if (!buttons[i].separator()) {
            EXPECT_EQ(a->toolTip(), QString::fromStdString(buttons[i].toolTip));
            EXPECT_FALSE(a->icon().isNull()) << buttons[i].key;
            EXPECT_EQ(a->isVisible(), buttons[i].visible) << buttons[i].key;
            EXPECT_EQ(a->isEnabled(), buttons[i].usable() && buttons[i].visible) << buttons[i].key;
        }
    }

    // And they follow its changes.
    session.frame.setButtonPressed("Compare", true);
    EXPECT_TRUE(action("Compare")->isChecked());
    session.frame.setButtonPressed("Compare", false);
    EXPECT_FALSE(action("Compare")->isChecked());

    session.frameCaption.setText("Titron - [/data/spleen-a.tna]");
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Titron - [/data/spleen-a.tna]"));
}

// Ctrl+A is "select all" to a line edit; here it must reach the Analyze command instead.
TEST_F(QtMainWindowTest, CtrlAInTheNameBoxAnalyzesAndShowsTheReport) {
    nameBox().setFocus();
    QTest::keyClicks(&nameBox(), QStringLiteral("Spleen A"));
    EXPECT_EQ(analyze.nameBox().text(), "Spleen A");
    typeFourRowAssay(analyze.grid());

    QTest::keyClick(&nameBox(), Qt::Key_A, Qt::ControlModifier);

    const std::string expected = headlessReport("Spleen A");
    EXPECT_EQ(analyze.resultsPane().text(), expected);
    EXPECT_EQ(resultsPane().toPlainText(), toDisplayText(expected));
    EXPECT_TRUE(resultsPane().toPlainText().contains(QStringLiteral("1 in 11,503\n")));
    EXPECT_FALSE(nameBox().hasSelectedText());
    EXPECT_FALSE(platform.pointer().busy());

    // The pane's look: dark blue bold Courier New (a metric twin stands in).
    EXPECT_EQ(resultsPane().palette().color(QPalette::Text), QColor(0, 0, 128));
    EXPECT_TRUE(resultsPane().font().bold());
    EXPECT_DOUBLE_EQ(resultsPane().font().pointSizeF(), 9.75);
    EXPECT_TRUE(QFontInfo(resultsPane().font()).fixedPitch());
}

// The table's doubled Tabs stand on stops every 960 twips, so a heading and its values
// line up however long the heading is; also for a report that replaces the first one.
TEST_F(QtMainWindowTest, ReportTableLinesUpOnStopsEvery960Twips) {
    analyze.nameBox().setText("Spleen A");
    typeFourRowAssay(analyze.grid());
    const int stop = twipsToPixelsX(960, resultsPane());
    for (const char* tested : {"24", "25"}) {
        nameBox().setFocus();
        QTest::keyClick(&nameBox(), Qt::Key_A, Qt::ControlModifier);
        ASSERT_TRUE(analyze.reportPresent());
        const QTextCursor heading = resultsPane().document()->find(QStringLiteral("Row\t"));
        ASSERT_FALSE(heading.isNull());
        // x where the text edit draws the character at a position of a block.
        const auto xAt = [&](const QTextBlock& block, const QString& text) {
            QTextCursor at(resultsPane().document());
            at.setPosition(block.position() + static_cast<int>(block.text().indexOf(text)));
            return resultsPane().cursorRect(at).left();
        };
        const QTextBlock head = heading.block();
        const QTextBlock first = head.next();
        ASSERT_TRUE(first.text().startsWith(QStringLiteral("1\t")));
        const int left = xAt(head, QStringLiteral("Row"));
        EXPECT_NEAR(xAt(head, QStringLiteral("Dose")) - left, 2 * stop, 1);
        EXPECT_NEAR(xAt(head, QStringLiteral("Responses")) - left, 4 * stop, 1);
        EXPECT_NEAR(xAt(head, QStringLiteral("Tested")) - left, 6 * stop, 1);
        EXPECT_NEAR(xAt(first, QString::fromLatin1(tested)) - left, 6 * stop, 1) << tested;
        // The next report: 25 tests in the first row.
        analyze.grid().setCell(3, 1, "25");
    }
}

TEST_F(QtMainWindowTest, CtrlAInTheResultsPaneAnalyzesAndNotesTheMissingName) {
    typeFourRowAssay(analyze.grid());
    resultsPane().setFocus();
    ASSERT_EQ(analyze.focus(), documents::Control::Results);

    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    bool paneShowedReport = false;
    whenModal([&](QWidget* modal) {
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            text = box->text();
            icon = box->icon();
        }
        paneShowedReport = resultsPane().toPlainText().contains(QStringLiteral("1 in 11,503"));
        QTest::keyClick(modal, Qt::Key_Return);
    });
    QTest::keyClick(&resultsPane(), Qt::Key_A, Qt::ControlModifier);

    EXPECT_EQ(text, QStringLiteral("There is no Analysis Name."));
    EXPECT_EQ(icon, QMessageBox::Information);
    EXPECT_TRUE(paneShowedReport);
    EXPECT_EQ(resultsPane().toPlainText(), toDisplayText(headlessReport("")));
    EXPECT_FALSE(resultsPane().textCursor().hasSelection());
    // The note sends the user to the name box.
    EXPECT_EQ(analyze.focus(), documents::Control::AnalysisName);
    // The offscreen platform doesn't give the frame back its activation after the box; the
    // frame's focus child is where the keys go once it has it.
    EXPECT_EQ(window.focusWidget(), &nameBox());
}

// Insert and Delete follow the grid's focus: the user moves it, and a box over the window
// doesn't count as a move. Ctrl+A reaches Analyze from the grid too (a table view's "select
// all" otherwise).
TEST_F(QtMainWindowTest, InsertAndDeleteFollowTheGridsFocus) {
    QtGridView& grid = *window.analyzeWindow()->gridView();
    grid.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(analyze.focus(), documents::Control::Grid);
    EXPECT_TRUE(action("Insert")->isEnabled());
    EXPECT_TRUE(action("Delete")->isEnabled());

    whenModal([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });
    platform.services().dialogs.messageBox({"T", "over the grid"});
    EXPECT_EQ(analyze.focus(), documents::Control::Grid);
    EXPECT_TRUE(action("Insert")->isEnabled());
    // Offscreen, the frame has to be given its activation back by hand.
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(analyze.focus(), documents::Control::Grid);

    nameBox().setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(analyze.focus(), documents::Control::AnalysisName);
    EXPECT_FALSE(action("Insert")->isEnabled());
    EXPECT_FALSE(action("Delete")->isEnabled());
    EXPECT_FALSE(window.menuAction(session::MenuItem::EditInsert)->isEnabled());

    resultsPane().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(analyze.focus(), documents::Control::Results);

    // Ctrl+A in the grid analyses and leaves the focus and the row commands there.
    analyze.nameBox().setText("Spleen A");
    typeFourRowAssay(analyze.grid());
    grid.setFocus(Qt::MouseFocusReason);
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(analyze.resultsPane().text(), headlessReport("Spleen A"));
    EXPECT_EQ(QApplication::focusWidget(), &grid);
    EXPECT_TRUE(action("Insert")->isEnabled());
}

// Ctrl+Q and the close box take the same road: the exit question while the document is
// changed, where Cancel keeps the program open.
TEST_F(QtMainWindowTest, ClosingTheFrameAsksWhileChangedAndCancelKeepsItOpen) {
    typeFourRowAssay(analyze.grid());
    session.AnalysisChanged = session::kChanged;
    QString question;
    whenModal([&](QWidget* modal) {
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            question = box->windowTitle() + QLatin1Char('|') + box->text();
        }
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    nameBox().setFocus();
    QTest::keyClick(&nameBox(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(question, QStringLiteral("SAVE ANALYSIS FILE?|Save the Titron analysis file?"));
    EXPECT_TRUE(window.isVisible());

    whenModal([&](QWidget* modal) { QTest::keyClick(modal, Qt::Key_N); });
    window.close(); // as the window manager's close box does
    EXPECT_FALSE(window.isVisible());
}

TEST_F(QtMainWindowTest, PastedCommaIsPointedOutWhenTheNameLosesTheFocus) {
    nameBox().setFocus();
    nameBox().setText(QStringLiteral("Spleen, A"));
    analyze.nameBox().setText("Spleen, A");
    int boxes = 0;
    QString text;
    whenModal([&](QWidget* modal) {
        ++boxes;
        text = qobject_cast<QMessageBox*>(modal)->text();
        QTest::keyClick(modal, Qt::Key_Return);
    });
    window.analyzeWindow()->gridView()->setFocus();
    QTest::qWait(50);
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(text, QStringLiteral("The Analysis Name cannot contain commas."));
    EXPECT_EQ(analyze.focus(), documents::Control::AnalysisName);
    EXPECT_EQ(window.focusWidget(), &nameBox());
}

TEST_F(QtMainWindowTest, NameBoxAndItsModelFollowEachOther) {
    // Typed quotes and commas are dropped; Enter goes on to the grid.
    nameBox().setFocus();
    QTest::keyClicks(&nameBox(), QStringLiteral("Spleen \"A\", day 3"));
    EXPECT_EQ(analyze.nameBox().text(), "Spleen A day 3");
    QTest::keyClick(&nameBox(), Qt::Key_Return);
    EXPECT_EQ(analyze.focus(), documents::Control::Grid);
    EXPECT_EQ(window.focusWidget(), window.analyzeWindow()->gridView());

    analyze.nameBox().setText("Bone marrow \xb5");
    EXPECT_EQ(nameBox().text(), QString::fromUtf8("Bone marrow \u00b5"));

    nameBox().setFocus();
    nameBox().selectAll();
    testing::typeCharacters(&nameBox(), QString::fromUtf8("Thymus \u20ac"));
    EXPECT_EQ(analyze.nameBox().text(), "Thymus ?");
    EXPECT_EQ(nameBox().text(), QStringLiteral("Thymus ?"));

    // Typing stops at the limit; a longer name from code is shown whole.
    nameBox().selectAll();
    QTest::keyClicks(&nameBox(), QString(documents::kNameTypedLimit + 10, QLatin1Char('x')));
    EXPECT_EQ(analyze.nameBox().text().size(),
              static_cast<std::size_t>(documents::kNameTypedLimit));
    const std::string longName(200, 'n');
    analyze.nameBox().setText(longName);
    EXPECT_EQ(nameBox().text().size(), 200);
}

TEST_F(QtMainWindowTest, ResizingLaysOutTheNameBoxForTheOuterWidth) {
    window.resize(900, 600);
    QTest::qWait(50);
    const QMdiSubWindow* child = window.analyzeSubWindow();
    const int outer = pixelsToTwipsX(child->width(), *child);
    const int nameWidth = analyze.nameWidth();
    // The box ends where the logic puts its right edge, and no part of the label is under it.
    EXPECT_EQ(nameBox().geometry().right() + 1, twipsToPixelsX(1200 + nameWidth, nameBox()));
    const QLabel* label = nameBox().parentWidget()->findChild<QLabel*>();
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), QStringLiteral("Analysis Name:"));
    EXPECT_GE(label->geometry().left(), 0);
    EXPECT_LT(label->geometry().right(), nameBox().geometry().left());

    // The logic is told the child's outer width: the box takes up what the child gains.
    window.resize(1200, 600);
    QTest::qWait(50);
    EXPECT_EQ(analyze.nameWidth() - nameWidth, pixelsToTwipsX(child->width(), *child) - outer);
}

TEST_F(QtMainWindowTest, AnalyzeStaysMaximisedAndCannotBeClosed) {
    QMdiSubWindow* child = window.analyzeSubWindow();
    EXPECT_TRUE(child->isMaximized());
    EXPECT_FALSE(child->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    child->close();
    EXPECT_TRUE(child->isVisible());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Titron"));
}

TEST_F(QtMainWindowTest, PopupMenuOpensAtTheGridAndRunsTheChosenBlockCommand) {
    analyze.grid().setCell(1, 1, "1000");
    QStringList captions;
    QPoint shownAt;
    whenPopup([&](QMenu* menu) {
        shownAt = menu->pos();
        QAction* copy = nullptr;
        for (QAction* a : menu->actions()) {
            captions << (a->isSeparator() ? QStringLiteral("-") : a->text());
            if (a->text() == QStringLiteral("Copy")) {
                copy = a;
            }
        }
        if (copy == nullptr) {
            menu->close();
            return;
        }
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(copy).center());
    });
    session.frame.openPopup({15, 25});

    EXPECT_EQ(captions, QStringList({"Cut", "Copy", "Paste", "-", "Delete", "-", "Fill"}));
    const QWidget* viewport = window.analyzeWindow()->gridView()->viewport();
    EXPECT_EQ(shownAt, viewport->mapToGlobal(QPoint(15, 25)));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("1000\r\n"));
}

TEST_F(QtMainWindowTest, AboutShowsTitleBuildAndClosesWithOk) {
    QString title;
    QStringList texts;
    whenModal([&](QWidget* modal) {
        title = modal->windowTitle();
        for (const QLabel* label : modal->findChildren<QLabel*>()) {
            texts << label->text();
        }
        for (QPushButton* button : modal->findChildren<QPushButton*>()) {
            if (button->text() == QStringLiteral("&OK")) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        modal->close();
    });
    window.menuAction(session::MenuItem::HelpAbout)->trigger();
    EXPECT_EQ(title, QStringLiteral("Titron"));
    const QString shown = texts.join(QLatin1Char('\n'));
    EXPECT_TRUE(shown.contains(QStringLiteral("Version 1.1")));
    EXPECT_TRUE(shown.contains(QStringLiteral("Build 2001122011")));
    EXPECT_TRUE(shown.contains(QStringLiteral("Limiting Dilution Analysis Software")));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
} // namespace titron::qt
