#include "widgets/line_box.h"

#include "platform/desktop/text.h"

#include <QEvent>

namespace tyxo {

bool line_box::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const bool cut_off = fontMetrics().horizontalAdvance(text()) > width() - borders;
        setToolTip(cut_off ? tool_tip(text()) : QString());
    }
    return QLineEdit::event(event);
}

} // namespace tyxo
