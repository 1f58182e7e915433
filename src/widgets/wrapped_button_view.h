#pragma once
// A push button whose caption takes two lines where one is too narrow, and smaller letters where two are.

#include <QPushButton>

namespace tyxo {

class wrapped_button : public QPushButton {
    Q_OBJECT

  public:
    explicit wrapped_button(QWidget* parent) : QPushButton(parent) {}

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QFont fitting_font(const QSize& room) const;
};

} // namespace tyxo
