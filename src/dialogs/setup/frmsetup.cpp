#include "dialogs/setup/frmsetup.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "dialogs/frmbrowse.h"
#include "displays/chart.h"
#include "settings/ini.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

#include <algorithm>

namespace tyxo {

namespace {

constexpr std::string_view port_letters = "COM";

/// A check box that shows and hides a curve of the strip charts.
struct trace_row {
    CheckBox frmsetup_form::*box;
    i16 settings_rec::*setting;
    std::string_view key;
};

constexpr trace_row tsig_dc{&frmsetup_form::th_a, &settings_rec::xy_tha, "xy_tha"};
constexpr trace_row tmv{&frmsetup_form::TvmV, &settings_rec::xy_tmv, "xy_tmv"};
constexpr trace_row teff_dc{&frmsetup_form::th_eff, &settings_rec::xy_theff, "xy_theff"};
constexpr trace_row teff_ac{&frmsetup_form::th_eff_AC, &settings_rec::xy_theff_AC, "xy_theff_AC"};

void toggle(CheckBox& box) {
    box.Value = box.Value == 0 ? 1 : 0;
}

void toggle_trace(const trace_row& row) {
    CheckBox& box = frmSetup.*row.box;
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
    frmSetup.Select_com[row].Enabled = enabled;
    for (auto texts : {&frmsetup_form::Text_sensor_loc, &frmsetup_form::Text_logfile_path,
                       &frmsetup_form::Text_type_code, &frmsetup_form::Text_alm1, &frmsetup_form::Text_alm2})
        (frmSetup.*texts)[row].Enabled = enabled;
    frmSetup.cmd_browse_path[row].Enabled = enabled;
    frmSetup.Check_tst[row].Enabled = enabled;
}

void fill_port_list(i16 row, const std::vector<i16>& ports) {
    ComboBox& list = frmSetup.Select_com[row];
    list.List.clear();
    for (const i16 port : ports)
        list.List.push_back(std::string(port_letters) + plain(port));
    const auto chosen = std::ranges::find(ports, frmSetup.comport_edit[row]);
    list.ListIndex = chosen == ports.end() ? -1 : static_cast<i32>(chosen - ports.begin());
}

void show_row(i16 row, const std::vector<i16>& ports) {
    const channel_rec& rec = sensor::state.channels[row];
    fill_port_list(row, ports);
    frmSetup.Text_sensor_loc[row].Text = rec.location;
    frmSetup.Text_type_code[row].Text = rec.typecode;
    frmSetup.Text_logfile_path[row].Text = rec.logpath;
    frmSetup.Text_alm1[row].Text = rec.text_almrel1;
    frmSetup.Text_alm2[row].Text = rec.text_almrel2;
    frmSetup.Check_tst[row].Value = rec.tstsig_visible != 0 ? 1 : 0;
    enable_row(row, !sensor::state.measure_running);
    frmSetup.scroll_max_commport.Enabled = !sensor::state.measure_running;
}

/// What stands in the text boxes stays there.
void close_row(i16 row) {
    frmSetup.Select_com[row] = {};
    enable_row(row, false);
}

void load() {
    frmSetup = {};
    for (const trace_row& row : {tsig_dc, tmv, teff_dc, teff_ac}) {
        if (settings.*row.setting == 0) (frmSetup.*row.box).Value = 0;
    }
    // A running measurement cannot have its ports changed.
    frmSetup.SSTab.Tab = sensor::state.measure_running ? 1 : 0;
    frmSetup.XY_Chart.Enabled = !sensor::state.measure_running;
    frmSetup.frame_comport.Enabled = !sensor::state.measure_running;
    refresh_para();
}

void show_sensor_tab(i16 channel) {
    const channel_rec& rec = sensor::state.channels[channel];
    const auto tab = static_cast<std::size_t>(channel) + 1;
    frmSetup.SSTab.TabCaption[tab] = channel_number(channel) + " : " + rec.location;
    // Until the first status frame there is nothing to show.
    frmSetup.SSTab.TabEnabled[tab] = rec.status_valid;
    frmSetup.sensors[channel].Frame_sensor.Caption = rec.location;
    show_parameters(frmSetup.sensors[channel], rec);
}

void close_sensor_tab(i16 channel) {
    const auto tab = static_cast<std::size_t>(channel) + 1;
    frmSetup.SSTab.TabCaption[tab] = "No sensor";
    frmSetup.SSTab.TabEnabled[tab] = false;
}

} // namespace

void setup_click() {
    load();
    frmSetup.form.show();
}

void refresh_para() {
    const i16 used = sensor::state.max_sensors;
    frmSetup.num_sensors_edit = used;
    for (i16 channel = 0; channel < used; ++channel)
        show_sensor_tab(channel);
    setup_frame_commport();
    for (i16 channel = used; channel < channel_count; ++channel)
        close_sensor_tab(channel);
    // Looks like a mistake and stays: the scroll bar does not follow, it stands at 1 when the dialog opens
    // (SetupOpen.FromNoSensorToFourAsManyRowsAndTabsAreInUse).
    frmSetup.Text_num_sensors = plain(used);
}

void setup_frame_commport() {
    frmSetup.comport_edit = sensor::state.comport;
    frmSetup.Opt_event = option_of(settings.eventfile_ena_edit);
    frmSetup.Opt_diffmode = option_of(settings.speedbar_mode);
    const i16 used = frmSetup.num_sensors_edit;
    // Looks like a mistake and stays: without a list of ports the rows keep what they hold, and "OK" stores
    // that (SetupSave.WithoutAListOfPortsKeepsThePortsAndOverwritesNamesAndPathsWithTheEmptyBoxes).
    if (serial::serial_ports) {
        for (i16 row = 0; row < used; ++row)
            show_row(row, *serial::serial_ports);
    }
    for (i16 row = used; row < channel_count; ++row)
        close_row(row);
    frmSetup.Text_evtlogfile_path.Text = settings.evtpath;
    frmSetup.Text_evtlogfile_path.Enabled = !sensor::state.measure_running;
    frmSetup.cmd_browse_evtpath.Enabled = !sensor::state.measure_running;
}

void SSTab_click(i16 tab) {
    if (at(frmSetup.SSTab.TabEnabled, tab)) frmSetup.SSTab.Tab = tab;
}

void Text_sensor_loc_change(i16 row, std::string_view text) {
    frmSetup.Text_sensor_loc[row].Text = text;
}

void Text_logfile_path_change(i16 row, std::string_view text) {
    frmSetup.Text_logfile_path[row].Text = text;
}

void Text_type_code_change(i16 row, std::string_view text) {
    frmSetup.Text_type_code[row].Text = text;
}

void Text_alm1_change(i16 row, std::string_view text) {
    frmSetup.Text_alm1[row].Text = text;
}

void Text_alm2_change(i16 row, std::string_view text) {
    frmSetup.Text_alm2[row].Text = text;
}

void Text_evtlogfile_path_change(std::string_view text) {
    frmSetup.Text_evtlogfile_path.Text = text;
}

void Select_com_click(i16 row, std::size_t entry) {
    ComboBox& list = frmSetup.Select_com[row];
    if (entry >= list.List.size()) failures::subscript();
    list.ListIndex = static_cast<i32>(entry);
    const std::string number = list.List[entry].substr(port_letters.size());
    frmSetup.comport_edit[row] = round_even<i16>(leading_number(number));
}

void scroll_max_commport_change(i16 value) {
    ScrollBar& bar = frmSetup.scroll_max_commport;
    bar.Value = std::clamp(value, bar.Min, bar.Max);
    frmSetup.Text_num_sensors = plain(bar.Value);
    frmSetup.num_sensors_edit = bar.Value;
    setup_frame_commport();
}

void Check_tst_click(i16 row) {
    CheckBox& box = frmSetup.Check_tst[row];
    toggle(box);
    sensor::state.channels[row].tstsig_visible = box.Value;
}

void cmd_browse_path_click(i16 row) {
    TextBox& box = frmSetup.Text_logfile_path[row];
    frmbrowse.start_folder = box.Text;
    browse([&box, row] {
        sensor::state.channels[row].logpath = frmbrowse.result;
        box.Text = frmbrowse.result;
    });
}

void cmd_browse_evtpath_click() {
    frmbrowse.start_folder = frmSetup.Text_evtlogfile_path.Text;
    browse([] { frmSetup.Text_evtlogfile_path.Text = frmbrowse.result; });
}

void Opt_diffmode_click(std::size_t option) {
    constexpr std::array<i16, 2> modes{0, 1};
    settings.speedbar_mode = at(modes, option);
    frmSetup.Opt_diffmode = option;
}

void Opt_event_click(std::size_t option) {
    constexpr std::array<i16, 2> modes{0, 1};
    settings.eventfile_ena_edit = at(modes, option);
    frmSetup.Opt_event = option;
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

void frmSetup_cmd_OK_click() {
    if (!frmSetup.form.Loaded) return; // it waited behind a click on "Cancel": the first one counts
    save_parameter();
    frmSetup_cmd_cancel_click();
}

void cmd_Refresh_click() {
    refresh_para();
}

void frmSetup_cmd_cancel_click() {
    frmSetup.form.unload();
}

} // namespace tyxo
