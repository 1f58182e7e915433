#pragma once
// Colours of the core as colours of the windows.

#include "controls/controls.h"

#include <QColor>
#include <QWidget>

namespace tyxo {

/// A control's colour; red is in its low byte.
[[nodiscard]] inline QColor qt_colour(colour value) {
    return {value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF};
}

/// Gives a window this print for disabled controls: what can only be looked at must still be legible.
inline void set_disabled_print(QWidget& window, QRgb print) {
    QPalette colours = window.palette();
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, QColor(print));
    window.setPalette(colours);
}

} // namespace tyxo
