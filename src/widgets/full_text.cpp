#include "widgets/full_text.h"

#include "platform/desktop/text.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QPointer>
#include <QToolTip>

namespace tyxo {

namespace {

bool cut_off(const QLabel& label) {
    return !label.wordWrap() && label.sizeHint().width() > label.width();
}

/// Watches over all labels.
class label_tips : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return false;
        auto* const label = static_cast<QLabel*>(watched);
        if (!label->toolTip().isEmpty() || !cut_off(*label)) return false;
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tool_tip(label->text()), label);
        return true;
    }
};

} // namespace

void tell_full_text(QLabel& label) {
    static QPointer<label_tips> tips;
    if (!tips) tips = new label_tips(QCoreApplication::instance());
    label.installEventFilter(tips); // once for each label, however often it is installed
}

} // namespace tyxo
