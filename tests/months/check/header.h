#pragma once
// The header of a log: what has to stand in it, and how one that was read differs from that.

#include "plant_settings.h"
#include "record.h"
#include "words.h"

#include <optional>
#include <string>
#include <string_view>

namespace months::check {

/// What decides on a header beside the record.
struct header_facts {
    std::string_view file_name;
    const channel_settings& channel;
    const plant_settings& plant;
    const clock_now& now;
    bool chart_is_set_up = true; ///< a channel that was counted when the program started
};

/// The lines up to <LOG>, each with CR LF. With more than 24 cylinders it ends in front of the firing order.
[[nodiscard]] std::string header_text(const channel_record& record, const header_facts& facts);

/// The length of the header at the beginning of a text, of which `wanted` is expected; 0 if none begins
/// there.
[[nodiscard]] std::size_t header_length(std::string_view text, std::string_view wanted);

/// The first difference in plain words.
[[nodiscard]] std::optional<std::string> header_difference(std::string_view seen, std::string_view wanted);

} // namespace months::check
