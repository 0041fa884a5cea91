// Compare on screen: the toolbar's Compare button brings the saved analyses of the current
// directory in front of Analyze and takes them away again; the user's moves and keys on the
// grid reach the comparison logic, which recolours and recomputes, and typing changes nothing.
#include <filesystem>

#include <QAction>
#include <QApplication>
#include <QBrush>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include "comparison/compare.h"
#include "comparison/compare_rows.h"
#include "platform/qt/qt_compare_window.h"
#include "platform/qt/qt_grid_model.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_twips.h"
#include "tests/gui/qt_frame_fixture.h"
#include "tests/scratch_directory.h"

namespace titron::qt {
namespace {

namespace column = comparison::column;

const QColor kRed(255, 0, 0);
const QColor kBlue(0, 0, 255);

// Runs in a scratch directory made the current one, holding two analyses saved by the core.
class QtCompareWindowTest : public testing::QtFrameFixture {
  protected:
    QtCompareWindowTest() {
        std::filesystem::current_path(scratch.path);
        session.LastDirectory = scratch.path.string();
        headlessReport("Spleen A", {"2", "6", "14", "22"}, "spleen-a.tna");
        headlessReport("Spleen B", {"1", "3", "8", "15"}, "spleen-b.tna");
    }

    void clickCompare() {
        QAction* button = window.findChild<QAction*>(QStringLiteral("Compare"));
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(window.toolBar()->widgetForAction(button), Qt::LeftButton);
    }

    QtGridView& view() { return *window.compareWindow()->gridView(); }
    QtGridModel& model() { return view().gridModel(); }
    QString cell(int col, int row) { return model().data(model().cellIndex(col, row)).toString(); }
    QColor colour(int col, int row) {
        return model()
            .data(model().cellIndex(col, row), Qt::ForegroundRole)
            .value<QBrush>()
            .color();
    }
    QPoint centreOf(int col, int row) {
        return view().visualRect(model().cellIndex(col, row)).center();
    }

    titron::testing::ScratchDirectory scratch;
};

TEST_F(QtCompareWindowTest, CompareButtonShowsTheSavedAnalysesInFrontAndTakesThemAway) {
    const QString analyzeTitle = window.windowTitle();
    clickCompare();

    QMdiSubWindow* compareChild = window.compareSubWindow();
    EXPECT_TRUE(compareChild->isVisible());
    EXPECT_TRUE(compareChild->isMaximized());
    EXPECT_EQ(compareChild->mdiArea()->activeSubWindow(), compareChild);
    EXPECT_FALSE(window.analyzeSubWindow()->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &view());
    EXPECT_EQ(window.windowTitle(), QString(comparison::kCompareCaption));
    EXPECT_FALSE(compareChild->close());
    EXPECT_TRUE(compareChild->isVisible());

    // The rows (their order is the scan's test); the first is the comparison row.
    ASSERT_EQ(model().rowCount(), 2);
    EXPECT_EQ(colour(column::File, 1), kRed);
    EXPECT_EQ(colour(column::File, 2), kBlue);
    EXPECT_TRUE(cell(column::Difference, 1).isEmpty());
    EXPECT_FALSE(cell(column::Difference, 2).isEmpty());

    // The look: the columns' widths as the logic lays them out, text wrapped and placed by
    // column.
    EXPECT_EQ(view().columnWidth(column::File),
              twipsToPixelsX(compare.grid().colWidth(column::File), view()));
    EXPECT_TRUE(view().wordWrap());
    const auto alignment = [this](int col) {
        return model().data(model().cellIndex(col, 1), Qt::TextAlignmentRole).toInt();
    };
    EXPECT_EQ(alignment(column::Name), Qt::AlignLeft | Qt::AlignVCenter);
    EXPECT_EQ(alignment(column::LogProportion), Qt::AlignHCenter | Qt::AlignVCenter);
    // Analyze's grid keeps its own look.
    const QtGridModel& analyzeModel = window.analyzeWindow()->gridView()->gridModel();
    EXPECT_FALSE(analyzeModel.data(analyzeModel.cellIndex(1, 1), Qt::TextAlignmentRole).isValid());

    clickCompare();

    EXPECT_TRUE(window.analyzeSubWindow()->isVisible());
    EXPECT_EQ(window.analyzeSubWindow()->mdiArea()->activeSubWindow(), window.analyzeSubWindow());
    EXPECT_FALSE(compareChild->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &nameBox());
    EXPECT_EQ(window.windowTitle(), analyzeTitle);
}

TEST_F(QtCompareWindowTest, MovesRecompareTypingChangesNothingAndDeleteTakesWholeRows) {
    clickCompare();
    ASSERT_EQ(model().rowCount(), 2);
    const QString firstDifference = cell(column::Difference, 1);

    QTest::keyClick(&view(), Qt::Key_Down);

    EXPECT_EQ(colour(column::File, 1), kBlue);
    EXPECT_EQ(colour(column::File, 2), kRed);
    EXPECT_NE(cell(column::Difference, 1), firstDifference);
    EXPECT_TRUE(cell(column::Difference, 2).isEmpty());

    // A click on row 1 makes it the comparison row again.
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, centreOf(column::Name, 1));
    EXPECT_EQ(colour(column::File, 1), kRed);
    EXPECT_EQ(colour(column::File, 2), kBlue);

    const auto cells = [this] {
        QStringList all;
        for (int col = 1; col <= comparison::kCompareColumns; ++col) {
            all << cell(col, 1) << cell(col, 2);
        }
        return all;
    };
    const QStringList before = cells();
    QTest::keyClick(&view(), Qt::Key_5);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, centreOf(column::Name, 1));
    QTest::keyClick(&view(), Qt::Key_7);
    EXPECT_EQ(cells(), before);
    EXPECT_EQ(QApplication::focusWidget(), &view()); // no editor took it

    // A press on the row heading selects row 1 whole; Delete takes it away.
    const QString second = cell(column::File, 2);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, centreOf(0, 1));
    QTest::keyClick(&view(), Qt::Key_Delete);
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(cell(column::File, 1), second);
    EXPECT_EQ(colour(column::File, 1), kRed);
}

// The commands follow the window in front, not the order of focus events. Where the frame
// is not the active window when Compare comes up (on a display without a window manager,
// after another window took the focus), no focus event tells Analyze that its grid lost the
// focus; Insert, which has no use on Compare, is off all the same and inserts nothing.
TEST_F(QtCompareWindowTest, InsertIsOffWhileCompareIsInFrontWhateverTheFocusEventsSaid) {
    session.settings.ConfirmInsert = false;
    const auto enabled = [this](const char* key) {
        return window.findChild<QAction*>(QString::fromLatin1(key))->isEnabled();
    };
    window.analyzeWindow()->gridView()->setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(enabled("Insert"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));

    clickCompare();
    ASSERT_TRUE(window.compareSubWindow()->isVisible());
    EXPECT_FALSE(enabled("Insert"));
    EXPECT_FALSE(window.menuAction(session::MenuItem::EditInsert)->isEnabled());
    EXPECT_TRUE(enabled("Delete"));
    frame.toolbarClick("Insert");
    frame.menuClick(session::MenuItem::EditInsert);
    EXPECT_EQ(analyze.grid().rowLimit(), 100);
    EXPECT_EQ(session.AnalysisChanged, session::kUnchanged);

    // Back on Analyze the focus is in the name box: both row commands are off.
    clickCompare();
    EXPECT_FALSE(enabled("Insert"));
    EXPECT_FALSE(enabled("Delete"));
}

} // namespace
} // namespace titron::qt
