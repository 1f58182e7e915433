#pragma once
// From a curve of one cycle to one value per cylinder: the arithmetic that the bar diagrams and the gateway
// share. Pure functions but for the arrays that they are given to write.
//
// Failures, wherever they arise: the subscript failure for more cylinders than `cylinder_max`, an alarm level
// outside the table or an index outside the curve; a division by zero; an overflow. A failure leaves
// everything that was written up to it.

#include "link/channel_rec.h"

namespace tyxo {

/// Divisor per alarm level, 0 to 5: the thermosignal samples above the zero point that are 100 %.
inline constexpr std::array<i16, 6> alarm_gain_table{999, 25, 50, 100, 225, 450};

namespace cylinder_values {

inline constexpr i32 greatest_speed = 4000;       ///< rpm; a faster cylinder shows this
inline constexpr i32 greatest_thermosignal = 200; ///< % of the alarm level; likewise

/// Degrees crank angle from the start of the cycle, per cylinder or per firing place.
using crank_angles = std::array<i32, cylinder_max>;

/// Where each cylinder fires, by cylinder number: the sum of the firing angles up to its firing place, that
/// place's own included. The banks of a V engine interleave: 1A, 1B, 2A, 2B. A cylinder that the firing order
/// does not name stays at 0, and so do all when the arrangement is unknown.
[[nodiscard]] crank_angles angles_by_cylinder(const channel_rec& rec);

/// Where each firing place lies, in firing order.
[[nodiscard]] crank_angles angles_by_firing_place(const channel_rec& rec);

/// The sample of the curve at a crank angle: the cycle is 720 degrees of a 4 stroke engine, else 360.
[[nodiscard]] i32 curve_index(const channel_rec& rec, i32 angle);

/// Seconds per time count of the Evaluator.
[[nodiscard]] double step_time(const channel_rec& rec);

/// The speed in rpm around an index of the curve of time counts: the mean of the samples from
/// `index` - `half_width` to `index` + `half_width`.
[[nodiscard]] double window_speed(const sensor::curve& curve, i32 index, i32 half_width, double step);

/// What turns a thermosignal sample into % of the alarm level.
struct thermo_scale {
    i32 adc_offset = 0; ///< zero point of the samples
    double divisor = 0; ///< samples above the zero point that are 1, times 100
};

/// The scale of a channel. Failure: an alarm level outside the table.
[[nodiscard]] thermo_scale thermo_scale_of(const channel_rec& rec, i32 adc_offset);

/// The thermosignal in whole % of the alarm level around an index of the curve; the window is that of
/// `window_speed`.
[[nodiscard]] i32 window_thermosignal(const sensor::curve& curve, i32 index, i32 half_width,
                                      const thermo_scale& scale);

/// The arrays that a calculation fills, one element per cylinder.
struct outputs {
    std::array<i32, cylinder_max>& value;         ///< limited
    std::array<double, cylinder_max>& difference; ///< to the mean of the whole curve
};

/// Speeds in rpm and their differences: first all values, then all differences.
void write_speeds(const channel_rec& rec, const crank_angles& angles, const sensor::curve& curve,
                  i32 half_width, const outputs& out);

/// When the mean of the whole thermo curve is formed: it decides what is left behind by a mean that fails.
enum class mean_order { before_values, behind_values };

/// Thermosignals in % of the alarm level and their differences: first all values, then all differences.
void write_thermosignals(const channel_rec& rec, const crank_angles& angles, const sensor::curve& curve,
                         i32 half_width, i32 adc_offset, mean_order order, const outputs& out);

} // namespace cylinder_values
} // namespace tyxo
