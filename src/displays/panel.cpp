#include "displays/panel.h"

#include "basics/number_text.h"
#include "displays/chart.h"
#include "link/channel_rec.h"
#include "platform/program.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo {

namespace {

using sensor::channel_at;

constexpr std::string_view no_damage_data = "Data for damage localisation not available !";
constexpr std::string_view advanced_evaluator =
    "Advanced Evaluator detected ! Logger runs in advanced mode for this evaluator !";

constexpr colour unlit_digits = rgb(85, 0, 0);
constexpr colour ac_digits = rgb(255, 128, 0);

/// The two values that the thermo gauge can show, and how it tells which.
struct thermo_choice {
    i32 channel_rec::*value;
    std::string_view name;
    colour digits;
    colour pointer;
};
constexpr thermo_choice tsig{&channel_rec::tsignal, "Tsig %DCA", rgb(255, 0, 0), rgb(198, 0, 0)};
constexpr thermo_choice teff{&channel_rec::teff_dc, "Teff %DCA", rgb(255, 0, 255), rgb(185, 0, 185)};

const thermo_choice& chosen(i16 channel) {
    return channel_at(channel).th_dig_val != 0 ? teff : tsig;
}

void design_panel(i16 channel) {
    iAngularGaugeX& speed = indicators.drehzahl[channel];
    speed.Label1Text = speed.Label2Text = "RPM";

    iLinearGaugeX& thermo = panels.Gauge_thermo[channel];
    thermo.TickMajorCount = 6;
    thermo.PointerSize = 8;
    thermo.ShowMaxPointer = true;

    indicators.digi_Thermo[channel].UnitsText = "%";
    indicators.t_mv[channel] = {.Precision = 2, .UnitsText = "mV", .ForeColor = rgb(0, 255, 0)};
    indicators.dig_drehzahl[channel] = {.SegmentColor = 16738370, .SegmentOffColor = rgb(0, 0, 128)};
    panels.dig_sens[channel] = {.SegmentColor = 33023, .SegmentOffColor = 85};
    panels.dig_sens2[channel] = {.SegmentColor = 33023, .SegmentOffColor = 85};

    indicators.LED_Alarm[channel] = {.ActiveColor = rgb(255, 0, 0), .InactiveColor = rgb(64, 0, 0)};
    indicators.LED_prealarm[channel] = {.ActiveColor = rgb(255, 0, 0), .InactiveColor = 16512};
    indicators.LED_Rdy[channel] = {};

    indicators.Lbl_alm1[channel].Caption = "Alarmrel 1";
    indicators.lbl_alm2[channel].Caption = "Alarmrel 2";
    indicators.Lbl_alminhibit[channel].Caption = "Alarm inhibit!";
    panels.Label4[channel].Caption = tsig.name;
    panels.lbl_aimplevel[channel].Caption = ".";
    panels.Lbl_dc_percent[channel].Caption = ".";
    panels.Frame_message[channel].Caption = "Info";
    panels.Lbl_dama[channel].Caption = no_damage_data;
    panels.Cmd_diagramm[channel].Caption = "Speed difference";
    panels.Cmd_diagramm2[channel].Caption = "Thermosignal difference";
    panels.cmd_zoom_xy[channel].Caption = "Enlarge XY graph";
}

void show_plot(i16 channel, bool visible) {
    panels.XYplot[channel].Visible = visible;
    panels.Cmd_diagramm[channel].Visible = visible;
    panels.Cmd_diagramm2[channel].Visible = visible;
}

/// Plot or message, by what the Evaluator says of itself; a mode that is none of the three changes nothing.
void show_evaluator_mode(i16 channel) {
    const i32 mode = channel_at(channel).eva_mode;
    if (mode != evaluator_mode::not_available && mode != evaluator_mode::standard &&
        mode != evaluator_mode::advanced) {
        return;
    }
    show_plot(channel, mode == evaluator_mode::standard);
    panels.Frame_message[channel].Visible = mode != evaluator_mode::standard;
    if (mode == evaluator_mode::standard) panels.Lbl_dama[channel].Caption = no_damage_data;
    if (mode == evaluator_mode::advanced) panels.Lbl_dama[channel].Caption = advanced_evaluator;
}

void show_thermo_value(i16 channel) {
    panels.Gauge_thermo[channel].set_position(channel_at(channel).*chosen(channel).value);
}

} // namespace

void design_panels() {
    for (i16 channel = 0; channel < channel_count; ++channel)
        design_panel(channel);
}

void setup_thermo_gauge(i16 channel) {
    iLinearGaugeX& gauge = panels.Gauge_thermo[channel];
    gauge.PositionMax = 125;
    gauge.SectionCount = 2;
    gauge.SectionEnd = {100, 125};
    gauge.SectionColor = {rgb(192, 192, 192), rgb(255, 120, 55)};
    gauge.PointerColor = tsig.pointer;
}

void hide_until_data(i16 channel) {
    show_plot(channel, false);
    indicators.Lbl_alminhibit[channel].Visible = false;
    indicators.Lbl_inhtime[channel].Visible = false;
}

void setup_relay_captions(i16 channel) {
    indicators.lbl_alm2[channel].Caption = channel_at(channel).text_almrel2;
    indicators.Lbl_alm1[channel].Caption = channel_at(channel).text_almrel1;
}

void show_thermo_choice(i16 channel) {
    const thermo_choice& choice = chosen(channel);
    indicators.digi_Thermo[channel].ForeColor = choice.digits;
    panels.Gauge_thermo[channel].PointerColor = choice.pointer;
    panels.Label4[channel].Caption = choice.name;
}

void setup_panel(i16 channel) {
    panels.Frame_sensor[channel].Caption = channel_number(channel) + ": " + channel_at(channel).location;
    iAngularGaugeX& gauge = indicators.drehzahl[channel];
    gauge.SectionCount = 3;
    gauge.SectionColor = {rgb(0, 255, 0), rgb(255, 255, 0), rgb(255, 0, 0)};
    gauge.SectionEnd = {1000, 1000};
    panels.dig_sens2[channel].SegmentColor = unlit_digits;
}

void setup_missing_panel(i16 channel) {
    Frame& frame = panels.Frame_sensor[channel];
    frame.Caption = "not installed";
    frame.Enabled = false;
    panels.Frame_message[channel].Enabled = false;
    indicators.dig_drehzahl[channel].SegmentColor = rgb(0, 0, 128);
    indicators.digi_Thermo[channel].ForeColor = unlit_digits;
    panels.dig_sens[channel].SegmentColor = unlit_digits;
    panels.dig_sens2[channel].SegmentColor = unlit_digits;
    indicators.t_mv[channel].ForeColor = rgb(0, 64, 0);
    indicators.start_channel[channel].Enabled = false;
}

void mainfrm::Label4_click(i16 channel) {
    channel_rec& rec = channel_at(channel);
    rec.th_dig_val = rec.th_dig_val != 1 ? 1 : 0;
    Ini::ini_write(Ini::key_of("th_dig_val ", channel), signed_form(rec.th_dig_val));
    show_thermo_choice(channel);
}

void update_panel(i16 channel) {
    const channel_rec& rec = channel_at(channel);
    indicators.drehzahl[channel].Position = rec.speed;
    indicators.dig_drehzahl[channel].Value = rec.speed;
    show_thermo_value(channel);
    indicators.digi_Thermo[channel].Value = panels.Gauge_thermo[channel].Position;
    indicators.t_mv[channel].Value = rec.tvoltage / 100.0;
    panels.dig_sens[channel].Value = rec.alarmlevel;
    if (!rec.ext1_valid) {
        panels.dig_sens2[channel].SegmentColor = unlit_digits;
    } else {
        panels.dig_sens2[channel].SegmentColor = ac_digits;
        panels.dig_sens2[channel].Value = rec.aimp_level_cur;
        if (rec.ext2_valid) panels.lbl_aimplevel[channel].Caption = plain(rec.ialarmlevel) + "% of";
    }
    if (rec.dcpercent_valid) panels.Lbl_dc_percent[channel].Caption = plain(rec.dcalarmpercent) + "% of";
    show_evaluator_mode(channel);
}

void mainfrm::Timer_chart_upd_tick() {
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        if (!sensor::state.channel_running[channel]) continue;
        add_chart_row(channel);
        show_thermo_value(channel);
        update_panel(channel);
    }
    do_events();
}

} // namespace tyxo
