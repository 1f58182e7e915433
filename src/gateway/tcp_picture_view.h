#pragma once
// What the window shows in place of the register boxes: the way from this computer to the controller.

#include "widgets/spoken.h"

#include <QWidget>

namespace tyxo {

class tcp_picture : public QWidget, public spoken_control {
  public:
    explicit tcp_picture(QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override { return {480, 200}; }
    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Graphic; }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tyxo
