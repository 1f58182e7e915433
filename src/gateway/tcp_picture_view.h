#pragma once
// What the window shows in place of the register boxes: the way from this computer to the controller.

#include <QWidget>

namespace tyxo {

class tcp_picture : public QWidget {
  public:
    explicit tcp_picture(QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override { return {480, 200}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tyxo
