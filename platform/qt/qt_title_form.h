// TitleForm: the splash window, frameless and above every other window while the program
// starts.
#pragma once

#include <QWidget>

namespace titron::qt {

class QtTitleForm : public QWidget {
  public:
    QtTitleForm();
    // Shows the window in the middle of the screen and paints it at once.
    void showCentred();
};

} // namespace titron::qt
