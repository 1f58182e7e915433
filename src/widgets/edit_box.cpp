#include "widgets/edit_box.h"

#include "basics/ansi.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"

#include <QPointer>

#include <utility>

namespace tyxo {

edit_box::edit_box(QWidget* parent, const QString& name, std::function<void(std::string_view)> change)
    : line_box(parent), change_(std::move(change)) {
    setObjectName(name);
    connect(this, &QLineEdit::textEdited, this, &edit_box::pass_on);
}

void edit_box::pass_on(QString text) {
    text.remove('\r').remove('\n'); // pasted; they would be lines of their own in files and messages
    // While a tick waits for the controller the command waits too, and the core still has the old text.
    ++passed_on_;
    desktop::run_handler(desktop::source::operator_,
                         [box = QPointer<edit_box>(this), ansi = ansi_from_utf8(text.toStdString())] {
                             if (!box) return;
                             --box->passed_on_;
                             box->change_(ansi);
                         });
}

void edit_box::show_control(const TextBox& control) {
    show_control(control.Text);
    setEnabled(control.Enabled);
}

void edit_box::show_control(const std::string& text) {
    if (passed_on_ > 0) return;
    if (shown_ == text && !isModified()) return;
    shown_ = text;
    setModified(false);
    const QString next = qt_text(text);
    if (next == this->text()) return;
    const int cursor = cursorPosition();
    setText(next);
    setCursorPosition(hasFocus() ? cursor : 0); // the front of a text that is too long
}

} // namespace tyxo
