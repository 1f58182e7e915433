#include "gateway/status_line_view.h"

#include "platform/desktop/text.h"
#include "widgets/colour.h"

namespace tyxo {

status_line::status_line(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setTextMargins(4, 1, 4, 1);
}

void status_line::show_control(const status_box& status) {
    if (shown_ == status) return;
    shown_ = status;
    setText(qt_text(status.Text));
    setCursorPosition(0);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, qt_colour(status.BackColor));
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
}

} // namespace tyxo

#include "moc_status_line_view.cpp"
