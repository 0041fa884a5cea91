// The frame's menu bar, toolbar and the grid's pop-up menu as models: captions with access
// keys, shortcuts, and the enabled, hidden and pressed states that the windows switch. The
// view draws them and reports clicks; what a click does is the frame's (shell/main_frame.h).
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace titron::session {

// What a menu item or toolbar button does. A button does exactly what its menu item does.
enum class Command {
    None,
    FileNew,
    FileOpen,
    FileSave,
    FileCopy,
    FilePrint,
    FilePrintSetup,
    FileExit,
    EditInsert,
    EditDelete,
    AnalyzeAnalyze,
    AnalyzeCompare,
    AnalyzeChart,
    HelpContents,
    HelpAbout,
    CompareToggle, // the "Compare" button
    DropCut,
    DropCopy,
    DropPaste,
    DropDelete,
    DropFill,
};

// Every item of the menu bar and of the grid's pop-up menu (DropEdit), in the order shown.
enum class MenuItem {
    File,
    FileNew,
    FileOpen,
    FileSeparator1,
    FileSave,
    FileCopy,
    FilePrint,
    FileSeparator2,
    FilePrintSetup,
    FileSeparator3,
    FileExit,
    Edit,
    EditInsert,
    EditDelete,
    Analyze,
    AnalyzeAnalyze,
    AnalyzeCompare,
    AnalyzeChart,
    Help,
    HelpContents,
    HelpSeparator,
    HelpAbout,
    DropEdit,
    DropCut,
    DropCopy,
    DropPaste,
    DropSeparator1,
    DropDelete,
    DropSeparator2,
    DropFill,
};

struct MenuEntry {
    MenuItem item = MenuItem::File;
    // The menu it sits in; none for a menu of the bar (or the pop-up).
    std::optional<MenuItem> parent;
    std::string caption;  // "&" marks the access key; "-" is a separator
    std::string shortcut; // "Ctrl+N", "F1"; empty for none
    Command command = Command::None;
    bool enabled = true;
    bool visible = true;
    // False while the command's behaviour is not part of the program: shown, never enabled.
    bool available = true;

    bool separator() const { return caption == "-"; }
    bool usable() const { return enabled && available; }
};

struct ToolButton {
    std::string key; // empty for a separator
    std::string toolTip;
    Command command = Command::None;
    bool enabled = true;
    bool visible = true;
    bool pressed = false;
    bool available = true;

    bool separator() const { return key.empty(); }
    bool usable() const { return enabled && available; }
};

// A request to open the grid's pop-up menu at a place in the window (pixels of the view).
struct PopupRequest {
    int x = 0;
    int y = 0;
};

class FrameModel {
  public:
    // The menus and buttons are built when first asked for, so that a program that never
    // shows the frame (the command line) doesn't pay for them.
    FrameModel() = default;

    // The menu bar's items and the pop-up DropEdit with its items, in MenuItem's order.
    const std::vector<MenuEntry>& menuItems() const { return tables().items; }
    const std::vector<ToolButton>& toolButtons() const { return tables().buttons; }
    // Lookups by item and by key (compared exactly; a missing key is a programming error).
    const MenuEntry& item(MenuItem item) const;
    const ToolButton& button(std::string_view key) const;

    void setItemEnabled(MenuItem item, bool enabled);
    void setButtonEnabled(std::string_view key, bool enabled);
    void setButtonPressed(std::string_view key, bool pressed);
    // Marks a command's items and buttons as (not) part of the program.
    void setAvailable(Command command, bool available);

    // The switches of the enabling table.
    void gridFocusGained();
    void gridFocusLost();
    void compareActivated();
    void compareDeactivated();

    // Opens the pop-up menu (the view shows it and reports the chosen item).
    void openPopup(PopupRequest at);
    const std::vector<PopupRequest>& popupsOpened() const { return m_popups; }

    // The view's listeners: any state change; a pop-up to show.
    void setListener(std::function<void()> listener) { m_listener = std::move(listener); }
    void setPopupListener(std::function<void(PopupRequest)> listener) {
        m_popupListener = std::move(listener);
    }

  private:
    struct Tables {
        std::vector<MenuEntry> items;
        std::vector<ToolButton> buttons;
    };
    // The tables as a new frame has them, built on first use.
    Tables& tables() const;
    MenuEntry& itemRef(MenuItem item);
    ToolButton& buttonRef(std::string_view key);
    void showRowCommands();
    void switchForCompare(bool active);
    void changed();

    mutable std::optional<Tables> m_tables;
    // What the row commands follow: the grid of Analyze has the focus; Compare is in front.
    bool m_gridHasFocus = false;
    bool m_compareActive = false;
    std::vector<PopupRequest> m_popups;
    std::function<void()> m_listener;
    std::function<void(PopupRequest)> m_popupListener;
};

} // namespace titron::session
