// A file opened into a document in each of the reader's roads (empty grid, append, replace,
// cancel), then saved and opened again. The reader never rejects a file for what it holds:
// it loads or ends in its one loading failure box, and the program goes on either way.
#include <string>

#include "documents/analyze.h"
#include "fuzz/fuzz_bytes.h"
#include "fuzz/fuzz_platform.h"
#include "fuzz/fuzz_targets.h"
#include "session/session.h"

namespace titron::fuzz {

namespace {

using documents::LoadOutcome;
using platform::Answer;

constexpr const char* kEarlierTable = "Dose\tResponses\tTested\r\n1000\t2\t24\r\n3000\t6\t24\r\n";

void expectOrderlyEnd(FuzzPlatform& p, LoadOutcome outcome, std::size_t boxesBefore) {
    check(!p.scripted.pointerBusy(), "the pointer stays busy after a load");
    if (outcome == LoadOutcome::Failed) {
        const auto& boxes = p.scripted.boxes();
        check(boxes.size() > boxesBefore, "a failed load shows no box");
        check(boxes.back().request.title.rfind("Titron ERROR #", 0) == 0 &&
                  boxes.back().request.text == "An error occurred loading the data.",
              "a failed load ends in another box: " + boxes.back().request.title);
    }
}

} // namespace

void loadDocument(std::string_view bytes) {
    FuzzBytes in(bytes);
    const std::uint8_t mode = in.byte();
    FuzzDocument document;
    FuzzPlatform& p = document.p;
    documents::Analyze& analyze = document.analyze;

    // What the grid holds before: nothing, an earlier table, or the same file once already.
    const int before = mode % 3;
    const std::string file(in.rest());
    p.files.writeAll("/fuzz/input.tna", file);
    if (before == 1) {
        p.files.writeAll("/fuzz/earlier.txt", kEarlierTable);
        analyze.openDocument("/fuzz/earlier.txt");
    } else if (before == 2) {
        analyze.openDocument("/fuzz/input.tna");
    }
    // The answer to "Append this data to the existing data?" when it is asked.
    static constexpr Answer answers[] = {Answer::Yes, Answer::No, Answer::Cancel};
    const bool asked = analyze.grid().dataRowCount() > 0;
    p.scripted.queueAnswer(answers[(mode / 3) % 3]);

    const std::string nameBefore = analyze.nameBox().text();
    const std::size_t boxesBefore = p.scripted.boxes().size();
    const LoadOutcome outcome = analyze.openDocument("/fuzz/input.tna");
    expectOrderlyEnd(p, outcome, boxesBefore);
    if (outcome == LoadOutcome::Cancelled) {
        check(asked, "a load without the question was cancelled");
        check(analyze.nameBox().text() == nameBefore, "a cancelled load changed the name");
        return;
    }
    if (outcome == LoadOutcome::Loaded) {
        const std::string& pane = analyze.resultsPane().text();
        check(pane == documents::kEmptyResults || pane.rfind("Analysis Name: ", 0) == 0,
              "the pane holds neither its empty state nor the file's named text");
    }

    // Sometimes analyse what was loaded, so that the save writes the report form.
    if (mode & 0x10) {
        analyze.analyze();
        check(!p.scripted.pointerBusy(), "the pointer stays busy after an analysis");
    }
    // Save what the document now is, and open the saved file again.
    const std::string saved = analyze.composeFileText();
    if (saved.empty()) {
        check(analyze.grid().dataRowCount() < 1 && !analyze.reportPresent(),
              "a document with something in it saves as nothing");
        return;
    }
    check(analyze.saveDocument("/fuzz/saved.tna"), "a save to memory failed");
    check(p.files.readAll("/fuzz/saved.tna") == saved + "\r\n",
          "the saved file is not the composed text and one line end");
    p.scripted.queueAnswer(Answer::No);
    const std::size_t boxesBeforeReopen = p.scripted.boxes().size();
    expectOrderlyEnd(p, analyze.openDocument("/fuzz/saved.tna"), boxesBeforeReopen);
}

} // namespace titron::fuzz
