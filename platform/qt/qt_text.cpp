#include "platform/qt/qt_text.h"

#include <QByteArray>

namespace titron::qt {

QString fromLatin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString toDisplayText(std::string_view text) {
    QString shown = fromLatin1(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

std::string toLatin1(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace titron::qt
