#pragma once
// What diagrams, setup dialog and logs say about an engine.

#include "link/channel_rec.h"

#include <optional>
#include <string>

namespace tyxo {

/// Values of `cylconf`.
namespace arrangement {
inline constexpr i32 v_type = 2;
inline constexpr i32 in_line = 4;
} // namespace arrangement

/// The label of a firing order entry: "3B" above 200, "3A" from 101 to 199, "3" below 100. Nothing for 100
/// and 200: such a label keeps the text that it has.
[[nodiscard]] std::optional<std::string> cylinder_text(i32 entry);

/// The same with the bank in front, as setup dialog and logs have it: "B3", "A3", "3".
[[nodiscard]] std::optional<std::string> bank_and_cylinder(i32 entry);

/// "6 cylinder in line", "16 cylinder V - type".
[[nodiscard]] std::string arrangement_text(const channel_rec& rec);

} // namespace tyxo
