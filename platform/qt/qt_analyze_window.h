// Analyze on screen: the name box over a splitter with the grid above and the results pane
// below. It shows the window's models and hands the user's edits, focus moves and size
// changes to the documents::Analyze logic.
#pragma once

#include <QColor>
#include <QWidget>

#include "documents/analyze.h"

class QLabel;
class QLineEdit;
class QSplitter;
class QTextEdit;

namespace titron::qt {

class QtGridView;

class QtAnalyzeWindow : public QWidget {
  public:
    explicit QtAnalyzeWindow(documents::Analyze& analyze, QWidget* parent = nullptr);
    ~QtAnalyzeWindow() override;

    QtGridView* gridView() const { return m_grid; }
    QLineEdit* nameBox() const { return m_name; }
    QTextEdit* resultsPane() const { return m_results; }

    // Gives the grid the height that the settings hold, as the window's load does.
    void applyGridHeight();
    // Moves the keyboard focus to the control that the logic gave it last.
    void followFocus();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showName();
    void showResults();
    void layOutNameRow();
    void onGridFocusLeft();
    documents::Control controlOf(const QWidget* widget) const;

    documents::Analyze& m_analyze;
    QWidget* m_nameRow;
    QLabel* m_nameLabel;
    QLineEdit* m_name;
    QSplitter* m_splitter;
    QtGridView* m_grid;
    QTextEdit* m_results;
    QColor m_defaultTextColour;
};

} // namespace titron::qt
