#pragma once
// What the system knows about each Evaluator: one record per channel, a mirror of the last frames.
//
// The link writes the measurement, parameter and status fields, settings and dialogs the configuration
// fields; everybody else reads. Nothing is cleared when a channel stops or a link is lost, but for `tsignal`
// and `speed`.
//
// Numbers of a frame are unsigned: four digits hold 0 to 65535, two hold 0 to 255. No range is checked when
// they are stored; where a narrower range is told here, whoever calculates with the field meets the failure.

#include "basics/failure.h"
#include "basics/per_channel.h"
#include "basics/types.h"

#include <array>
#include <string>
#include <string_view>

namespace tyxo {

inline constexpr i32 curve_samples = 256;
inline constexpr i32 cylinder_max = 24;

/// A flag that comes from the settings or a check box: a number, each reader tests it in its own way.
using number_flag = i16;

/// "This Evaluator does not know it", as the parameter frame's readers see it.
namespace unknown {
inline constexpr i32 theff = 9999;
inline constexpr i32 alminhibit_time = 99999;
inline constexpr const char* evasnr = "inactive";
inline constexpr std::string_view typecode = "unknown"; ///< of an empty setting
} // namespace unknown

/// Values of `eva_mode`.
namespace evaluator_mode {
inline constexpr i32 advanced = 0;
inline constexpr i32 standard = 1;
inline constexpr i32 not_available = 99;
} // namespace evaluator_mode

/// Values of `log_state`.
namespace log_states {
inline constexpr i16 none = 0;
inline constexpr i16 wanted = 1; ///< the file waits for the first parameter frame
inline constexpr i16 open = 2;   ///< the only state that lets a line through
} // namespace log_states

struct channel_rec {
    // Identification, ":00"; kept, read by nothing.
    std::string id_text1;
    std::string id_text2;
    std::string id_text3;
    std::string id_text4;

    // Measured values, ":01".
    i32 tsignal = 0;                ///< thermosignal without its sign, % of the alarm level, 0 to 3277
    i32 teff_dc = 0;                ///< effective value, % of the DC alarm level, 0 to 6554
    i32 teff_ac = 0;                ///< effective value, % of the AC alarm level, 0 to 6554
    double tvoltage = 0;            ///< thermovoltage in 1/100 mV without its sign, whole, 0 to 32768
    i32 speed = 0;                  ///< rpm, 0 to 6554
    i32 tstsig_state = 0;           ///< test signal now: 0 off, 1 or 2; others count as a test signal too
    i32 tstsig_prev = 0;            ///< test signal last announced in the log
    number_flag tstsig_visible = 0; ///< not 0: values measured during a test signal count too

    // Curves of one engine cycle, ":03" and ":04": samples 0 to 255, the slot behind them is never written.
    std::array<i32, curve_samples + 1> thermo_data{}; ///< converter values, `adc_offset` is their zero
    std::array<i32, curve_samples + 1> angacc_data{}; ///< counts of `cylinder_values::step_time`

    // Values per cylinder of the bar diagrams and of the gateway; 4000 and 200 stand for "no value". A
    // difference is that of the cylinder to the mean of the whole curve.
    std::array<i32, cylinder_max> bar_angacc_val{};     ///< rpm, at most 4000
    std::array<double, cylinder_max> bar_angacc_diff{}; ///< rpm, in steps of 0.01
    std::array<i32, cylinder_max> bar_thermo_val{};     ///< % of the alarm level, at most 200
    std::array<double, cylinder_max> bar_thermo_diff{}; ///< percentage points, whole
    std::array<i32, cylinder_max> mb_angacc_val{};      ///< as `bar_angacc_val`, and so on
    std::array<double, cylinder_max> mb_angacc_diff{};
    std::array<i32, cylinder_max> mb_thermo_val{};
    std::array<double, cylinder_max> mb_thermo_diff{};

    // Parameters, ":06"; real once `param_valid` holds. Frames name no units: where none is certain,
    // the field is in the Evaluator's own, shown and logged as it came, and nothing is calculated with it.
    i32 alarmlevel = 0; ///< DC alarm level, a step: index into `alarm_gain_table`, 0 to 5
    i32 ratedspeed = 0; ///< rpm; up to 10 the Evaluator has none
    i32 overspeed = 0;  ///< rpm; likewise. Chooses the bands of `link/speed_bands.h`
    i32 enginetype = 0; ///< strokes of a cycle: 4 or 2
    i32 numzyl = 0;     ///< cylinders, at most `cylinder_max`
    i32 cylconf = 0;    ///< 4: "in-line", 2: "V-cylinder"
    /// Cylinder per firing position: above 200 bank B and the number less 200, 101 to 199 bank A and the
    /// number less 100, below 100 no bank; exactly 100 and 200 show as nothing.
    std::array<i32, cylinder_max> firingorder{};
    /// Degrees crank angle from the firing position before to this one; the first from the start of the
    /// cycle.
    std::array<i32, cylinder_max> firingangle{};
    i32 prealarmlevel = 0;    ///< the Evaluator's own unit
    i32 impoffset = 0;        ///< of the impulse at the top dead centre; likewise
    bool param_valid = false; ///< a ":06" frame was decoded
    i32 tsttime = 0;          ///< of the test signal, while `tst_valid`; the Evaluator's own unit
    i32 tstlen = 0;           ///< its length, likewise
    i32 aimp_level_cur = 0;   ///< AC alarm level in use, 0 to 255; this to `fwvers_ext` while `ext1_valid`
    i32 ialarmlevel1 = 0;     ///< AC alarm level below `ialmrpm`
    i32 ialarmlevel2 = 0;     ///< and from there on
    i32 ialmrpm = 0;          ///< rpm
    std::string fwvers_ext;   ///< firmware version, ten characters
    i32 ialarmdelay = 0;      ///< of the alarm impulse, while `ext2_valid`; the Evaluator's own unit
    i32 ialarmlen = 0;        ///< its length, likewise
    i32 ialarmlevel = 0;      ///< % of the AC alarm level, likewise
    i32 theff_cnt = 0;        ///< how many values make an effective value; `unknown::theff` when not sent
    i32 theff_alm = 0;        ///< effective value in DC measuring; likewise
    i32 alminhibit_time = 0;  ///< unit of `alminhibit_left`; `unknown::alminhibit_time` likewise
    i32 dcalarmpercent = 0;   ///< DC alarm level in % of its step, while `dcpercent_valid`; at 0 curves fail

    // Status, ":08"; real once `status_valid` holds.
    std::string fwvers;        ///< firmware version, five characters
    i32 status_alarm = 0;      ///< 16 bits, the masks stand in `link/status_update.cpp`
    i32 status_error = 0;      ///< likewise
    bool status_valid = false; ///< a ":08" frame was decoded
    i32 status_ext = 0;        ///< two digits; kept, read by nothing
    i32 alminhibit_left = 0;   ///< what is left of the inhibit time, the Evaluator's own unit
    i32 alminhibit_on = 0;     ///< 1 while the alarms are inhibited, any other number: they are not
    i32 eva_mode = 0;          ///< `evaluator_mode`

    // Configuration; texts in Windows-1252.
    std::string typecode;     ///< type code in the log header
    std::string location;     ///< the channel's name in every message
    std::string text_almrel1; ///< names of the two alarm relays
    std::string text_almrel2;

    bool connected = false;       ///< the link is believed to be up
    bool tst_valid = false;       ///< the last ":06" frame carried `tsttime` and `tstlen`
    double speed_scale = 0;       ///< factor of the speed line in the log: 1, 0.2, 0.1, 0.05 or 0.04
    std::string speed_unit;       ///< with that factor: "RPM" to "RPM /25"
    bool ext1_valid = false;      ///< the last ":06" frame carried `aimp_level_cur` to `fwvers_ext`
    bool ext2_valid = false;      ///< it carried `ialarmdelay` to `ialarmlevel`
    bool dcpercent_valid = false; ///< it carried `dcalarmpercent`
    number_flag th_dig_val = 0;   ///< not 0: the thermo gauge shows `teff_dc`, else `tsignal`
    std::string evasnr;           ///< serial number, or `unknown::evasnr`

    // Log.
    i16 log_state = log_states::none;
    std::string logname; ///< file name without its folder
    std::string logpath; ///< folder of the logs, with its closing separator
    i16 log_fileno = 0;  ///< the channel's number, 1 to 4, once a log was begun

    // Latches of the status machine: the bit was announced.
    bool lat_mem_overflow = false;
    bool lat_crc_error = false;
    bool lat_mem_timeout = false;
    bool lat_mem_error = false;
    bool lat_inca = false;
    bool lat_incb = false;
    bool lat_sync = false;
    bool lat_testsignal = false;
    bool lat_not_connected = false;
    bool lat_main_alarm = false;
    bool lat_prealarm = false;
    bool lat_main_ac = false;
    bool lat_pre_ac = false;
    bool lat_main_dc = false;
    bool lat_pre_dc = false;
    bool lat_overspeed = false;
    bool lat_main_error = false;
    bool lat_inhibit = false;

    bool xy_zoom_state = false; ///< this channel's strip chart is enlarged
};

namespace sensor {

using curve = std::array<i32, curve_samples>;

/// All channels, and what is measured and shown of them.
struct sensor_state {
    per_channel<channel_rec> channels;
    i16 max_sensors = 0; ///< channels in use, 0 to 4
    /// Serial port numbers, from 1 on.
    per_channel<i16> comport{};
    per_channel<bool> channel_running{};
    bool measure_running = false; ///< from the first start until all channels are stopped
    bool chart_timer_on = false;
    i16 upd_periode = 0; ///< ms: 100, 250, 500 or 1000
    /// Looks like a mistake and stays: loaded and saved, used by nothing
    /// (SettingsSave.WritesTheSetupKeysInOrderAndToTheByte).
    i32 cmd_periode = 0;
    i16 adc_offset = 0;      ///< zero point of the thermosignal samples, 460 to 520
    i16 zyl_speed_range = 0; ///< half width of a cylinder's window, 1 to 20 samples
    /// Factors to the units of the polar curves: from time counts, and from converter values.
    double scale_polar_a = 0;
    double scale_polar_t = 0;
    i16 polar_channel = 0;      ///< channel number 1 to 4 in the Detailed Display, 0 for none
    i16 bar_channel_angacc = 0; ///< likewise in the speed difference bars
    i16 bar_channel_thermo = 0; ///< likewise in the thermosignal difference bars
    /// Copies for the Detailed Display and the bars, and by channel for the gateway; units as in the record.
    curve detail_angacc{};
    curve detail_thermo{};
    std::array<curve, 7> mb_angacc{};
    std::array<curve, 7> mb_thermo{};
    per_channel<bool> alert_latched{}; ///< the alert was raised for this relay alarm
    bool alert_open = false;
    i16 inhibit_reset_channel = 0; ///< 0 to 3: whose inhibit label was clicked last
    /// Number of the last curve block accepted, 0 before a new curve.
    per_channel<i16> thermo_block_last{};
    per_channel<i16> angacc_block_last{};
    i16 poll_step = 0; ///< one for all channels: with several channels they take turns through one sequence
    per_channel<bool> poll_hold{}; ///< skips the sequencer; nothing sets it
};

inline sensor_state state;

/// The record of a channel; the subscript failure when there is no such channel.
[[nodiscard]] inline channel_rec& channel_at(i16 channel) {
    return state.channels[channel];
}

} // namespace sensor
} // namespace tyxo
