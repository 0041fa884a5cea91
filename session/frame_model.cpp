#include "session/frame_model.h"

#include <algorithm>
#include <stdexcept>

namespace titron::session {

namespace {

MenuEntry menu(MenuItem item, std::string caption) {
    return MenuEntry{item, std::nullopt, std::move(caption), {}, Command::None};
}

MenuEntry entry(MenuItem parent, MenuItem item, std::string caption, Command command,
                std::string shortcut = {}) {
    return MenuEntry{item, parent, std::move(caption), std::move(shortcut), command};
}

MenuEntry separator(MenuItem parent, MenuItem item) {
    return MenuEntry{item, parent, "-", {}, Command::None};
}

ToolButton toolButton(std::string key, std::string tip, Command command) {
    return ToolButton{std::move(key), std::move(tip), command};
}

} // namespace

FrameModel::Tables& FrameModel::tables() const {
    if (m_tables) {
        return *m_tables;
    }
    using enum MenuItem;
    Tables& t = m_tables.emplace();
    // The entries stand in MenuItem's order, so an item is its own index.
    const auto item = [&t](MenuItem i) -> MenuEntry& {
        return t.items[static_cast<std::size_t>(i)];
    };
    const auto button = [&t](std::string_view key) -> ToolButton& {
        return *std::find_if(t.buttons.begin(), t.buttons.end(),
                             [key](const ToolButton& b) { return b.key == key; });
    };
    t.items = {
        menu(File, "&File"),
        entry(File, FileNew, "&New Analysis", Command::FileNew, "Ctrl+N"),
        entry(File, FileOpen, "&Open/Append Analysis", Command::FileOpen, "Ctrl+O"),
        separator(File, FileSeparator1),
        entry(File, FileSave, "&Save Analysis", Command::FileSave, "Ctrl+S"),
        entry(File, FileCopy, "&Copy Analysis to Clipboard", Command::FileCopy),
        entry(File, FilePrint, "&Print Analysis", Command::FilePrint, "Ctrl+P"),
        separator(File, FileSeparator2),
        entry(File, FilePrintSetup, "Print Se&tup", Command::FilePrintSetup),
        separator(File, FileSeparator3),
        entry(File, FileExit, "E&xit", Command::FileExit, "Ctrl+Q"),
        menu(Edit, "&Edit"),
        entry(Edit, EditInsert, "&Insert Row(s)", Command::EditInsert),
        entry(Edit, EditDelete, "&Delete Row(s)", Command::EditDelete),
        menu(Analyze, "&Analyze"),
        entry(Analyze, AnalyzeAnalyze, "&Analyze Data", Command::AnalyzeAnalyze, "Ctrl+A"),
        entry(Analyze, AnalyzeCompare, "&Compare Analyses", Command::AnalyzeCompare),
        entry(Analyze, AnalyzeChart, "C&hart Analysis Results", Command::AnalyzeChart),
        menu(Help, "&Help"),
        entry(Help, HelpContents, "&Help Contents", Command::HelpContents, "F1"),
        separator(Help, HelpSeparator),
        entry(Help, HelpAbout, "&About Titron...", Command::HelpAbout),
        menu(DropEdit, "dropedit"),
        entry(DropEdit, DropCut, "Cut", Command::DropCut),
        entry(DropEdit, DropCopy, "Copy", Command::DropCopy),
        entry(DropEdit, DropPaste, "Paste", Command::DropPaste),
        separator(DropEdit, DropSeparator1),
        entry(DropEdit, DropDelete, "Delete", Command::DropDelete),
        separator(DropEdit, DropSeparator2),
        entry(DropEdit, DropFill, "Fill", Command::DropFill),
    };
    item(EditInsert).enabled = false;
    item(EditDelete).enabled = false;
    // The chart was never built: both its entries stay hidden, though the table switches them.
    item(AnalyzeChart).visible = false;
    // The pop-up never shows on the menu bar.
    item(DropEdit).visible = false;

    t.buttons = {
        toolButton("New", "New", Command::FileNew),
        toolButton("Open", "Open/Append", Command::FileOpen),
        ToolButton{},
        toolButton("Save", "Save", Command::FileSave),
        toolButton("Copy", "Copy to Clipboard", Command::FileCopy),
        toolButton("Print", "Print", Command::FilePrint),
        ToolButton{},
        toolButton("Insert", "Insert Row(s)", Command::EditInsert),
        toolButton("Delete", "Delete Row(s)", Command::EditDelete),
        ToolButton{},
        toolButton("Analyze", "Analyze", Command::AnalyzeAnalyze),
        toolButton("Compare", "Compare Analyses", Command::CompareToggle),
        toolButton("Chart", "Chart Analysis", Command::AnalyzeChart),
        ToolButton{},
        toolButton("Help", "Help", Command::HelpContents),
    };
    button("Insert").enabled = false;
    button("Delete").enabled = false;
    button("Chart").visible = false;
    return t;
}

const MenuEntry& FrameModel::item(MenuItem item) const {
    return tables().items.at(static_cast<std::size_t>(item));
}

const ToolButton& FrameModel::button(std::string_view key) const {
    return const_cast<FrameModel*>(this)->buttonRef(key);
}

MenuEntry& FrameModel::itemRef(MenuItem item) {
    return tables().items.at(static_cast<std::size_t>(item));
}

ToolButton& FrameModel::buttonRef(std::string_view key) {
    std::vector<ToolButton>& buttons = tables().buttons;
    auto found = std::find_if(buttons.begin(), buttons.end(), [key](const ToolButton& b) {
        return !b.separator() && b.key == key;
    });
    if (found == buttons.end()) {
        throw std::logic_error("no toolbar button " + std::string(key));
    }
    return *found;
}

void FrameModel::setItemEnabled(MenuItem item, bool enabled) {
    itemRef(item).enabled = enabled;
    changed();
}

void FrameModel::setButtonEnabled(std::string_view key, bool enabled) {
    buttonRef(key).enabled = enabled;
    changed();
}

void FrameModel::setButtonPressed(std::string_view key, bool pressed) {
    buttonRef(key).pressed = pressed;
    changed();
}

void FrameModel::setAvailable(Command command, bool available) {
    for (MenuEntry& item : tables().items) {
        if (item.command == command) {
            item.available = available;
        }
    }
    for (ToolButton& b : tables().buttons) {
        if (b.command == command) {
            b.available = available;
        }
    }
    changed();
}

void FrameModel::gridFocusGained() {
    m_gridHasFocus = true;
    showRowCommands();
}

void FrameModel::gridFocusLost() {
    m_gridHasFocus = false;
    showRowCommands();
}

void FrameModel::compareActivated() {
    m_compareActive = true;
    switchForCompare(true);
}

void FrameModel::compareDeactivated() {
    m_compareActive = false;
    switchForCompare(false);
}

// The row commands follow the window in front, whatever order the focus events come in
// (a frame that isn't the active window hears of no focus move when Compare comes up).
// Insert works on the grid of Analyze: on while that grid has the focus and Compare isn't
// in front. Delete works on the window in front: Compare's rows, or that grid with the focus.
void FrameModel::showRowCommands() {
    const bool insert = m_gridHasFocus && !m_compareActive;
    const bool remove = m_gridHasFocus || m_compareActive;
    buttonRef("Insert").enabled = insert;
    itemRef(MenuItem::EditInsert).enabled = insert;
    buttonRef("Delete").enabled = remove;
    itemRef(MenuItem::EditDelete).enabled = remove;
    changed();
}

// While Compare is active, what it has no use for is off; it keeps its own Delete command
// (the row commands: showRowCommands).
// "Compare Analyses" comes back on with the rest: once the comparison is away, the menu
// should offer it again as the button does.
void FrameModel::switchForCompare(bool active) {
    for (std::string_view key : {"New", "Analyze", "Chart"}) {
        buttonRef(key).enabled = !active;
    }
    for (MenuItem item : {MenuItem::FileNew, MenuItem::AnalyzeAnalyze, MenuItem::AnalyzeChart,
                          MenuItem::AnalyzeCompare}) {
        itemRef(item).enabled = !active;
    }
    buttonRef("Compare").pressed = active;
    showRowCommands();
}

void FrameModel::openPopup(PopupRequest at) {
    m_popups.push_back(at);
    if (m_popupListener) {
        m_popupListener(at);
    }
}

void FrameModel::changed() {
    if (m_listener) {
        m_listener();
    }
}

} // namespace titron::session
