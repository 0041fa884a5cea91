// AboutHelp: the modal About box with the product's panel, the build and an OK button.
#pragma once

#include <QDialog>

namespace titron::qt {

class QtAboutHelp : public QDialog {
  public:
    explicit QtAboutHelp(QWidget* parent = nullptr);
};

} // namespace titron::qt
