#pragma once
// `show_on(widget, state)`: plain state of the core onto a widget; only what differs is touched.

#include "controls/controls.h"
#include "platform/desktop/text.h"
#include "widgets/colour.h"
#include "widgets/full_text.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFont>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStringList>

namespace tyxo {

/// The name that is heard. A name that is set is told to every listener, whether it differs or not.
inline void show_name(QWidget& widget, const QString& name) {
    if (widget.accessibleName() != name) widget.setAccessibleName(name);
}

/// A tool tip in lines of a sensible length; what is heard are the words alone.
inline void show_tool_tip(QWidget& widget, const QString& words) {
    widget.setToolTip(words.isEmpty() ? QString() : tool_tip(words));
    if (widget.accessibleDescription() != words) widget.setAccessibleDescription(words);
}

/// The system's own widgets know how to show their state.
template <class Widget, class State>
requires requires(Widget& widget, const State& state) {
    widget.show_control(state);
}
void show_on(Widget& widget, const State& state) {
    widget.show_control(state);
}

/// A widget that is there or not.
inline void show_on(QWidget& widget, bool visible) {
    if (widget.isVisibleTo(widget.parentWidget()) != visible) widget.setVisible(visible);
}

inline void show_on(QLabel& label, const Label& control) {
    const QString text = qt_text(control.Caption);
    if (label.text() != text) {
        label.setText(text);
        tell_full_text(label);
    }
    show_on(label, control.Visible);
}

inline void show_on(QAbstractButton& button, const Command& control) {
    const QString text = qt_text(control.Caption);
    if (button.text() != text) button.setText(text);
    show_on(button, control.Visible);
    button.setEnabled(control.Enabled);
}

inline void show_on(QAction& entry, const Command& control) {
    entry.setText(qt_text(control.Caption));
    entry.setEnabled(control.Enabled);
}

/// A menu entry with a check mark.
inline void show_on(QAction& entry, bool checked) {
    entry.setChecked(checked);
}

/// A text with its ampersands as letters, where Qt would take one for the mark of a mnemonic.
[[nodiscard]] inline QString without_mnemonic(QString text) {
    return text.replace('&', "&&");
}

inline void show_on(QGroupBox& frame, const Frame& control) {
    const QString title = without_mnemonic(qt_text(control.Caption));
    if (frame.title() != title) {
        frame.setTitle(title);
        frame.setAccessibleName(qt_text(control.Caption)); // else heard under the name of a frame around it
    }
    show_on(frame, control.Visible);
    frame.setEnabled(control.Enabled);
}

inline void show_on(QCheckBox& check, const CheckBox& control) {
    check.setChecked(control.Value != 0);
    check.setEnabled(control.Enabled);
}

/// 1 is checked.
inline void show_on(QCheckBox& check, i16 value) {
    check.setChecked(value == 1);
}

inline void show_on(QComboBox& combo, const ComboBox& control) {
    QStringList list;
    for (const std::string& entry : control.List)
        list.append(qt_text(entry));
    QStringList shown;
    for (int index = 0; index < combo.count(); ++index)
        shown.append(combo.itemText(index));
    const QSignalBlocker nobody_chose(combo);
    if (shown != list) {
        combo.clear();
        combo.addItems(list);
    }
    if (combo.currentIndex() != control.ListIndex) combo.setCurrentIndex(control.ListIndex);
    combo.setEnabled(control.Enabled);
}

inline void show_on(QScrollBar& bar, const ScrollBar& control) {
    const QSignalBlocker nobody_moved_it(bar);
    bar.setRange(control.Min, control.Max);
    bar.setValue(control.Value);
    bar.setEnabled(control.Enabled);
}

/// "LED_Alarm(0)": the name of an element of a control array.
[[nodiscard]] inline QString element(const char* array, int index) {
    return QString("%1(%2)").arg(array).arg(index);
}

/// The font in bold letters, larger by a factor: headlines grow with the usual text.
[[nodiscard]] inline QFont headline_font(QFont font, double factor) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

} // namespace tyxo
