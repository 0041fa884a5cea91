// The logic of the Compare window: saved analyses side by side, each tested against the
// comparison row, which is the row under the cursor. Entering the window reads every
// analysis file of the current directory afresh; leaving it throws the rows away. A
// comparison is no document: no changed flag, no question, nothing read back.
#pragma once

#include <string>
#include <vector>

#include "entry/grid.h"
#include "platform/common_dialog.h"
#include "platform/platform.h"
#include "session/session.h"

namespace titron::comparison {

// Full: the grid already holds as many rows as it can (Grid::kMaxRowLimit).
enum class AddOutcome { Added, NoResults, Unreadable, Full };

// The frame's caption while the window is active.
inline constexpr const char* kCompareCaption = "Titron - Comparisons of the Ratio of Proportions";

class Compare {
  public:
    Compare(platform::Platform& platform, session::Session& session);
    Compare(const Compare&) = delete;
    Compare& operator=(const Compare&) = delete;

    entry::Grid& grid() { return m_grid; }
    const entry::Grid& grid() const { return m_grid; }
    platform::CommonDialog& commonDialog() { return m_dialog; }

    // Shown (entering: the scan) and hidden (leaving: the rows go). Routed commands of the
    // frame come here while it is visible.
    void show();
    void hide();
    bool visible() const { return m_visible; }

    // The row against which the others are tested: the active cell's row, 0 with no rows.
    int comparisonRow() const;

    // The commands of the frame while the window is visible.
    void editDelete();
    void copyFile();
    void openFile();
    void printFile();
    void saveFile();

    // What openFile does once its dialog has given the path: the file's row at the end,
    // its file cell the path as given; the comparison row stays unless this is the first.
    AddOutcome addFile(const std::string& path);
    // The same for several files, in order, with the tests made once at the end: every row
    // comes out as with one addFile after the other, since the tests are made afresh.
    std::vector<AddOutcome> addFiles(const std::vector<std::string>& paths);
    // The comparison without rows, as entering an empty directory leaves it.
    void beginEmpty();
    // Makes row the comparison row, as moving the cursor onto it does.
    void chooseComparisonRow(int row);
    // What saveFile does once its dialog has given the path: the report and one line
    // end. False when the file could not be written, with the system's reason in failure.
    bool writeComparison(const std::string& path, std::string* failure = nullptr);

    // Lays the columns out for the window's outer width W (twips); 3000 or less keeps them.
    void resize(int outerWidth);
    // Whether a column's text is centred (files and names stand at the left).
    static bool centred(int col);

  private:
    // Sets up the grid once, when the window is made: headings, row heights, fixed text.
    void load();
    void activate();
    void deactivate();
    void prepareGrid();
    void scan();
    // Writes a saved analysis into row, from a file's text; false for a file without results.
    bool writeRow(int row, const std::string& fileCell, const std::string& text);
    AddOutcome appendRow(const std::string& path);
    void colourRow(int row, entry::Colour colour);
    void makeComparisonRow(int row);
    void deleteRows(int first, int last);
    void onLeavingCell(int row, int newRow);
    void onKeyDown(int keyCode);

    platform::Platform& m_platform;
    session::Session& m_session;
    entry::Grid m_grid;
    platform::CommonDialog m_dialog;
    std::string m_savedCaption;
    bool m_visible = false;
};

} // namespace titron::comparison
