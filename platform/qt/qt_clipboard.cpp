#include "platform/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "platform/qt/qt_text.h"

namespace titron::qt {

void QtClipboard::clear() {
    QGuiApplication::clipboard()->clear();
}

void QtClipboard::setText(const std::string& text) {
    QGuiApplication::clipboard()->setText(fromLatin1(text));
}

bool QtClipboard::hasText() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && data->hasText();
}

std::string QtClipboard::text() {
    return toLatin1(QGuiApplication::clipboard()->text());
}

} // namespace titron::qt
