#include "platform/qt/qt_about_help.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/qt/qt_title_panel.h"
#include "shell/title_content.h"

namespace titron::qt {

QtAboutHelp::QtAboutHelp(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("AboutHelp"));
    setWindowTitle(QString::fromLatin1(shell::kAboutTitle));
    auto* ok = new QPushButton(QString::fromLatin1(shell::kAboutOkCaption), this);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QtTitlePanel(true, this));
    layout->addLayout(buttons);
    setFixedSize(sizeHint());
}

} // namespace titron::qt
