#include "widgets/read_only_box.h"

#include "platform/desktop/text.h"

#include <algorithm>

namespace tyxo {

read_only_box::read_only_box(QWidget* parent, const QString& name, const QString& spoken, int digits)
    : line_box(parent) {
    setObjectName(name);
    setAccessibleName(spoken);
    setReadOnly(true);
    const int width = fontMetrics().horizontalAdvance(QString(digits, '0')) + borders;
    setMinimumWidth(std::max(width, minimumSizeHint().width()));
    QPalette colours = palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Window)); // nothing to write on
    setPalette(colours);
}

QSize read_only_box::sizeHint() const {
    return {minimumWidth(), line_box::sizeHint().height()};
}

void read_only_box::show_control(const std::string& text) {
    const QString next = qt_text(text);
    if (next == this->text()) return;
    setText(next);
    setCursorPosition(0);
}

} // namespace tyxo
