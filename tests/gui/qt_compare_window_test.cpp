// Compare on screen: the toolbar's Compare button brings the saved analyses of the current
// directory in front of Analyze and takes them away again; the user's moves and keys on the
// grid reach the comparison logic, which recolours and recomputes, and typing changes nothing.
// At the frame's first size every figure stays readable: on one line, whole in its tip, in a
// column the user can widen.
#include <filesystem>

#include <QAction>
#include <QApplication>
#include <QBrush>
#include <QHeaderView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPdfWriter>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include "comparison/compare.h"
#include "comparison/compare_rows.h"
#include "platform/qt/qt_compare_window.h"
#include "platform/qt/qt_grid_model.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_twips.h"
#include "tests/gui/pdf_words.h"
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

    // The words the view draws in a cell, read back from a PDF of the view.
    std::vector<testing::Word> drawnIn(int col, int row) {
        const QString path = QString::fromStdString((scratch.path / "grid.pdf").string());
        const double points = 72.0 / view().logicalDpiX(); // per pixel
        {
            QPdfWriter pdf(path);
            pdf.setResolution(view().logicalDpiX());
            pdf.setPageMargins({});
            pdf.setPageSize(QPageSize(QSizeF(view().size()) * points, QPageSize::Point));
            QPainter painter(&pdf);
            view().render(&painter);
        }
        const QRectF cell = QRectF(view().visualRect(model().cellIndex(col, row)))
                                .translated(view().viewport()->pos());
        std::vector<testing::Word> words = testing::readPdf(path).words;
        std::erase_if(words, [&](const testing::Word& w) {
            return !cell.contains(QPointF(w.left + w.right, w.top + w.bottom) / (2 * points));
        });
        return words;
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

    // The look: the columns' widths as the logic lays them out, text placed by column.
    EXPECT_EQ(view().columnWidth(column::File),
              twipsToPixelsX(compare.grid().colWidth(column::File), view()));
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

TEST_F(QtCompareWindowTest, AtTheFirstFrameSizeFiguresStayWholeAndColumnsWiden) {
    windows.placeFrame(platform::WindowState::Normal, 300, 300, 7200, 9600); // 640 x 480
    clickCompare();
    ASSERT_EQ(model().rowCount(), 2);
    // No figure is broken over two lines, however narrow its column.
    for (int col = column::LogProportion; col <= comparison::kCompareColumns; ++col) {
        const std::vector<testing::Word> words = drawnIn(col, 2);
        ASSERT_FALSE(words.empty()) << "column " << col;
        for (const testing::Word& word : words) {
            EXPECT_NEAR(word.top, words.front().top, 1.0) << "column " << col;
        }
    }
    // Each cell holds its whole text as its tip.
    EXPECT_EQ(model().data(model().cellIndex(column::Ratio, 2), Qt::ToolTipRole).toString(),
              cell(column::Ratio, 2));

    // A long path gives way in its folder, so that the file name stays in sight.
    const QString path = cell(column::File, 1);
    const QString name = path.mid(path.lastIndexOf(u'/')); // "/spleen-a.tna" or "-b"
    const QFontMetrics metrics = view().fontMetrics();
    view().setColumnWidth(column::File, metrics.horizontalAdvance(path) * 2 / 3);
    const std::vector<testing::Word> shown = drawnIn(column::File, 1);
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_TRUE(shown[0].text.startsWith(path.left(4)) &&
                shown[0].text.endsWith(QChar(0x2026) + name))
        << shown[0].text.toStdString();

    // The heading's borders widen a column by a drag and fit it by a double click.
    QHeaderView& heading = *view().horizontalHeader();
    const auto border = [&heading](int col) {
        return QPoint(heading.sectionViewportPosition(col) + heading.sectionSize(col) - 1,
                      heading.height() / 2);
    };

    const int ratioWidth = view().columnWidth(column::Ratio);
    const QPoint from = border(column::Ratio);
    const QPoint to = from + QPoint(40, 0);
    QTest::mousePress(heading.viewport(), Qt::LeftButton, {}, from);
    QMouseEvent drag(QEvent::MouseMove, to, heading.viewport()->mapToGlobal(to), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(heading.viewport(), &drag);
    QTest::mouseRelease(heading.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(view().columnWidth(column::Ratio), ratioWidth + 40);

    // Fitted to its figures; the heading wraps over them rather than asking for one line.
    const int interval = view().fontMetrics().horizontalAdvance(cell(column::Interval, 2));
    ASSERT_GT(interval, view().columnWidth(column::Interval));
    QTest::mouseDClick(heading.viewport(), Qt::LeftButton, {}, border(column::Interval));
    const int fitted = view().columnWidth(column::Interval);
    EXPECT_GT(fitted, interval);
    EXPECT_LT(fitted, view().fontMetrics().horizontalAdvance(
                          QStringLiteral("95% C.I. for Ratio of Prop.'s")));

    // The widths are the grid's: the layout that follows a deletion keeps them.
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, centreOf(0, 2));
    QTest::keyClick(&view(), Qt::Key_Delete);
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(view().columnWidth(column::Ratio), ratioWidth + 40);
    EXPECT_EQ(view().columnWidth(column::Interval), fitted);
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
