#include "gateway/modbus_calc.h"

#include "link/cylinder_values.h"

namespace tyxo::Modbus_calc {

using namespace cylinder_values;

void calc_angacc_cyl(i16 channel) {
    channel_rec& rec = sensor::channel_at(channel);
    write_speeds(rec, angles_by_cylinder(rec), at(sensor::state.mb_angacc, channel),
                 sensor::state.zyl_speed_range, {rec.mb_angacc_val, rec.mb_angacc_diff});
}

void calc_thermo_cyl(i16 channel) {
    channel_rec& rec = sensor::channel_at(channel);
    write_thermosignals(rec, angles_by_cylinder(rec), at(sensor::state.mb_thermo, channel),
                        sensor::state.zyl_speed_range, sensor::state.adc_offset, mean_order::behind_values,
                        {rec.mb_thermo_val, rec.mb_thermo_diff});
}

} // namespace tyxo::Modbus_calc
