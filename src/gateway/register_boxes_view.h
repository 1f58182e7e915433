#pragma once
// The 123 register boxes, ten in a row, with the registers' distances from the start register around them.

#include "widgets/state_view.h"

#include <QWidget>

namespace tyxo {

class register_boxes : public QWidget, public state_view {
  public:
    explicit register_boxes(QWidget* parent);
};

} // namespace tyxo
