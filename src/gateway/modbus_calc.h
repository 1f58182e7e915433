#pragma once
// The values per cylinder for the plant controller, formed with every finished curve whether there is a
// connection or not. They are those of the bar diagrams in cylinder order.

#include "basics/types.h"

namespace tyxo::Modbus_calc {

/// From `sensor::mb_angacc` of the channel: `mb_angacc_val` (rpm, 4000 at most) and `mb_angacc_diff` (rpm) of
/// its cylinders; element i is cylinder i + 1. A failure rises and leaves what was written up to it.
void calc_angacc_cyl(i16 channel);

/// From `sensor::mb_thermo` of the channel: `mb_thermo_val` (% of the alarm level, 200 at most) and
/// `mb_thermo_diff` (percentage points). Failures as above.
void calc_thermo_cyl(i16 channel);

} // namespace tyxo::Modbus_calc
