#include "platform/qt/qt_title_panel.h"

#include <QFont>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "shell/title_content.h"

namespace titron::qt {

namespace {

constexpr const char* kSerif = "Times New Roman";
constexpr const char* kSans = "Arial";
// Sizes of the small texts beside the name, in points.
constexpr double kMarkPoints = 10.0;
constexpr double kForPoints = 16.0;
constexpr double kVersionPoints = 9.0;
// The grey of the panels and the blue of the filled wells.
const QColor kPanelGrey(192, 192, 192);
const QColor kWellBlue(0, 0, 128);

QFont makeFont(const char* family, double points, QFont::StyleHint hint, bool bold = false) {
    QFont f(QString::fromLatin1(family));
    f.setStyleHint(hint);
    f.setPointSizeF(points);
    f.setBold(bold);
    return f;
}

QLabel* label(const QString& text, const QFont& font, QWidget* parent,
              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter) {
    auto* l = new QLabel(text, parent);
    l->setFont(font);
    l->setAlignment(alignment);
    return l;
}

QFrame* greyPanel(QWidget* parent) {
    auto* panel = new QFrame(parent);
    panel->setFrameShape(QFrame::Panel);
    panel->setFrameShadow(QFrame::Raised);
    panel->setLineWidth(2);
    QPalette palette = panel->palette();
    palette.setColor(QPalette::Window, kPanelGrey);
    palette.setColor(QPalette::WindowText, Qt::black);
    panel->setPalette(palette);
    panel->setAutoFillBackground(true);
    return panel;
}

} // namespace

QtTitlePanel::QtTitlePanel(bool showBuild, QWidget* parent) : QWidget(parent) {
    const QFont serifMark = makeFont(kSerif, kMarkPoints, QFont::Serif);

    auto* titlePanel = greyPanel(this);
    auto* nameRow = new QHBoxLayout;
    nameRow->setSpacing(0);
    nameRow->addWidget(label(QString::fromLatin1(shell::kTitleName),
                             makeFont(kSerif, shell::kTitleNamePoints, QFont::Serif, true),
                             titlePanel));
    nameRow->addWidget(label(QString::fromLatin1(shell::kTitleNameMark), serifMark, titlePanel,
                             Qt::AlignLeft | Qt::AlignTop));
    nameRow->addStretch();

    auto* forRow = new QHBoxLayout;
    forRow->setSpacing(0);
    const QFont serifFor = makeFont(kSerif, kForPoints, QFont::Serif, true);
    forRow->addWidget(
        label(QString::fromLatin1(shell::kTitleFor) + QLatin1Char(' '), serifFor, titlePanel));
    forRow->addWidget(label(QString::fromLatin1(shell::kTitleWindows), serifFor, titlePanel));
    const char32_t sign[] = {shell::kTradeMarkSign};
    forRow->addWidget(label(QString::fromUcs4(sign, 1),
                            makeFont(kSans, kMarkPoints, QFont::SansSerif), titlePanel,
                            Qt::AlignLeft | Qt::AlignTop));
    forRow->addStretch();

    QString version = QString::fromLatin1(shell::kTitleVersion);
    if (showBuild) {
        version += QStringLiteral("     ") + QString::fromLatin1(shell::kAboutBuild);
    }

    auto* texts = new QVBoxLayout;
    texts->addLayout(nameRow);
    texts->addLayout(forRow);
    texts->addSpacing(12);
    texts->addWidget(label(QString::fromLatin1(shell::kTitleSubtitle),
                           makeFont(kSans, shell::kTitleSubtitlePoints, QFont::SansSerif, true),
                           titlePanel));
    texts->addSpacing(8);
    texts->addWidget(
        label(version, makeFont(kSans, kVersionPoints, QFont::SansSerif, true), titlePanel));
    texts->addStretch();

    auto* titleLayout = new QHBoxLayout(titlePanel);
    titleLayout->setContentsMargins(16, 16, 24, 16);
    titleLayout->setSpacing(20);
    titleLayout->addWidget(new QtProductPicture(titlePanel), 0, Qt::AlignTop);
    titleLayout->addLayout(texts, 1);

    auto* disclaimerPanel = greyPanel(this);
    auto* disclaimer = label(QString::fromLatin1(shell::kDisclaimer),
                             makeFont(kSans, shell::kDisclaimerPoints, QFont::SansSerif),
                             disclaimerPanel, Qt::AlignLeft | Qt::AlignTop);
    disclaimer->setWordWrap(true);
    auto* disclaimerLayout = new QVBoxLayout(disclaimerPanel);
    disclaimerLayout->setContentsMargins(10, 8, 10, 8);
    disclaimerLayout->addWidget(disclaimer);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(titlePanel);
    layout->addWidget(disclaimerPanel);
}

QtProductPicture::QtProductPicture(QWidget* parent) : QWidget(parent) {
    setFixedSize(sizeHint());
}

QSize QtProductPicture::sizeHint() const {
    return {150, 120};
}

// Six dilutions left to right, four replicate wells each: the wells that grew are filled,
// fewer of them as the cells are diluted out, which is what the program counts.
void QtProductPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const QRectF plate(4, 14, 142, 100);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(QColor(236, 236, 236));
    painter.drawRoundedRect(plate, 8, 8);

    constexpr int kColumns = 6;
    constexpr int kRows = 4;
    constexpr int kGrown[kColumns] = {4, 4, 3, 2, 1, 0};
    const double pitch = 21.0;
    const double radius = 8.0;
    for (int c = 0; c < kColumns; ++c) {
        for (int r = 0; r < kRows; ++r) {
            const QPointF centre(plate.left() + 18 + c * pitch, plate.top() + 20 + r * pitch);
            painter.setPen(QPen(Qt::darkGray, 1));
            painter.setBrush(r < kGrown[c] ? kWellBlue : QColor(Qt::white));
            painter.drawEllipse(centre, radius, radius);
        }
    }

    // A pipette tip over the first column.
    QPainterPath tip;
    tip.moveTo(16, 0);
    tip.lineTo(28, 0);
    tip.lineTo(23, 24);
    tip.lineTo(21, 24);
    tip.closeSubpath();
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(QColor(250, 250, 210));
    painter.drawPath(tip);
}

} // namespace titron::qt
