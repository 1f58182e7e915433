#pragma once
// Colours of the core as colours of the windows.

#include "platform/controls.h"

#include <QColor>

namespace tyxo {

/// A control's colour; red is in its low byte.
[[nodiscard]] inline QColor qt_colour(colour value) {
    return {value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF};
}

} // namespace tyxo
