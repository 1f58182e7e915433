#pragma once
// The 123 register boxes, ten in a row, with the registers' distances from the start register around them.

#include "widgets/edit_box.h"

#include <QWidget>

#include <vector>

namespace tyxo {

class register_boxes : public QWidget {
  public:
    explicit register_boxes(QWidget* parent);

    /// Shows what the boxes of the core hold.
    void show_state();

  private:
    std::vector<edit_box*> Text4_;
};

} // namespace tyxo
