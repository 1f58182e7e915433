#pragma once
// Plain control state onto Qt's own widgets; only what differs is touched.

#include "platform/controls.h"
#include "platform/desktop/colour.h"
#include "platform/desktop/text.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>

namespace tyxo {

inline void show_label(QLabel& label, const Label& control) {
    const QString text = qt_text(control.Caption);
    if (label.text() != text) {
        label.setText(text);
        const bool cut_off = !label.wordWrap() && label.sizeHint().width() > label.width();
        label.setToolTip(cut_off ? text : QString());
    }
    if (label.isVisibleTo(label.parentWidget()) != control.Visible) label.setVisible(control.Visible);
}

inline void show_button(QAbstractButton& button, const Command& control) {
    const QString text = qt_text(control.Caption);
    if (button.text() != text) button.setText(text);
    if (button.isVisibleTo(button.parentWidget()) != control.Visible) button.setVisible(control.Visible);
    button.setEnabled(control.Enabled);
}

inline void show_entry(QAction& entry, const Command& control) {
    entry.setText(qt_text(control.Caption));
    entry.setEnabled(control.Enabled);
}

inline void show_frame(QGroupBox& frame, const Frame& control) {
    // An ampersand in a location is a letter, no mnemonic.
    const QString title = qt_text(control.Caption).replace('&', "&&");
    if (frame.title() != title) frame.setTitle(title);
    if (frame.isVisibleTo(frame.parentWidget()) != control.Visible) frame.setVisible(control.Visible);
    frame.setEnabled(control.Enabled);
}

/// "LED_Alarm(0)": the name of an element of a control array.
[[nodiscard]] inline QString element(const char* array, int index) {
    return QString("%1(%2)").arg(array).arg(index);
}

} // namespace tyxo
