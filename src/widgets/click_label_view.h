#pragma once
// A label that an operator can click.

#include "widgets/clickable.h"
#include "widgets/spoken.h"

#include <QLabel>

namespace tyxo {

class click_label : public clickable<QLabel>, public spoken_control {
    Q_OBJECT

  public:
    explicit click_label(QWidget* parent);

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Button; }

  signals:
    void clicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void click() override { emit clicked(); }
};

} // namespace tyxo
