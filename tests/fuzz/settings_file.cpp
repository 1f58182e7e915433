// Any settings file at the start: it either ends the program with a box that says why, or all goes on.

#include "fuzz/machine.h"
#include "fuzz/targets.h"

#include "dialogs/setup/frmsetup.h"
#include "displays/panel.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "platform/program.h"
#include "platform/simulation.h"
#include "settings/ini.h"

namespace tyxo::fuzzing {

namespace {

using simulation::world;

/// True if the program runs; else it has said why, and the settings are at fault.
bool runs() {
    if (!world().exit_code) return true;
    expect(*world().exit_code == 1, "wrong settings end the program with code 1");
    expect(!world().boxes.empty() && world().boxes.back().icon == box_icon::critical, "a box says why");
    expect(world().boxes.back().waits, "and waits for the operator");
    return false;
}

void check_ranges() {
    const sensor::sensor_state& state = sensor::state;
    expect(state.adc_offset >= 460 && state.adc_offset <= 520, "adc_offset is repaired");
    expect(state.zyl_speed_range >= 1 && state.zyl_speed_range <= 20, "zyl_speed_range is repaired");
    expect(state.max_sensors <= channel_count, "no more channels than there are");
}

/// One frame of each type and two curves for every channel that measures.
void measure() {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        command([channel] { mainfrm::start_channel_click(channel); });
        receive_frame(channel, ":00ABCDEFGabcdefg123456ABCDEFGHIJ");
        receive_parameters(channel);
        receive_frame(channel, ":0180FF0FFF000080FF00FF00FF");
        receive_curve(channel, "03", 480, 1);
        receive_curve(channel, "04", 700, -2);
        receive_frame(channel, ":0701");
        receive_frame(channel, ":08V2.07208200000000000000000000");
        command([channel] { mainfrm::Label4_click(channel); });
    }
    for (i32 tick = 0; tick < 4; ++tick)
        command(mainfrm::Timer_TCP_tick);
}

/// Into every box of the setup.
void type(const std::string& text) {
    for (i16 row = 0; row < channel_count; ++row) {
        frmSetup::Text_sensor_loc_change(row, text);
        frmSetup::Text_logfile_path_change(row, text);
        frmSetup::Text_type_code_change(row, text);
        frmSetup::Text_alm1_change(row, text);
        frmSetup::Text_alm2_change(row, text);
    }
    frmSetup::Text_evtlogfile_path_change(text);
}

/// The setup's texts behind a restart.
void check_typed(const std::string& text) {
    const std::string read = read_of(text).substr(0, Ini::value_limit);
    expect(settings.evtpath == read, "evtpath is read back");
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        const channel_rec& rec = sensor::state.channels[channel];
        expect(rec.location == read && rec.logpath == read, "location and logpath are read back");
        expect(rec.typecode == (read.empty() ? unknown::typecode : read), "typecode is read back");
        expect(rec.text_almrel1 == (read.empty() ? "Alarmrel 1" : read), "text_almrel1 is read back");
        expect(rec.text_almrel2 == (read.empty() ? "Alarmrel 2" : read), "text_almrel2 is read back");
    }
}

} // namespace

void settings_file(input in) {
    const u8 choice = in.byte();
    const bool types = (choice & 8U) != 0;
    const std::string typed = types ? typed_text(in) : "";
    const std::string text(in.rest());
    start_program_on(text);
    if (!runs()) return;
    check_ranges();
    if ((choice & 1U) != 0) measure();
    if ((choice & 6U) == 6U) command(mainfrm::Timer_chart_upd_tick); // charts take longer than all else
    command(mainfrm::setup_click);
    command(mainfrm::setup_tcp_click);
    check_state();
    command(stop_log);

    // What the dialog stores starts the program again, with the same values.
    if (types) type(typed);
    command(frmSetup::cmd_OK_click);
    const std::string stored = simulation::file("tyxo.ini");
    const i16 used = sensor::state.max_sensors;
    const auto ports = sensor::state.comport;
    start_program_on(stored);
    expect(runs(), "what the setup stores can be read");
    expect(sensor::state.max_sensors == used, "max_sensors is read back");
    for (i16 channel = 0; channel < used; ++channel)
        expect(sensor::state.comport[channel] == ports[channel], "comport is read back");
    if (types) check_typed(typed);
}

} // namespace tyxo::fuzzing
