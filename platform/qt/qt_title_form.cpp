#include "platform/qt/qt_title_form.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/qt/qt_title_panel.h"

namespace titron::qt {

QtTitleForm::QtTitleForm()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    setObjectName(QStringLiteral("TitleForm"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(new QtTitlePanel(false, this));
    setFixedSize(sizeHint());
}

void QtTitleForm::showCentred() {
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect place = rect();
        place.moveCenter(screen->availableGeometry().center());
        move(place.topLeft());
    }
    show();
    raise();
    repaint();
}

} // namespace titron::qt
