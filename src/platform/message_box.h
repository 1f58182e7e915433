#pragma once
// Message boxes.

#include <string_view>

namespace tyxo {

inline constexpr std::string_view program_title = "Quarvo / Tyxo Data Logger";

enum class box_icon { none, information, critical };
enum class box_buttons { ok, ok_cancel };
enum class box_answer { ok, cancel };

/// Shows the text and waits for the operator while the event loop goes on. Inside a serial event or a timer
/// tick, and while events are held, a box with the one button OK does not wait: it stays up by itself, so
/// that measuring begins and goes on behind it.
box_answer message_box(std::string_view text, box_icon icon = box_icon::none,
                       box_buttons buttons = box_buttons::ok, std::string_view title = program_title);

} // namespace tyxo
