#include "platform/qt/qt_compare_window.h"

#include <QMdiSubWindow>
#include <QVBoxLayout>

#include "comparison/compare_rows.h"
#include "platform/qt/qt_grid_view.h"
#include "platform/qt/qt_twips.h"

namespace titron::qt {

QtCompareWindow::QtCompareWindow(comparison::Compare& compare, QWidget* parent)
    : QWidget(parent), m_compare(compare) {
    setObjectName(QStringLiteral("Compare"));
    m_grid = new QtGridView(compare.grid(), this);
    m_grid->setObjectName(QStringLiteral("grid"));
    m_grid->setCentredColumns(&comparison::Compare::centred);
    m_grid->setResizableColumns();
    m_grid->setPathColumn(comparison::column::File);
    // The table is read on white, whatever the desktop's colours.
    QPalette palette = m_grid->palette();
    palette.setColor(QPalette::Base, Qt::white);
    m_grid->setPalette(palette);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid);
}

void QtCompareWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The logic lays out for the window's outer width: the MDI frame's, when there is one.
    const QWidget* outer = qobject_cast<QMdiSubWindow*>(parentWidget());
    m_compare.resize(pixelsToTwipsX(outer != nullptr ? outer->width() : width(), *this));
    m_grid->applyGridLayout();
}

} // namespace titron::qt
