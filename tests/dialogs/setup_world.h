#pragma once
// The setup dialog of a program that was started with some channels and serial ports.

#include "dialogs/setup/frmsetup.h"

#include "app/started_program.h"
#include "dialogs/frmbrowse.h"
#include "displays/chart.h"
#include "settings/ini.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::simulation {

inline constexpr std::string_view all_traces = "xy_tha=1\r\nxy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\n";

class setup_world : public testing::Test {
  protected:
    /// Starts the program on a machine with these ports.
    static void start(std::string_view settings_text, const std::vector<std::string>& ports) {
        prepare(settings_text);
        for (const std::string& port : ports)
            world().port_names.push_back({"", port});
        mainfrm::start_program(1280, 960);
        world().debug.clear();
    }
    /// Channels 1 to `used` on COM1 and so on, named "Engine 1" and so on; COM1 to COM4 and COM12 exist.
    static void start(i16 used, std::string_view more = all_traces) {
        start(logging_settings(used, more), {"COM12", "COM4", "COM3", "COM2", "COM1"});
    }
    /// The machine's list of ports could not be read.
    static void start_without_list(i16 used) {
        prepare(logging_settings(used, all_traces));
        world().port_list_unreadable = true;
        mainfrm::start_program(1280, 960);
    }
    static void measure() {
        mainfrm::start_channel_click(0);
        ASSERT_TRUE(sensor::state.measure_running);
    }
    /// The program ends and starts on what its settings file holds.
    static void restart() {
        const std::string kept = file("tyxo.ini");
        start(kept, {"COM1", "COM2", "COM3", "COM4"});
    }
    /// "Browse" was clicked: a folder is chosen.
    static void choose_folder(std::string_view path) {
        ASSERT_TRUE(frmbrowse::state.form.Visible);
        frmbrowse::Ok_click(path);
    }

    static text_lines saved_lines() { return lines_of(file("tyxo.ini")); }
    static frmSetup::window& dialog() { return frmSetup::state; }
};

/// A row's text boxes, in the order of their columns.
struct row_box {
    std::string_view name;
    per_channel<TextBox> frmSetup::window::*boxes;
    void (*change)(i16 row, std::string_view text);
    std::string channel_rec::*value;
    std::string_view stem; ///< of the key
};
inline const std::vector<row_box> row_boxes{
    {"Text_sensor_loc", &frmSetup::window::Text_sensor_loc, frmSetup::Text_sensor_loc_change,
     &channel_rec::location, "location "},
    {"Text_logfile_path", &frmSetup::window::Text_logfile_path, frmSetup::Text_logfile_path_change,
     &channel_rec::logpath, "logpath "},
    {"Text_type_code", &frmSetup::window::Text_type_code, frmSetup::Text_type_code_change,
     &channel_rec::typecode, "typecode "},
    {"Text_alm1", &frmSetup::window::Text_alm1, frmSetup::Text_alm1_change, &channel_rec::text_almrel1,
     "text_almrel1 "},
    {"Text_alm2", &frmSetup::window::Text_alm2, frmSetup::Text_alm2_change, &channel_rec::text_almrel2,
     "text_almrel2 "},
};

/// The check boxes of `XY_Chart` and the curves that they show and hide.
struct trace_box {
    std::string_view name;
    CheckBox frmSetup::window::*box;
    void (*click)();
    i16 settings_rec::*setting;
    std::string_view key;
    std::size_t curve;
};
inline const std::vector<trace_box> trace_boxes{
    {"th_a", &frmSetup::window::th_a, frmSetup::th_a_click, &settings_rec::xy_tha, "xy_tha", 0},
    {"TvmV", &frmSetup::window::TvmV, frmSetup::TvmV_click, &settings_rec::xy_tmv, "xy_tmv", 3},
    {"th_eff", &frmSetup::window::th_eff, frmSetup::th_eff_click, &settings_rec::xy_theff, "xy_theff", 4},
    {"th_eff_AC", &frmSetup::window::th_eff_AC, frmSetup::th_eff_AC_click, &settings_rec::xy_theff_AC,
     "xy_theff_AC", 5},
};

/// Whether everything in a row can be changed.
inline void expect_row_enabled(i16 row, bool enabled) {
    EXPECT_EQ(frmSetup::state.Select_com[row].Enabled, enabled) << row;
    for (const row_box& box : row_boxes)
        EXPECT_EQ((frmSetup::state.*box.boxes)[row].Enabled, enabled) << box.name << row;
    EXPECT_EQ(frmSetup::state.cmd_browse_path[row].Enabled, enabled) << row;
    EXPECT_EQ(frmSetup::state.Check_tst[row].Enabled, enabled) << row;
}

} // namespace tyxo::simulation
