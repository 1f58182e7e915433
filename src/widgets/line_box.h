#pragma once
// A box with one line of text. When the text is too long for it, a tool tip has all of it.

#include <QLineEdit>

namespace tyxo {

class line_box : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    static constexpr int borders = 14; ///< px, of both sides together

    bool event(QEvent* event) override;
};

} // namespace tyxo
