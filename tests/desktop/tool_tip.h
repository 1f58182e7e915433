#pragma once
// The tool tip of a control, asked for as a resting mouse does.

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace tyxo {

/// What the tip says; nothing if none comes.
inline QString tip_of(QWidget* widget) {
    QToolTip::hideText();
    if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); })) qFatal("a tool tip stays");
    QHelpEvent rest(QEvent::ToolTip, QPoint(5, 5), widget->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(widget, &rest);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

} // namespace tyxo
