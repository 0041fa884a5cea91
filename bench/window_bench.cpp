// The desktop program's own speed, on Qt's offscreen platform: start-up until the window is
// usable (the splash's 4 s of waits included), one typed key in a 1,500-row assay table
// until the cell shows it, and the Compare button over 1,000 analysis files until the
// window is painted.
#include <filesystem>
#include <string>

#include <QApplication>
#include <QTest>

#include <benchmark/benchmark.h>

#include "bench/bench_support.h"
#include "comparison/compare.h"
#include "documents/analyze.h"
#include "platform/qt/qt_analyze_window.h"
#include "platform/qt/qt_frame_windows.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_main_window.h"
#include "platform/qt/qt_platform.h"
#include "session/session.h"
#include "shell/main_frame.h"
#include "shell/startup.h"

namespace {

using namespace titron;

// The program as its main() puts it together.
struct Program {
    Program()
        : analyze(platform.services(), session), compare(platform.services(), session),
          window(session, analyze, compare), windows(window),
          frame(platform.services(), windows, session, analyze, compare, ".") {
        window.setMain(frame);
    }
    qt::QtPlatform platform;
    session::Session session;
    documents::Analyze analyze;
    comparison::Compare compare;
    qt::QtMainWindow window;
    qt::QtFrameWindows windows;
    shell::Main frame;
};

void StartupToUsableWindow(benchmark::State& state) {
    for (auto _ : state) {
        Program program;
        const auto outcome = shell::Startup(program.platform.services(), program.windows,
                                            program.session, program.analyze)
                                 .run();
        QCoreApplication::processEvents();
        if (outcome != shell::StartupOutcome::Ready) {
            state.SkipWithError("start-up did not finish");
        }
    }
}
BENCHMARK(StartupToUsableWindow)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

void TypeKeyIn1500RowGrid(benchmark::State& state) {
    Program program;
    program.analyze.load();
    entry::Grid& grid = program.analyze.grid();
    grid.setRowLimit(1500);
    for (int row = 1; row <= 1500; ++row) {
        grid.setCell(1, row, std::to_string(row * 10));
        grid.setCell(2, row, "3");
        grid.setCell(3, row, "24");
    }
    program.analyze.numberRows();
    program.window.resize(1024, 768);
    program.windows.showAnalyze();
    qt::QtGridView* view = program.window.analyzeWindow()->gridView();
    view->setFocus();
    grid.userMoveTo(4, 750);
    QCoreApplication::processEvents();
    if (!view->isVisible() || !view->viewport()->isVisible()) {
        state.SkipWithError("the grid is not on the screen");
        return;
    }
    int typed = 0;
    for (auto _ : state) {
        QTest::keyClick(view, Qt::Key_5);
        view->viewport()->repaint(); // until the cell is painted with the key
        if (++typed == 50) {
            state.PauseTiming();
            QTest::keyClick(view, Qt::Key_Escape);
            typed = 0;
            state.ResumeTiming();
        }
    }
    // The keys must really have reached the cell, or the timing means nothing.
    QTest::keyClick(view, Qt::Key_Escape);
    QTest::keyClick(view, Qt::Key_7);
    if (grid.cell(4, 750) != "7") {
        state.SkipWithError("typed keys did not reach the cell");
    }
}
BENCHMARK(TypeKeyIn1500RowGrid)->Unit(benchmark::kMicrosecond)->UseRealTime();

void CompareButtonOver1000Files(benchmark::State& state) {
    static bench::ScratchDirectory directory;
    static const std::vector<std::string> files = bench::makeReportFiles(directory.path(), 1000);
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    Program program;
    program.session.LastDirectory = directory.path().string();
    program.analyze.load();
    program.window.resize(1024, 768);
    program.windows.showAnalyze();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        program.frame.toolbarClick("Compare");
        program.window.repaint(); // the rows on the screen
        state.PauseTiming();
        if (program.compare.grid().dataRowCount() != 1000) {
            state.SkipWithError("the scan did not give a row for every file");
        }
        program.frame.toolbarClick("Compare");
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    std::filesystem::current_path(previous);
}
BENCHMARK(CompareButtonOver1000Files)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
