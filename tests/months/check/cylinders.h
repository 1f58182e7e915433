#pragma once
// From a curve of one engine cycle to the values of its cylinders.

#include "record.h"

namespace months::check {

struct cylinder_settings {
    int half_width = 1;   ///< of a cylinder's window
    int zero_point = 479; ///< of the thermosignal
};

/// Computes the cylinders' speeds from `cylinder_acceleration`. False when a number cannot be had (a division
/// by 0, a place that does not exist); what there is then is not known.
bool compute_speeds(channel_record& record, const cylinder_settings& settings);

/// The same for `cylinder_thermo`.
bool compute_thermo(channel_record& record, const cylinder_settings& settings);

} // namespace months::check
