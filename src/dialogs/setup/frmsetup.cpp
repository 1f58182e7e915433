#include "dialogs/setup/frmsetup.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "dialogs/frmbrowse.h"
#include "displays/chart.h"
#include "settings/ini.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

#include <algorithm>

namespace tyxo::frmSetup {

namespace {

constexpr std::string_view port_letters = "COM";

/// A check box that shows and hides a curve of the strip charts.
struct trace_row {
    CheckBox window::*box;
    i16 settings_rec::*setting;
    std::string_view key;
};

constexpr trace_row tsig_dc{&window::th_a, &settings_rec::xy_tha, "xy_tha"};
constexpr trace_row tmv{&window::TvmV, &settings_rec::xy_tmv, "xy_tmv"};
constexpr trace_row teff_dc{&window::th_eff, &settings_rec::xy_theff, "xy_theff"};
constexpr trace_row teff_ac{&window::th_eff_AC, &settings_rec::xy_theff_AC, "xy_theff_AC"};

void toggle(CheckBox& box) {
    box.Value = box.Value == 0 ? 1 : 0;
}

void toggle_trace(const trace_row& row) {
    CheckBox& box = state.*row.box;
    toggle(box);
    settings.*row.setting = box.Value;
    Ini::ini_write(row.key, signed_form(box.Value));
    show_curves_by_settings();
}

/// The option of a setting that selects one of two; none for another value.
std::optional<std::size_t> option_of(i16 value) {
    if (value == 0 || value == 1) return static_cast<std::size_t>(value);
    return std::nullopt;
}

void enable_row(i16 row, bool enabled) {
    state.Select_com[row].Enabled = enabled;
    for (auto texts : {&window::Text_sensor_loc, &window::Text_logfile_path, &window::Text_type_code,
                       &window::Text_alm1, &window::Text_alm2})
        (state.*texts)[row].Enabled = enabled;
    state.cmd_browse_path[row].Enabled = enabled;
    state.Check_tst[row].Enabled = enabled;
}

void fill_port_list(i16 row, const std::vector<i16>& ports) {
    ComboBox& list = state.Select_com[row];
    list.List.clear();
    for (const i16 port : ports)
        list.List.push_back(std::string(port_letters) + plain(port));
    const auto chosen = std::ranges::find(ports, state.comport_edit[row]);
    list.ListIndex = chosen == ports.end() ? -1 : static_cast<i32>(chosen - ports.begin());
}

void show_row(i16 row, const std::vector<i16>& ports) {
    const channel_rec& rec = sensor::state.channels[row];
    fill_port_list(row, ports);
    state.Text_sensor_loc[row].Text = rec.location;
    state.Text_type_code[row].Text = rec.typecode;
    state.Text_logfile_path[row].Text = rec.logpath;
    state.Text_alm1[row].Text = rec.text_almrel1;
    state.Text_alm2[row].Text = rec.text_almrel2;
    state.Check_tst[row].Value = rec.tstsig_visible != 0 ? 1 : 0;
    enable_row(row, !sensor::state.measure_running);
    state.scroll_max_commport.Enabled = !sensor::state.measure_running;
}

/// What stands in the text boxes stays there.
void close_row(i16 row) {
    state.Select_com[row] = {};
    enable_row(row, false);
}

void load() {
    state = {};
    for (const trace_row& row : {tsig_dc, tmv, teff_dc, teff_ac}) {
        if (settings.*row.setting == 0) (state.*row.box).Value = 0;
    }
    // A running measurement cannot have its ports changed.
    state.SSTab.Tab = sensor::state.measure_running ? 1 : 0;
    state.XY_Chart.Enabled = !sensor::state.measure_running;
    state.frame_comport.Enabled = !sensor::state.measure_running;
    refresh_para();
}

void show_sensor_tab(i16 channel) {
    const channel_rec& rec = sensor::state.channels[channel];
    const auto tab = static_cast<std::size_t>(channel) + 1;
    state.SSTab.TabCaption[tab] = channel_number(channel) + " : " + rec.location;
    // Until the first status frame there is nothing to show.
    state.SSTab.TabEnabled[tab] = rec.status_valid;
    state.sensors[channel].Frame_sensor.Caption = rec.location;
    show_parameters(state.sensors[channel], rec);
}

void close_sensor_tab(i16 channel) {
    const auto tab = static_cast<std::size_t>(channel) + 1;
    state.SSTab.TabCaption[tab] = "No sensor";
    state.SSTab.TabEnabled[tab] = false;
}

} // namespace

void refresh_para() {
    const i16 used = sensor::state.max_sensors;
    state.num_sensors_edit = used;
    for (i16 channel = 0; channel < used; ++channel)
        show_sensor_tab(channel);
    setup_frame_commport();
    for (i16 channel = used; channel < channel_count; ++channel)
        close_sensor_tab(channel);
    // Looks like a mistake and stays: the scroll bar does not follow, it stands at 1 when the dialog opens
    // (SetupOpen.FromNoSensorToFourAsManyRowsAndTabsAreInUse).
    state.Text_num_sensors = plain(used);
}

void setup_frame_commport() {
    state.comport_edit = sensor::state.comport;
    state.Opt_event = option_of(settings.eventfile_ena_edit);
    state.Opt_diffmode = option_of(settings.speedbar_mode);
    const i16 used = state.num_sensors_edit;
    // Looks like a mistake and stays: without a list of ports the rows keep what they hold, and "OK" stores
    // that (SetupSave.WithoutAListOfPortsKeepsThePortsAndOverwritesNamesAndPathsWithTheEmptyBoxes).
    if (serial::serial_ports) {
        for (i16 row = 0; row < used; ++row)
            show_row(row, *serial::serial_ports);
    }
    for (i16 row = used; row < channel_count; ++row)
        close_row(row);
    state.Text_evtlogfile_path.Text = settings.evtpath;
    state.Text_evtlogfile_path.Enabled = !sensor::state.measure_running;
    state.cmd_browse_evtpath.Enabled = !sensor::state.measure_running;
}

void SSTab_click(i16 tab) {
    if (at(state.SSTab.TabEnabled, tab)) state.SSTab.Tab = tab;
}

void Text_sensor_loc_change(i16 row, std::string_view text) {
    state.Text_sensor_loc[row].Text = text;
}

void Text_logfile_path_change(i16 row, std::string_view text) {
    state.Text_logfile_path[row].Text = text;
}

void Text_type_code_change(i16 row, std::string_view text) {
    state.Text_type_code[row].Text = text;
}

void Text_alm1_change(i16 row, std::string_view text) {
    state.Text_alm1[row].Text = text;
}

void Text_alm2_change(i16 row, std::string_view text) {
    state.Text_alm2[row].Text = text;
}

void Text_evtlogfile_path_change(std::string_view text) {
    state.Text_evtlogfile_path.Text = text;
}

void Select_com_click(i16 row, std::size_t entry) {
    ComboBox& list = state.Select_com[row];
    if (entry >= list.List.size()) failures::subscript();
    list.ListIndex = static_cast<i32>(entry);
    const std::string number = list.List[entry].substr(port_letters.size());
    state.comport_edit[row] = round_even<i16>(leading_number(number));
}

void scroll_max_commport_change(i16 value) {
    ScrollBar& bar = state.scroll_max_commport;
    bar.Value = std::clamp(value, bar.Min, bar.Max);
    state.Text_num_sensors = plain(bar.Value);
    state.num_sensors_edit = bar.Value;
    setup_frame_commport();
}

void Check_tst_click(i16 row) {
    CheckBox& box = state.Check_tst[row];
    toggle(box);
    sensor::state.channels[row].tstsig_visible = box.Value;
}

void cmd_browse_path_click(i16 row) {
    TextBox& box = state.Text_logfile_path[row];
    frmbrowse::state.start_folder = box.Text;
    frmbrowse::browse([&box, row] {
        sensor::state.channels[row].logpath = frmbrowse::state.result;
        box.Text = frmbrowse::state.result;
    });
}

void cmd_browse_evtpath_click() {
    frmbrowse::state.start_folder = state.Text_evtlogfile_path.Text;
    frmbrowse::browse([] { state.Text_evtlogfile_path.Text = frmbrowse::state.result; });
}

void Opt_diffmode_click(std::size_t option) {
    constexpr std::array<i16, 2> modes{0, 1};
    settings.speedbar_mode = at(modes, option);
    state.Opt_diffmode = option;
}

void Opt_event_click(std::size_t option) {
    constexpr std::array<i16, 2> modes{0, 1};
    settings.eventfile_ena_edit = at(modes, option);
    state.Opt_event = option;
}

void th_a_click() {
    toggle_trace(tsig_dc);
}

void TvmV_click() {
    toggle_trace(tmv);
}

void th_eff_click() {
    toggle_trace(teff_dc);
}

void th_eff_AC_click() {
    toggle_trace(teff_ac);
}

void cmd_OK_click() {
    if (!state.form.Loaded) return; // it waited behind a click on "Cancel": the first one counts
    save_parameter();
    cmd_cancel_click();
}

void cmd_Refresh_click() {
    refresh_para();
}

void cmd_cancel_click() {
    state.form.unload();
}

} // namespace tyxo::frmSetup

namespace tyxo {

void mainfrm::setup_click() {
    frmSetup::load();
    frmSetup::state.form.show();
}

} // namespace tyxo
