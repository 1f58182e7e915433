#pragma once
// What the frames of one Evaluator have said so far.

#include "line.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace months::check {

using samples = std::array<int, 256>;
using places = std::array<int, 24>;

/// One number per cylinder as the controller gets it. Those of a computation that failed are not known.
struct cylinder_values {
    std::array<std::int64_t, 24> value{};
    std::array<std::int64_t, 24> difference{};
    std::array<bool, 24> unknown{};
};

struct channel_record {
    int tsignal = 0, speed = 0, tvoltage = 0, teff_dc = 0, teff_ac = 0;
    int test_signal = 0, test_signal_told = 0;
    samples thermo{}, acceleration{};
    int thermo_block = 0, acceleration_block = 0;

    int alarmlevel = 0, prealarmlevel = 0, ratedspeed = 0, overspeed = 0, enginetype = 0, numzyl = 0;
    int cylconf = 0, impoffset = 0;
    places firingorder{}, firingangle{};
    int tsttime = 0, tstlen = 0, aimp_level_cur = 0, ialarmlevel1 = 0, ialarmlevel2 = 0, ialmrpm = 0;
    int ialarmdelay = 0, ialarmlen = 0, ialarmlevel = 0, theff_alm = 0, theff_cnt = 0;
    int alminhibit_time = 0, dcalarmpercent = 0;
    std::string fwvers_ext, evasnr, speed_unit;
    double speed_scale = 0;
    bool tst_valid = false, ext1_valid = false, ext2_valid = false, dcpercent_valid = false;
    bool param_valid = false;

    std::string fwvers;
    int status_alarm = 0, status_error = 0, status_ext = 0;
    int alminhibit_left = 0, alminhibit_on = 0, eva_mode = 99;

    samples cylinder_thermo{}, cylinder_acceleration{}; ///< the last curves that were not all zero
    cylinder_values thermo_of, speed_of;
};

/// What a frame demands beside what it stores, in this order.
struct demands {
    std::string_view debug; ///< a whole line, or with `mscomm` none
    std::string_view note;  ///< of the test signal, in the log
    bool parameters = false;
    bool status = false;
    int curve = 0;  ///< 3 or 4: this curve is complete
    int record = 0; ///< 1: a record of measured values
    bool mscomm = false;
    bool mscomm_allowed = false; ///< whether a text is missed that nobody reads is open
};

/// Stores what a frame with right check digits says.
demands decode(channel_record& record, const frame_fields& frame, bool test_signal_visible);

} // namespace months::check
