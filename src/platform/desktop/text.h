#pragma once
// Texts of the core as texts of the windows.

#include "basics/ansi.h"

#include <QString>

#include <string_view>

namespace tyxo {

[[nodiscard]] inline QString qt_text(std::string_view ansi) {
    return QString::fromStdString(utf8_from_ansi(ansi));
}

/// The front of a text, for a place that has room for so many letters.
[[nodiscard]] inline QString front_of(const QString& text, qsizetype letters) {
    return text.size() <= letters ? text : text.first(letters - 1) + QChar(0x2026);
}

/// A tool tip that shows a text as it is, whatever it looks like, in lines of a sensible length.
[[nodiscard]] inline QString tool_tip(const QString& text) {
    return "<p>" + text.toHtmlEscaped() + "</p>";
}

} // namespace tyxo
