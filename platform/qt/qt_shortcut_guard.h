// Lets the frame's shortcuts win over a focused widget's own use of the same keys:
// QLineEdit and QTextEdit claim Ctrl+A as "select all" by accepting the ShortcutOverride
// event. Installed as an event filter, this refuses that claim for the frame's keys.
#pragma once

#include <utility>

#include <QKeySequence>
#include <QList>
#include <QObject>

namespace titron::qt {

class QtShortcutGuard : public QObject {
  public:
    explicit QtShortcutGuard(QObject* parent = nullptr);

    void setShortcuts(QList<QKeySequence> shortcuts) { m_shortcuts = std::move(shortcuts); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QList<QKeySequence> m_shortcuts;
};

} // namespace titron::qt
