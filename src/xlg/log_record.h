#pragma once
// What a log tells of its engine, as the record of a channel.

#include "link/channel_rec.h"
#include "xlg/log_header.h"

#include <string>
#include <string_view>

namespace tyxo::xlg {

/// Engine and Evaluator of a header, the inverse of how it is written. A value that is missing or no number
/// is 0 or unknown; nothing is checked beyond that, and whoever calculates with it meets the failure. A
/// header that more than 24 cylinders cut short has no firing order. Without parameters, all of them 0,
/// `param_valid` is false.
[[nodiscard]] channel_rec record_of(const header_lines& header, std::string_view location);

/// The channel's name in the name of its log: "20260702Qu_Engine 1.xlg"; of another name all but folders and
/// extension.
[[nodiscard]] std::string location_of(std::string_view path);

} // namespace tyxo::xlg
