#pragma once
// A text box to read from: its text can be selected and copied, not changed.

#include "widgets/line_box.h"

#include <string>

namespace tyxo {

class read_only_box : public line_box {
  public:
    /// `spoken` is its accessible name. The box has room for so many digits, and takes more where there is
    /// more.
    read_only_box(QWidget* parent, const QString& name, const QString& spoken, int digits);

    /// Shows the front of the core's text.
    void show_control(const std::string& text);

    [[nodiscard]] QSize sizeHint() const override;
};

} // namespace tyxo
