// Compare on screen: the comparison grid filling the window. It shows the grid of the
// comparison::Compare logic, hands it the window's outer width, and the view hands it the
// user's moves and keys.
#pragma once

#include <QWidget>

#include "comparison/compare.h"

namespace titron::qt {

class QtGridView;

class QtCompareWindow : public QWidget {
  public:
    explicit QtCompareWindow(comparison::Compare& compare, QWidget* parent = nullptr);

    QtGridView* gridView() const { return m_grid; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    comparison::Compare& m_compare;
    QtGridView* m_grid;
};

} // namespace titron::qt
