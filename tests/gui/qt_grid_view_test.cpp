#include "platform/qt/qt_grid_view.h"

#include <vector>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "documents/analyze.h"
#include "entry/grid.h"
#include "platform/qt/qt_grid_model.h"
#include "platform/scripted_platform.h"
#include "session/session.h"

namespace titron::qt {
namespace {

using entry::CellBlock;

std::vector<QString> warnings;

void recordWarning(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings.push_back(message);
    }
}

QVariant background(const QtGridModel& model, int col, int row) {
    return model.data(model.cellIndex(col, row), Qt::BackgroundRole);
}

// --- The model on its own ----------------------------------------------------------------------

TEST(QtGridModel, StaysConsistentForItsViewsWhileTheGridChanges) {
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(recordWarning);
    const auto restore = qScopeGuard([previous] { qInstallMessageHandler(previous); });
    entry::Grid grid(4, 100);
    QtGridModel model(grid);
    QAbstractItemModelTester tester(&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning);
    QSignalSpy cells(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy headings(&model, &QAbstractItemModel::headerDataChanged);

    grid.setCell(2, 5, "abc");
    ASSERT_EQ(cells.count(), 1);
    EXPECT_EQ(cells.at(0).at(0).toModelIndex(), model.index(4, 2));
    grid.setCell(1, 0, "Dose");
    EXPECT_EQ(headings.count(), 1);
    EXPECT_EQ(cells.count(), 1); // the heading row is no model row
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "Dose");

    grid.addressCell(1, 3);
    grid.insertRow(2);
    EXPECT_EQ(model.rowCount(), 102);
    EXPECT_EQ(model.data(model.index(6, 2)).toString(), "abc"); // moved down with its row
    grid.setBlockMode(true);
    grid.addressBlock(1, 1, 1, 5);
    grid.deleteRow();
    grid.setBlockMode(false);
    EXPECT_EQ(model.rowCount(), 102);
    EXPECT_EQ(model.data(model.index(1, 2)).toString(), "abc");

    grid.setRowLimit(32767);
    grid.setCell(0, 32767, "32767");
    EXPECT_EQ(model.rowCount(), 32767);
    EXPECT_EQ(model.data(model.index(32766, 0)).toString(), "32767");

    // A pasted block reaching into the headings tells both.
    headings.clear();
    grid.addressCell(0, 0);
    grid.setClip("Row\tDose\r\n1\t10\r\n");
    EXPECT_EQ(headings.count(), 1);
    EXPECT_EQ(model.data(model.index(0, 1)).toString(), "10");

    // Selecting repaints the highlight.
    cells.clear();
    grid.setSelection(CellBlock{-1, -1, -1, -1});
    ASSERT_EQ(cells.count(), 1);
    EXPECT_TRUE(cells.at(0).at(2).value<QList<int>>().contains(Qt::BackgroundRole));

    grid.setRowLimit(0);
    EXPECT_EQ(model.rowCount(), 0);
    grid.clearSelection();
    grid.setRowLimit(10);
    grid.refresh();
    EXPECT_EQ(model.rowCount(), 10);
    EXPECT_TRUE(warnings.empty()) << warnings.front().toStdString();
}

// While the grid's redraw is off the views are told nothing; turning it on tells them all at
// once, and only if something changed meanwhile.
TEST(QtGridModel, KeepsTheAnnouncedRowsWhileRedrawIsOff) {
    entry::Grid grid(4, 100);
    QtGridModel model(grid);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy cells(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy layouts(&model, &QtGridModel::gridLayoutChanged);

    grid.setRedraw(false);
    grid.setRowLimit(20);
    grid.setCell(1, 1, "5");
    grid.setColWidth(-1, 900);
    EXPECT_EQ(model.rowCount(), 100);
    EXPECT_EQ(model.data(model.index(99, 1)).toString(), ""); // a row the grid dropped
    EXPECT_EQ(resets.count() + cells.count() + layouts.count(), 0);

    grid.setRedraw(true);
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(model.rowCount(), 20);
    EXPECT_EQ(model.data(model.index(0, 1)).toString(), "5");
    grid.setRedraw(false);
    grid.setRedraw(true);
    EXPECT_EQ(resets.count() + cells.count() + layouts.count(), 1);
}

TEST(QtGridModel, ShowsTextColoursAndTheGridsSelectionAndEdit) {
    entry::Grid grid(4, 20);
    QtGridModel model(grid);
    grid.setCell(1, 2, "\xb5g"); // Latin-1 micro sign
    grid.addressCell(1, 2);
    grid.setTextColour({0, 0, 255});
    EXPECT_EQ(model.data(model.cellIndex(1, 2)).toString(), QString(QChar(0xb5)) + "g");
    EXPECT_EQ(model.data(model.cellIndex(1, 2), Qt::ForegroundRole).value<QBrush>().color(),
              QColor(0, 0, 255));
    EXPECT_FALSE(model.flags(model.cellIndex(1, 1)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.flags(model.cellIndex(0, 1)) & Qt::ItemIsSelectable);

    const QVariant heading = background(model, 0, 1);
    ASSERT_TRUE(heading.isValid());
    EXPECT_FALSE(background(model, 1, 1).isValid());

    // Whole rows 3 and 4: every data column of them, the row numbers staying grey.
    grid.setSelection(CellBlock{-1, 3, -1, 4});
    const QVariant selected = background(model, 1, 3);
    ASSERT_TRUE(selected.isValid());
    EXPECT_NE(selected, heading);
    EXPECT_EQ(background(model, 4, 4), selected);
    EXPECT_FALSE(background(model, 1, 5).isValid());
    EXPECT_EQ(background(model, 0, 3), heading);
    grid.setSelection(CellBlock{2, 2, 2, 2}); // a single cell is no block
    EXPECT_FALSE(background(model, 2, 2).isValid());

    // The cell being edited stands on its own colour (its text is the view's keys test).
    grid.addressCell(2, 6);
    grid.activate();
    grid.userKeyPress('7');
    const QVariant editing = background(model, 2, 6);
    ASSERT_TRUE(editing.isValid());
    EXPECT_NE(editing, selected);
    EXPECT_NE(editing, heading);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    grid.userKeyPress(27); // the old text comes back
    ASSERT_FALSE(changes.isEmpty());
    EXPECT_EQ(changes.first().at(0).toModelIndex(), model.cellIndex(2, 6));
    EXPECT_FALSE(background(model, 2, 6).isValid());
}

// --- The view on the Analyze window's grid -----------------------------------------------------

class QtGridViewTest : public ::testing::Test {
  protected:
    QtGridViewTest() : analyze(platform.services(), session) {
        analyze.load();
        window.resize(640, 480);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(other = new QLineEdit(&window));
        layout->addWidget(view = new QtGridView(analyze.grid(), &window));
    }

    void SetUp() override {
        window.show();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        view->setFocus(Qt::OtherFocusReason);
        ASSERT_TRUE(view->hasFocus());
    }

    entry::Grid& grid() { return analyze.grid(); }
    const QtGridModel& model() const { return view->gridModel(); }
    QString shown(int col, int row) const {
        return model().data(model().cellIndex(col, row)).toString();
    }
    QPoint centreOf(int col, int row) const {
        return view->visualRect(model().cellIndex(col, row)).center();
    }
    QPoint headingOf(int col) const {
        const QHeaderView* heading = view->horizontalHeader();
        return {heading->sectionViewportPosition(col) + heading->sectionSize(col) / 2,
                heading->height() / 2};
    }
    void moveTo(int col, int row) {
        grid().addressCell(col, row);
        grid().activate();
    }
    // Press, move with the button held, release: QTest's own moves carry no buttons.
    void drag(QPoint from, QPoint to, QWidget* target = nullptr) {
        target = target != nullptr ? target : view->viewport();
        for (const auto& [type, at] :
             {std::pair{QEvent::MouseButtonPress, from}, std::pair{QEvent::MouseMove, to},
              std::pair{QEvent::MouseButtonRelease, to}}) {
            const Qt::MouseButtons held =
                type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, at, target->mapToGlobal(at), Qt::LeftButton, held, {});
            QApplication::sendEvent(target, &event);
        }
    }

    platform::ScriptedPlatform platform;
    session::Session session;
    documents::Analyze analyze;
    QWidget window; // after the grid: the view lets go of the grid before the grid goes
    QtGridView* view;
    QLineEdit* other;
};

TEST_F(QtGridViewTest, TypedAndEditingKeysReachTheGrid) {
    QTest::keyClicks(view, "1.5x3.");
    EXPECT_TRUE(grid().editMode());
    EXPECT_EQ(shown(1, 1), "1.5E3");
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_FALSE(grid().editMode());
    EXPECT_EQ(grid().cell(1, 1), "1.5E3");
    EXPECT_EQ(view->currentIndex(), model().cellIndex(1, 2));

    moveTo(4, 2);
    QTest::keyClicks(view, "a\"x 2");
    QTest::keyClick(view, Qt::Key_Enter);
    EXPECT_EQ(grid().cell(4, 2), "ax 2");
    // Beyond Latin-1 a character types as '?'.
    QTest::sendKeyEvent(QTest::Click, view, Qt::Key_unknown, QString(QChar(0x20ac)), {});
    EXPECT_EQ(shown(4, 3), "?");

    grid().setCell(2, 1, "7");
    moveTo(2, 1);
    QTest::keyClick(view, Qt::Key_F2); // opens the cell with its text
    QTest::keyClicks(view, "56");
    QTest::keyClick(view, Qt::Key_Backspace);
    EXPECT_EQ(shown(2, 1), "75");
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_FALSE(grid().editMode());
    EXPECT_EQ(shown(2, 1), "7");
    QTest::keyClick(view, Qt::Key_Delete);
    EXPECT_EQ(grid().cell(2, 1), "");
}

TEST_F(QtGridViewTest, ArrowsTabAndShiftMoveOrExtend) {
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(grid().selection(), (CellBlock{1, 1, 2, 3}));
    EXPECT_TRUE(grid().blockSelected());
    EXPECT_EQ(grid().activeRow(), 1);

    QTest::keyClick(view, Qt::Key_Tab);
    EXPECT_EQ(grid().activeCol(), 2);
    EXPECT_FALSE(grid().blockSelected());
    EXPECT_TRUE(view->hasFocus()); // Tab stays in the grid
    QTest::keyClick(view, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid().activeCol(), 1);
    QTest::keyClick(view, Qt::Key_PageDown);
    EXPECT_GT(grid().activeRow(), 2);
}

// Other window shortcuts win over the view (Ctrl+A: the frame's test); these keys don't.
TEST_F(QtGridViewTest, ClipboardKeysStayWithTheGridOverTheWindowsShortcuts) {
    QAction pasteAction("Paste", &window);
    pasteAction.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_V));
    window.addAction(&pasteAction);
    QSignalSpy pasted(&pasteAction, &QAction::triggered);
    platform.setText("9\t8\r\n");
    QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(pasted.count(), 0);
    EXPECT_EQ(grid().cell(1, 1), "9");
    EXPECT_EQ(grid().cell(2, 1), "8");
}

TEST_F(QtGridViewTest, FocusSignalsLeaveOutPopupsAndWindowActivation) {
    QSignalSpy entered(view, &QtGridView::focusEntered);
    QSignalSpy left(view, &QtGridView::focusLeft);

    QFocusEvent popupOut(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(view, &popupOut);
    QFocusEvent windowIn(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(view, &windowIn);
    EXPECT_EQ(entered.count() + left.count(), 0);

    other->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(left.count(), 1);
    view->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(entered.count(), 1);
}

// Which items the pop-up has on is the data grid's test.
TEST_F(QtGridViewTest, RightClickOpensThePopupWhereItWasAndLeavesTheSelection) {
    drag(centreOf(1, 1), centreOf(1, 3));
    const QPoint at = centreOf(1, 2);
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, at);
    ASSERT_EQ(session.frame.popupsOpened().size(), 1u);
    EXPECT_EQ(session.frame.popupsOpened()[0].x, at.x());
    EXPECT_EQ(session.frame.popupsOpened()[0].y, at.y());
    EXPECT_TRUE(session.frame.item(session::MenuItem::DropFill).enabled);
    EXPECT_EQ(grid().selection(), (CellBlock{1, 1, 1, 3}));
}

TEST_F(QtGridViewTest, ClicksSelectLinesMoveTheCursorAndOpenCells) {
    QWidget* heading = view->horizontalHeader()->viewport();
    QTest::mouseClick(heading, Qt::LeftButton, {}, headingOf(2));
    EXPECT_EQ(grid().selection(), (CellBlock{2, -1, 2, -1}));
    EXPECT_TRUE(background(model(), 2, 80).isValid());
    drag(headingOf(2), headingOf(3), heading);
    EXPECT_EQ(grid().selection(), (CellBlock{2, -1, 3, -1}));
    QTest::mouseClick(heading, Qt::LeftButton, {}, headingOf(0));
    EXPECT_EQ(grid().selection(), (CellBlock{-1, -1, -1, -1}));
    drag(centreOf(0, 3), centreOf(0, 5));
    EXPECT_EQ(grid().selection(), (CellBlock{-1, 3, -1, 5}));
    EXPECT_EQ(view->currentIndex(), model().cellIndex(1, 3)); // the cursor went to the row

    grid().setCell(3, 2, "24");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, centreOf(3, 2));
    EXPECT_EQ(view->currentIndex(), model().cellIndex(3, 2));
    EXPECT_FALSE(grid().blockSelected());
    EXPECT_FALSE(grid().editMode());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, centreOf(3, 2));
    QTest::keyClick(view, Qt::Key_0);
    EXPECT_EQ(shown(3, 2), "240");
}

// As in a spreadsheet: Shift+click extends the selection from the cursor, on cells and on row
// headings, and a selection made upwards grows on from its moving end. A click on a row
// heading takes the cursor to that row, so that Insert puts its rows in there.
TEST_F(QtGridViewTest, ShiftClicksExtendAndARowHeadingTakesTheCursor) {
    QWidget* cells = view->viewport();
    QTest::mouseClick(cells, Qt::LeftButton, {}, centreOf(2, 7));
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, centreOf(3, 4));
    EXPECT_EQ(grid().selection(), (CellBlock{2, 4, 3, 7}));
    EXPECT_EQ(grid().activeRow(), 7);
    QTest::keyClick(view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(grid().selection(), (CellBlock{2, 3, 3, 7}));
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, centreOf(1, 9));
    EXPECT_EQ(grid().selection(), (CellBlock{1, 7, 2, 9}));

    grid().setCell(1, 6, "d6");
    QTest::mouseClick(cells, Qt::LeftButton, {}, centreOf(0, 6));
    EXPECT_EQ(grid().activeRow(), 6);
    EXPECT_EQ(grid().activeCol(), 1);
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, centreOf(0, 9));
    EXPECT_EQ(grid().selection(), (CellBlock{-1, 6, -1, 9}));
    QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, centreOf(0, 4));
    EXPECT_EQ(grid().selection(), (CellBlock{-1, 4, -1, 6}));
    session.settings.ConfirmInsert = false;
    analyze.editInsert();
    EXPECT_EQ(grid().cell(1, 9), "d6"); // three blank rows before row 6
}

// Shift+F10 and the Menu key open the pop-up menu at the active cell, as a right click on it.
TEST_F(QtGridViewTest, ShiftF10AndTheMenuKeyOpenThePopupAtTheActiveCell) {
    moveTo(2, 4);
    grid().userSelect({2, 4, 2, 6});
    QTest::keyClick(view, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(view, Qt::Key_Menu);
    QTest::keyClick(view, Qt::Key_F10); // F10 alone is no menu key
    const auto& popups = session.frame.popupsOpened();
    ASSERT_EQ(popups.size(), 2u);
    const QRect cell = view->visualRect(model().cellIndex(2, 4));
    for (const session::PopupRequest& at : popups) {
        EXPECT_TRUE(cell.contains(at.x, at.y)) << at.x << "," << at.y;
    }
    EXPECT_TRUE(session.frame.item(session::MenuItem::DropFill).enabled);
    EXPECT_EQ(grid().selection(), (CellBlock{2, 4, 2, 6}));
}

// Twips become pixels by the screen's resolution (column widths: the Compare window's test);
// here the heading row and a row of its own height, which moves with its row.
TEST_F(QtGridViewTest, RowHeightsFollowTheGridsTwipsAndMoveWithTheirRows) {
    const int dpiY = view->logicalDpiY();
    // Rows without a height of their own, the heading's too, stand 270 twips high.
    EXPECT_EQ(view->horizontalHeader()->height(), qRound(270.0 * dpiY / 1440));
    grid().setRowHeight(3, 720); // half an inch
    EXPECT_EQ(view->rowHeight(2), qRound(dpiY / 2.0));
    const int ordinary = view->rowHeight(0);
    EXPECT_NE(ordinary, view->rowHeight(2));

    // A row inserted above takes the taller row down with it.
    analyze.editInsert();
    EXPECT_EQ(grid().rowLimit(), 101);
    EXPECT_EQ(view->rowHeight(3), qRound(dpiY / 2.0));
    EXPECT_EQ(view->rowHeight(2), ordinary);
}

TEST_F(QtGridViewTest, LargestNumberedTableScrollsToItsLastRow) {
    grid().setRowLimit(32767);
    analyze.numberRows();
    grid().setRowHeight(5, 720);
    moveTo(1, 32767);
    QTest::keyClick(view, Qt::Key_Up);
    EXPECT_EQ(model().rowCount(), 32767);
    EXPECT_EQ(shown(0, 32767), "32767");
    EXPECT_TRUE(view->viewport()->rect().contains(centreOf(1, 32766)));
}

} // namespace
} // namespace titron::qt
