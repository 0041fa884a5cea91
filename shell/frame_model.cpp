#include "shell/frame_model.h"

#include <algorithm>
#include <stdexcept>

namespace titron::shell {

namespace {

MenuItem menu(std::string name, std::string caption) {
    return MenuItem{std::move(name), {}, std::move(caption), {}, Command::None};
}

MenuItem entry(std::string parent, std::string name, std::string caption, Command command,
               std::string shortcut = {}) {
    return MenuItem{std::move(name), std::move(parent), std::move(caption), std::move(shortcut),
                    command};
}

MenuItem separator(std::string parent, std::string name) {
    return MenuItem{std::move(name), std::move(parent), "-", {}, Command::None};
}

ToolButton toolButton(std::string key, std::string tip, Command command) {
    return ToolButton{std::move(key), std::move(tip), command};
}

} // namespace

FrameModel::FrameModel() {
    m_items = {
        menu("menFile", "&File"),
        entry("menFile", "menFileNew", "&New Analysis", Command::FileNew, "Ctrl+N"),
        entry("menFile", "menFileOpen", "&Open/Append Analysis", Command::FileOpen, "Ctrl+O"),
        separator("menFile", "mend11"),
        entry("menFile", "menFileSave", "&Save Analysis", Command::FileSave, "Ctrl+S"),
        entry("menFile", "menFileCopy", "&Copy Analysis to Clipboard", Command::FileCopy),
        entry("menFile", "menFilePrint", "&Print Analysis", Command::FilePrint, "Ctrl+P"),
        separator("menFile", "mend12"),
        entry("menFile", "menFilePrintSetup", "Print Se&tup", Command::FilePrintSetup),
        separator("menFile", "mend13"),
        entry("menFile", "menFileExit", "E&xit", Command::FileExit, "Ctrl+Q"),
        menu("menEdit", "&Edit"),
        entry("menEdit", "menEditInsert", "&Insert Row(s)", Command::EditInsert),
        entry("menEdit", "menEditDelete", "&Delete Row(s)", Command::EditDelete),
        menu("menAnalyze", "&Analyze"),
        entry("menAnalyze", "menAnalyzeAnalyze", "&Analyze Data", Command::AnalyzeAnalyze,
              "Ctrl+A"),
        entry("menAnalyze", "menAnalyzeCompare", "&Compare Analyses", Command::AnalyzeCompare),
        entry("menAnalyze", "menAnalyzeChart", "C&hart Analysis Results", Command::AnalyzeChart),
        menu("menHelp", "&Help"),
        entry("menHelp", "menHelpContents", "&Help Contents", Command::HelpContents, "F1"),
        separator("menHelp", "mend5"),
        entry("menHelp", "menHelpAbout", "&About Titron...", Command::HelpAbout),
        menu(std::string(kPopupMenu), "dropedit"),
        entry(std::string(kPopupMenu), "mnuDropcut", "Cut", Command::DropCut),
        entry(std::string(kPopupMenu), "mnuDropcopy", "Copy", Command::DropCopy),
        entry(std::string(kPopupMenu), "mnuDroppaste", "Paste", Command::DropPaste),
        separator(std::string(kPopupMenu), "mnud6"),
        entry(std::string(kPopupMenu), "mnuDropdelete", "Delete", Command::DropDelete),
        separator(std::string(kPopupMenu), "mnud7"),
        entry(std::string(kPopupMenu), "mnuDropfill", "Fill", Command::DropFill),
    };
    itemRef("menEditInsert").enabled = false;
    itemRef("menEditDelete").enabled = false;
    // The chart was never built: both its entries stay hidden, though the table switches them.
    itemRef("menAnalyzeChart").visible = false;
    // The pop-up never shows on the menu bar.
    itemRef(kPopupMenu).visible = false;

    m_buttons = {
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
    buttonRef("Insert").enabled = false;
    buttonRef("Delete").enabled = false;
    buttonRef("Chart").visible = false;
}

const MenuItem& FrameModel::item(std::string_view name) const {
    return const_cast<FrameModel*>(this)->itemRef(name);
}

const ToolButton& FrameModel::button(std::string_view key) const {
    return const_cast<FrameModel*>(this)->buttonRef(key);
}

MenuItem& FrameModel::itemRef(std::string_view name) {
    auto found = std::find_if(m_items.begin(), m_items.end(),
                              [name](const MenuItem& item) { return item.name == name; });
    if (found == m_items.end()) {
        throw std::logic_error("no menu item " + std::string(name));
    }
    return *found;
}

ToolButton& FrameModel::buttonRef(std::string_view key) {
    auto found = std::find_if(m_buttons.begin(), m_buttons.end(), [key](const ToolButton& b) {
        return !b.separator() && b.key == key;
    });
    if (found == m_buttons.end()) {
        throw std::logic_error("no toolbar button " + std::string(key));
    }
    return *found;
}

void FrameModel::setItemEnabled(std::string_view name, bool enabled) {
    itemRef(name).enabled = enabled;
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
    for (MenuItem& item : m_items) {
        if (item.command == command) {
            item.available = available;
        }
    }
    for (ToolButton& b : m_buttons) {
        if (b.command == command) {
            b.available = available;
        }
    }
    changed();
}

void FrameModel::gridFocusGained() {
    for (std::string_view key : {"Insert", "Delete"}) {
        buttonRef(key).enabled = true;
    }
    itemRef("menEditInsert").enabled = true;
    itemRef("menEditDelete").enabled = true;
    changed();
}

void FrameModel::gridFocusLost() {
    for (std::string_view key : {"Insert", "Delete"}) {
        buttonRef(key).enabled = false;
    }
    itemRef("menEditInsert").enabled = false;
    itemRef("menEditDelete").enabled = false;
    changed();
}

void FrameModel::compareActivated() {
    for (std::string_view key : {"New", "Analyze", "Chart"}) {
        buttonRef(key).enabled = false;
    }
    for (std::string_view name :
         {"menFileNew", "menAnalyzeAnalyze", "menAnalyzeChart", "menAnalyzeCompare"}) {
        itemRef(name).enabled = false;
    }
    // Compare keeps its own Delete command.
    buttonRef("Delete").enabled = true;
    itemRef("menEditDelete").enabled = true;
    buttonRef("Compare").pressed = true;
    changed();
}

// "Compare Analyses" comes back on with the rest: once the comparison is away, the menu
// should offer it again as the button does.
void FrameModel::compareDeactivated() {
    for (std::string_view key : {"New", "Analyze", "Chart"}) {
        buttonRef(key).enabled = true;
    }
    for (std::string_view name :
         {"menFileNew", "menAnalyzeAnalyze", "menAnalyzeChart", "menAnalyzeCompare"}) {
        itemRef(name).enabled = true;
    }
    buttonRef("Delete").enabled = false;
    itemRef("menEditDelete").enabled = false;
    buttonRef("Compare").pressed = false;
    changed();
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

} // namespace titron::shell
