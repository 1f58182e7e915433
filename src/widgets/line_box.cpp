#include "widgets/line_box.h"

#include "platform/desktop/text.h"

#include <QHelpEvent>
#include <QToolTip>

namespace tyxo {

bool line_box::event(QEvent* event) {
    const auto cut_off = [this] { return fontMetrics().horizontalAdvance(text()) > width() - borders; };
    if (event->type() != QEvent::ToolTip || !cut_off()) return QLineEdit::event(event);
    // It is no tool tip of the box's own: with one, the text would be heard twice.
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tool_tip(text()), this);
    return true;
}

} // namespace tyxo
