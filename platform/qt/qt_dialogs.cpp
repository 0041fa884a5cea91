#include "platform/qt/qt_dialogs.h"

#include <vector>

#include <QApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include "platform/qt/qt_text.h"

namespace titron::qt {

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

struct ButtonKind {
    QMessageBox::StandardButton qt;
    Answer answer;
};

// The buttons of each set, left to right, as the program numbers them.
std::vector<ButtonKind> buttonsOf(Buttons set) {
    switch (set) {
    case Buttons::OkCancel:
        return {{QMessageBox::Ok, Answer::Ok}, {QMessageBox::Cancel, Answer::Cancel}};
    case Buttons::AbortRetryIgnore:
        return {{QMessageBox::Abort, Answer::Abort},
                {QMessageBox::Retry, Answer::Retry},
                {QMessageBox::Ignore, Answer::Ignore}};
    case Buttons::YesNoCancel:
        return {{QMessageBox::Yes, Answer::Yes},
                {QMessageBox::No, Answer::No},
                {QMessageBox::Cancel, Answer::Cancel}};
    case Buttons::YesNo:
        return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No}};
    case Buttons::RetryCancel:
        return {{QMessageBox::Retry, Answer::Retry}, {QMessageBox::Cancel, Answer::Cancel}};
    case Buttons::Ok:
        break;
    }
    return {{QMessageBox::Ok, Answer::Ok}};
}

QMessageBox::Icon iconOf(Icon icon) {
    switch (icon) {
    case Icon::Stop:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// A desktop message box can be dismissed with Escape or its close box only when it has a
// Cancel button or is a lone OK; Qt would otherwise pick a button such as Abort or No for
// Escape, and the caller would take an answer the user never gave.
class QtEscapeGuard : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Close) {
            event->ignore();
            return true;
        }
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

bool dismissable(Buttons set) {
    return set == Buttons::Ok || set == Buttons::OkCancel || set == Buttons::YesNoCancel ||
           set == Buttons::RetryCancel;
}

} // namespace

platform::Answer QtDialogs::messageBox(const platform::MessageBoxRequest& request) {
    QMessageBox box(iconOf(request.icon), fromLatin1(request.title), toDisplayText(request.text),
                    QMessageBox::NoButton, QApplication::activeWindow());
    const std::vector<ButtonKind> kinds = buttonsOf(request.buttons);
    std::vector<QPushButton*> buttons;
    for (const ButtonKind& kind : kinds) {
        buttons.push_back(box.addButton(kind.qt));
    }
    // A default beyond the set falls back to the first button, as on the desktop.
    const std::size_t chosen = static_cast<std::size_t>(request.defaultButton) - 1;
    box.setDefaultButton(chosen < buttons.size() ? buttons[chosen] : buttons.front());
    QtEscapeGuard guard;
    if (!dismissable(request.buttons)) {
        box.installEventFilter(&guard);
    }
    box.exec();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (box.clickedButton() == buttons[i]) {
            return kinds[i].answer;
        }
    }
    // Only a dismissable box can end without a click: that is its Cancel (or lone OK).
    return kinds.back().answer;
}

std::string QtDialogs::inputBox(const platform::InputBoxRequest& request) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(fromLatin1(request.title));
    dialog.setLabelText(toDisplayText(request.prompt));
    dialog.setTextValue(fromLatin1(request.defaultEntry));
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    return toLatin1(dialog.textValue());
}

} // namespace titron::qt
