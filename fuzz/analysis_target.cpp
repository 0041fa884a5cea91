// A whole analysis on cell texts that reach the grid as the user can put them there: set
// from a file, typed key by key through the key filter, pasted over the grid, or written
// whole by the cell editor. Whatever the cells hold, the analysis ends in a report or one
// of its boxes, the pointer comes back, and the report goes out to clipboard and printer.
#include <string>
#include <vector>

#include "documents/analyze.h"
#include "fuzz/fuzz_bytes.h"
#include "fuzz/fuzz_platform.h"
#include "fuzz/fuzz_targets.h"
#include "session/session.h"

namespace titron::fuzz {

namespace {

using documents::AnalysisRun;

enum class Entry { Set, Typed, Pasted, Edited };

// The rows of the table: lines of Tab-separated cells for Dose, Responses, Tested and
// Comments.
std::vector<std::vector<std::string>> rowsOf(std::string_view table) {
    std::vector<std::vector<std::string>> rows;
    FuzzBytes lines(table);
    while (!lines.empty()) {
        FuzzBytes cells(lines.textUpTo('\n'));
        std::vector<std::string> row;
        while (!cells.empty() && row.size() < 4) {
            row.emplace_back(cells.textUpTo('\t'));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void enter(documents::Analyze& analyze, Entry entry, std::string_view table) {
    entry::Grid& grid = analyze.grid();
    const auto rows = rowsOf(table);
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (std::size_t c = 0; c < rows[r].size(); ++c) {
            const int col = static_cast<int>(c) + 1;
            const int row = static_cast<int>(r) + 1;
            const std::string& text = rows[r][c];
            if (entry == Entry::Set) {
                if (row > grid.rowLimit()) {
                    return; // a file makes room for its rows; cells beyond the grid are not set
                }
                grid.setCell(col, row, text);
                continue;
            }
            grid.userMoveTo(col, row);
            if (entry == Entry::Typed) {
                for (const char ch : text) {
                    grid.userKeyPress(static_cast<unsigned char>(ch));
                }
            } else {
                grid.userEditText(text);
            }
            grid.userCommitEdit();
        }
    }
}

} // namespace

void analysisOfCells(std::string_view bytes) {
    FuzzBytes in(bytes);
    const std::uint8_t mode = in.byte();
    FuzzDocument document;
    FuzzPlatform& p = document.p;
    documents::Analyze& analyze = document.analyze;

    if (mode & 4) {
        // The first line is pasted into the name box, as the user can.
        analyze.setFocus(documents::Control::AnalysisName);
        analyze.nameBox().setText(in.textUpTo('\n'));
        analyze.setFocus(documents::Control::Grid);
    }
    const auto entry = static_cast<Entry>(mode & 3);
    if (entry == Entry::Pasted) {
        p.scripted.setText(std::string(in.rest()));
        analyze.setFocus(documents::Control::Grid);
        analyze.grid().userSelect({1, 1, 4, 1});
        analyze.dropPaste();
    } else {
        enter(analyze, entry, in.rest());
    }
    // Answers to "more passes?": none (the estimate stops there), or further passes.
    static constexpr const char* passes[] = {"", "20", "1000", "x"};
    p.scripted.queueInput(passes[(mode >> 3) % 4]);

    const std::size_t boxesBefore = p.scripted.boxes().size();
    const AnalysisRun run = analyze.runAnalysis();
    check(!p.scripted.pointerBusy(), "the pointer stays busy after an analysis");
    const std::string& pane = analyze.resultsPane().text();
    if (run.ending == AnalysisRun::Ending::Report) {
        check(pane.rfind("Analysis Name: ", 0) == 0 && analyze.reportPresent(),
              "an analysis that ended in a report left no report in the pane");
    } else if (run.ending == AnalysisRun::Ending::Box) {
        check(p.scripted.boxes().size() > boxesBefore,
              "an analysis ended in a box it never showed");
    }

    p.scripted.queuePrinterChoice(true);
    analyze.copyFile();
    analyze.printFile();
    check(!p.scripted.pointerBusy(), "the pointer stays busy after copy and print");
}

} // namespace titron::fuzz
