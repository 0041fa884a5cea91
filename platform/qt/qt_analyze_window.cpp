#include "platform/qt/qt_analyze_window.h"

#include <algorithm>

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QSplitter>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include "entry/key_codes.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/qt_twips.h"

namespace titron::qt {

namespace {

using documents::Control;

// The name row's places (twips): the label at the left margin, the box at 1200.
constexpr int kLabelLeft = 120;
constexpr int kNameLeft = 1200;
constexpr int kLabelGap = 60;
constexpr int kRowMarginPixels = 4;

// The character that a key press types, as the name's rule sees it: Enter as 13, a
// printable Latin-1 character as itself, anything else (shortcuts, arrows) as 0.
int typedCharacter(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        return entry::key::Enter;
    }
    if ((key.modifiers() & Qt::ControlModifier) != 0 || key.text().size() != 1) {
        return 0;
    }
    const char16_t code = key.text().at(0).unicode();
    return code >= 32 && code <= 255 ? code : 0;
}

} // namespace

QtAnalyzeWindow::QtAnalyzeWindow(documents::Analyze& analyze, QWidget* parent)
    : QWidget(parent), m_analyze(analyze) {
    setObjectName(QStringLiteral("Analyze"));

    m_nameRow = new QWidget(this);
    m_nameLabel = new QLabel(QStringLiteral("Analysis Name:"), m_nameRow);
    m_nameLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_name = new QLineEdit(m_nameRow);
    m_name->setObjectName(QStringLiteral("nameBox"));
    m_name->setToolTip(QStringLiteral("Analysis Name"));
    m_name->setMaxLength(documents::kNameTypedLimit);
    m_nameRow->setFixedHeight(m_name->sizeHint().height() + 2 * kRowMarginPixels);

    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setChildrenCollapsible(false);
    m_grid = new QtGridView(analyze.grid(), m_splitter);
    m_grid->setObjectName(QStringLiteral("grid"));
    m_results = new QTextEdit(m_splitter);
    m_results->setObjectName(QStringLiteral("resultsPane"));
    m_results->setReadOnly(true);
    m_results->setLineWrapMode(QTextEdit::NoWrap);
    m_results->setAcceptRichText(false);
    // Read-only still lets the user select and copy, as the pane always did.
    m_results->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const documents::FontSpec& paneFont = analyze.resultsPane().font();
    QFont font(fromLatin1(paneFont.name));
    font.setStyleHint(QFont::TypeWriter);
    font.setPointSizeF(paneFont.points);
    font.setBold(paneFont.bold);
    m_results->setFont(font);
    m_defaultTextColour = m_results->palette().color(QPalette::Text);
    m_splitter->addWidget(m_grid);
    m_splitter->addWidget(m_results);
    // The grid keeps its height when the window grows; the pane takes the rest.
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_nameRow);
    layout->addWidget(m_splitter, 1);

    connect(m_name, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_analyze.nameBox().setText(toLatin1(text)); });
    connect(m_grid, &QtGridView::focusEntered, this, [this] { m_analyze.setFocus(Control::Grid); });
    connect(m_grid, &QtGridView::focusLeft, this, [this] { onGridFocusLeft(); });
    m_name->installEventFilter(this);
    m_results->installEventFilter(this);

    analyze.nameBox().setListener([this] { showName(); });
    analyze.resultsPane().setListener([this] { showResults(); });
    analyze.setFocusListener([this] { followFocus(); });
    showName();
    showResults();
}

QtAnalyzeWindow::~QtAnalyzeWindow() {
    m_analyze.nameBox().setListener(nullptr);
    m_analyze.resultsPane().setListener(nullptr);
    m_analyze.setFocusListener(nullptr);
}

void QtAnalyzeWindow::applyGridHeight() {
    const int gridPixels = twipsToPixelsY(m_analyze.gridHeight(), *this);
    const int total = std::max(m_splitter->height(), gridPixels + 1);
    m_splitter->setSizes({gridPixels, total - gridPixels});
}

void QtAnalyzeWindow::followFocus() {
    switch (m_analyze.focus()) {
    case Control::AnalysisName:
        m_name->setFocus(Qt::OtherFocusReason);
        break;
    case Control::Grid:
        m_grid->setFocus(Qt::OtherFocusReason);
        break;
    case Control::Results:
        m_results->setFocus(Qt::OtherFocusReason);
        break;
    case Control::None:
        break;
    }
}

void QtAnalyzeWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The logic lays out for the window's outer width: the MDI frame's, when there is one.
    const QWidget* outer = qobject_cast<QMdiSubWindow*>(parentWidget());
    m_analyze.resize(pixelsToTwipsX(outer != nullptr ? outer->width() : width(), *this));
    layOutNameRow();
    m_grid->applyGridLayout();
}

bool QtAnalyzeWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        m_analyze.setFocus(controlOf(static_cast<QWidget*>(watched)));
    }
    if (watched == m_name && event->type() == QEvent::KeyPress) {
        const int character = typedCharacter(*static_cast<QKeyEvent*>(event));
        if (character != 0 && m_analyze.nameBoxKeyPress(character) == 0) {
            return true; // the name's rule dropped it
        }
    }
    return QWidget::eventFilter(watched, event);
}

void QtAnalyzeWindow::showName() {
    const QString shown = fromLatin1(m_analyze.nameBox().text());
    // The limit holds for typing only: a longer name from a file is shown whole.
    m_name->setMaxLength(std::max<int>(documents::kNameTypedLimit, shown.size()));
    if (m_name->text() != shown) {
        m_name->setText(shown);
    }
}

void QtAnalyzeWindow::showResults() {
    const documents::ResultsPane& pane = m_analyze.resultsPane();
    const documents::PaneLook& look = pane.look();

    QPalette palette = m_results->palette();
    const QColor colour = look.formatted
                              ? QColor(look.colour.red, look.colour.green, look.colour.blue)
                              : m_defaultTextColour;
    palette.setColor(QPalette::Text, colour);
    m_results->setPalette(palette);

    m_results->setPlainText(toDisplayText(pane.text()));
    // A text edit lays out each block with its block format's tab stops and ignores those
    // of the document's default option, so every block gets the stops: setPlainText has
    // just made the blocks afresh.
    if (!look.tabStopsTwips.empty()) {
        QList<QTextOption::Tab> stops;
        for (int twips : look.tabStopsTwips) {
            stops.append(QTextOption::Tab(twipsToPixelsX(twips, *m_results), QTextOption::LeftTab));
        }
        QTextBlockFormat withStops;
        withStops.setTabPositions(stops);
        QTextCursor whole(m_results->document());
        whole.select(QTextCursor::Document);
        whole.mergeBlockFormat(withStops);
    }
    QTextCursor caret = m_results->textCursor();
    const std::string before = pane.text().substr(0, static_cast<std::size_t>(pane.caret()));
    caret.setPosition(static_cast<int>(toDisplayText(before).size()));
    m_results->setTextCursor(caret);
    m_results->setVisible(pane.visible());
}

void QtAnalyzeWindow::layOutNameRow() {
    const int labelLeft = twipsToPixelsX(kLabelLeft, *this);
    const int labelWidth = m_nameLabel->sizeHint().width();
    // The box starts at its place unless the label, in this desktop's font, reaches past
    // it; its right edge stays where the logic puts it either way.
    const int boxRight = twipsToPixelsX(kNameLeft + m_analyze.nameWidth(), *this);
    const int boxLeft = std::max(twipsToPixelsX(kNameLeft, *this),
                                 labelLeft + labelWidth + twipsToPixelsX(kLabelGap, *this));
    const int boxHeight = m_name->sizeHint().height();
    m_nameLabel->setGeometry(labelLeft, kRowMarginPixels, labelWidth, boxHeight);
    m_name->setGeometry(boxLeft, kRowMarginPixels, std::max(boxRight - boxLeft, 0), boxHeight);
}

// A move of the focus to another of the window's controls is that control's; anything
// else (another window, a box, a menu) leaves the grid's focus as the logic knows it.
void QtAnalyzeWindow::onGridFocusLeft() {
    const QWidget* next = QApplication::focusWidget();
    if (next == nullptr || next->window() != window()) {
        return;
    }
    m_analyze.setFocus(controlOf(next));
}

Control QtAnalyzeWindow::controlOf(const QWidget* widget) const {
    if (widget == m_name) {
        return Control::AnalysisName;
    }
    if (widget == m_results) {
        return Control::Results;
    }
    if (widget == m_grid || m_grid->isAncestorOf(widget)) {
        return Control::Grid;
    }
    return Control::None;
}

} // namespace titron::qt
