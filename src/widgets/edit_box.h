#pragma once
// A text box whose text belongs to the core: typing is passed on, and what the core puts there is shown.

#include "controls/controls.h"
#include "widgets/line_box.h"

#include <functional>
#include <string>
#include <string_view>

namespace tyxo {

class edit_box : public line_box {
  public:
    /// `change` runs as a command of the operator with every edited text, in Windows-1252 and without line
    /// breaks.
    edit_box(QWidget* parent, const QString& name, std::function<void(std::string_view)> change);

    /// Shows the core's text if it is another than before. The cursor stays where it is while the box has the
    /// focus. Typing that the core has not taken yet is not undone.
    void show_control(const std::string& text);
    void show_control(const TextBox& control);

  private:
    void pass_on(QString text);

    std::function<void(std::string_view)> change_;
    std::string shown_;
    int passed_on_ = 0; // edits on their way to the core
};

} // namespace tyxo
