// The frame's menu bar, toolbar and the grid's pop-up menu as models: captions with access
// keys, shortcuts, and the enabled, hidden and pressed states that the windows switch. The
// view draws them and reports clicks; what a click does is the frame's (main_frame.h).
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace titron::shell {

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

struct MenuItem {
    std::string name;     // menFileNew, mnuDropfill, ...
    std::string parent;   // the menu it sits in; empty for a menu of the bar (or the pop-up)
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
    FrameModel();

    // The menu bar's items and the pop-up "mnuDropedit" with its items, in order.
    const std::vector<MenuItem>& menuItems() const { return m_items; }
    const std::vector<ToolButton>& toolButtons() const { return m_buttons; }
    // Lookups by name and by key, compared exactly; a missing name is a programming error.
    const MenuItem& item(std::string_view name) const;
    const ToolButton& button(std::string_view key) const;

    void setItemEnabled(std::string_view name, bool enabled);
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
    MenuItem& itemRef(std::string_view name);
    ToolButton& buttonRef(std::string_view key);
    void changed();

    std::vector<MenuItem> m_items;
    std::vector<ToolButton> m_buttons;
    std::vector<PopupRequest> m_popups;
    std::function<void()> m_listener;
    std::function<void(PopupRequest)> m_popupListener;
};

// The pop-up menu's own name; its items have it as their parent.
inline constexpr std::string_view kPopupMenu = "mnuDropedit";

} // namespace titron::shell
