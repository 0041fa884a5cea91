// The product's panel as the splash window and the About box show it: a picture, the
// name with its marks, the subtitle, the version (and in About the build), and the
// disclaimer on a panel of its own.
#pragma once

#include <QWidget>

namespace titron::qt {

class QtTitlePanel : public QWidget {
  public:
    explicit QtTitlePanel(bool showBuild, QWidget* parent = nullptr);
};

// The product picture: a well plate whose wells fill less and less along the dilutions.
class QtProductPicture : public QWidget {
  public:
    explicit QtProductPicture(QWidget* parent = nullptr);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace titron::qt
