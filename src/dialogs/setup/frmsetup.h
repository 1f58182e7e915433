#pragma once
// The dialog "Setup": which Evaluators there are, on which ports, under which names, where their logs go; and
// what each of them reported about itself.
//
// Some controls take effect at once, and "Cancel" does not undo them; the others wait for "OK". Nothing that
// is typed is checked here.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "controls/controls.h"
#include "link/channel_rec.h"
#include "link/indicators.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tyxo {

/// A row of tabs: which one is in front, their captions, which of them can be chosen.
struct tab_strip {
    i16 Tab = 0;
    std::array<std::string, 1 + channel_count> TabCaption =
        std::to_array<std::string>({"TY Settings", "Tab 1", "Tab 2", "Tab 3", "Tab 4"});
    std::array<bool, 1 + channel_count> TabEnabled = std::to_array({true, true, true, true, true});
    bool operator==(const tab_strip&) const = default;
};

/// The tab of a channel: read-only texts, as its Evaluator reported the values. "NA" stands where it does not
/// report one.
struct sensor_tab {
    Frame Frame_sensor;
    std::string txt_Eva_ver;
    std::string Txt_eva_snr;
    std::string txt_engine_typ;
    std::string txt_engine_anord;
    std::string txt_num_cyl;
    std::string txt_nendehzahl; ///< rpm
    std::string txt_overspeed;  ///< rpm
    std::string txt_alarmlevel;
    std::string txt_prealarmlevel;
    std::string txt_impoffset;
    std::string Txt_ialmlevel1;
    std::string Txt_ialmlevel2;
    std::string txt_ialmrpm;
    std::string txt_aimp_del;
    std::string txt_aimp_len;
    std::string txt_aimp_level;
    std::string Txt_theff_alm;
    std::string Txt_theff_cnt;
    std::string txt_alminhibit;
    std::string Txt_dc_percent;
    std::array<std::string, cylinder_max> Text_zundfolge; ///< firing order
    std::array<std::string, cylinder_max> Text_zuendw;    ///< firing angles
    bool operator==(const sensor_tab&) const = default;
};

namespace frmSetup {

struct window {
    Form form{.Caption = "Setup"};
    tab_strip SSTab;
    Command cmd_OK{.Caption = "OK"};
    Command cmd_cancel{.Caption = "Cancel"};
    Command cmd_Refresh{.Caption = "Refresh"};

    // Tab 0: a row per channel.
    Frame frame_comport{.Caption = "Settings"};
    per_channel<ComboBox> Select_com;
    per_channel<TextBox> Text_sensor_loc;
    per_channel<TextBox> Text_logfile_path;
    per_channel<Command> cmd_browse_path{{{"Browse"}, {"Browse"}, {"Browse"}, {"Browse"}}};
    per_channel<TextBox> Text_type_code;
    per_channel<TextBox> Text_alm1;
    per_channel<TextBox> Text_alm2;
    per_channel<CheckBox> Check_tst;

    // Tab 0: what concerns all channels.
    ScrollBar scroll_max_commport{.Min = 1, .Max = channel_count, .Value = 1};
    std::string Text_num_sensors;
    std::optional<std::size_t> Opt_diffmode; ///< the selected option
    Frame Frame_events{.Caption = "All events logfile"};
    std::optional<std::size_t> Opt_event; ///< the selected option
    TextBox Text_evtlogfile_path;
    Command cmd_browse_evtpath{.Caption = "Browse"};
    Frame XY_Chart{.Caption = "&XY-Chart"};
    CheckBox th_a{.Value = 1};
    CheckBox TvmV{.Value = 1};
    CheckBox th_eff{.Value = 1};
    CheckBox th_eff_AC{.Value = 1};

    per_channel<sensor_tab> sensors; ///< tabs 1 to 4

    i16 num_sensors_edit = 0;        ///< the number of sensors being edited
    per_channel<i16> comport_edit{}; ///< working copy of the port numbers
    bool operator==(const window&) const = default;
};

inline window state;

/// Fills the whole dialog from the program's values.
void refresh_para();

/// Fills a channel's tab from its record. What the Evaluator sent as something unknown leaves the field as it
/// is.
void show_parameters(sensor_tab& tab, const channel_rec& rec);

/// Fills the first tab and sets what can be changed on it. Goes on past what fails.
void setup_frame_commport();

/// Takes the first tab over into the program's values and stores them. Waits as `Ini::var_save` does; a file
/// that cannot be written is not noticed.
void save_parameter();

/// Sends the parameter write frame with what the channel's tab shows, then stores. No button runs it.
/// Failures: those of `funct::parameter_frame_send`; nothing is stored then.
void write_parameter(i16 channel);

/// Another tab was chosen.
void SSTab_click(i16 tab);

// Typing; it counts with "OK". Failure: there is no such row.
void Text_sensor_loc_change(i16 row, std::string_view text);
void Text_logfile_path_change(i16 row, std::string_view text);
void Text_type_code_change(i16 row, std::string_view text);
void Text_alm1_change(i16 row, std::string_view text);
void Text_alm2_change(i16 row, std::string_view text);
void Text_evtlogfile_path_change(std::string_view text);

/// An entry of a row's list of ports was chosen. Failure: there is no such row or entry.
void Select_com_click(i16 row, std::size_t entry);

/// The scroll bar was moved to a number of sensors.
void scroll_max_commport_change(i16 value);

// These take effect at once. A click on a check box toggles it.
void Check_tst_click(i16 row);
void cmd_browse_path_click(i16 row);
void cmd_browse_evtpath_click();
void Opt_diffmode_click(std::size_t option);
void Opt_event_click(std::size_t option);
void th_a_click();
void TvmV_click();
void th_eff_click();
void th_eff_AC_click();

void cmd_OK_click();
void cmd_Refresh_click();

/// Closes the dialog, also every other way of closing it; what took effect at once stays.
void cmd_cancel_click();

} // namespace frmSetup

namespace mainfrm {

/// The menu entry: loads the dialog and shows it. While anything measures, the settings can only be looked
/// at.
void setup_click();

} // namespace mainfrm

} // namespace tyxo
