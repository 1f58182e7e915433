#include "widgets/click_label_view.h"

#include "widgets/paint_view.h"

namespace tyxo {

click_label::click_label(QWidget* parent) : clickable(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void click_label::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    paint_focus_rim(painter, rect());
}

} // namespace tyxo

#include "moc_click_label_view.cpp"
