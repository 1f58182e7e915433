#pragma once
// Texts of the core as texts of the windows.

#include "basics/ansi.h"

#include <QString>

#include <string_view>

namespace tyxo {

[[nodiscard]] inline QString qt_text(std::string_view ansi) {
    return QString::fromStdString(utf8_from_ansi(ansi));
}

} // namespace tyxo
