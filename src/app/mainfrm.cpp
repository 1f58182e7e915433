#include "app/mainfrm.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "dialogs/frmabort.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/connection.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"
#include "logging/event_file.h"
#include "logging/log_header.h"
#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/message_box.h"
#include "platform/program.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"

namespace tyxo::mainfrm {

namespace {

/// Narrower or lower screens get a warning. Looks like a mistake and stays: the warning's text speaks of
/// other limits (Screen.TheWarningHasItsTextTitleIconAndButtons).
constexpr i16 least_screen_w = 1272;
constexpr i16 least_screen_h = 937;

void program_event(std::string_view text) {
    const local_time now = local_now();
    event_line(stamp_text(now, ';') + ';' + std::string(text));
}

/// Looks like a mistake and stays: the program has one name here and another one in the line of its end
/// (EventFileOfAStart.StartAndCloseOfTheProgramAreLinesOfTheirTime).
void start_event() {
    state.announced = true;
    program_event("Tyxo Logger software started !");
}

void stop_event() {
    program_event("Tyxo Data Logger software stopped !");
}

/// Ends the program; while it measures, the operator has to grant that.
bool end_if_granted() {
    if (sensor::state.measure_running) {
        if (FrmAbort::state.asking) return false; // it asks about something else, and nobody has answered
        if (!calls.stop_lock("Stops all channels and ends the program")) {
            // Looks like a mistake and stays: the program goes on, the gateway does not
            // (LockedClose.TheGatewayDoesNotComeBackByItself).
            TCP_disconnect();
            return false;
        }
    }
    // Looks like a mistake and stays: logs get no "Measure Stopped" here
    // (LogLifecycle.TheEndOfTheProgramLeavesTheLastRecordAsTheLastLine).
    end_program(0);
    return true;
}

bool screen_accepted() {
    const i16 width = state.screen_w;
    const i16 height = state.screen_h;
    if (width >= least_screen_w && height >= least_screen_h) return true;
    const std::string text = "Resolution is actual " + plain(width) + " x " + plain(height) + "dots\r\n" +
                             "Screen does not fulfil the minimum requirements !\r\n\r\n" +
                             "It must have at least 1280 x 1024 dots !";
    return message_box(text, box_icon::information, box_buttons::ok_cancel, "WARNING !") == box_answer::ok;
}

void design_all_channels() {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        sensor::state.channels[channel].eva_mode = evaluator_mode::not_available;
        sensor::state.channels[channel].connected = true; // the first data announces nothing
        state.chart_w[channel] = static_cast<float>(charts.chart[channel].Width);
        state.chart_h[channel] = static_cast<float>(charts.chart[channel].Height);
    }
    for (i16 channel = 0; channel < channel_count; ++channel)
        setup_thermo_gauge(channel);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        charts.chart[channel].Width = 635;
        hide_until_data(channel);
    }
}

void setup_channels_in_use() {
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel)
        setup_relay_captions(channel);
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        iStripChartX& chart = charts.chart[channel];
        chart.YAxisMin = 0;
        chart.YAxisMax = 150;
        chart.XAxisDateTimeFormatString = "d/m hh:nn:ss";
        setup_plot(channel);
        show_thermo_choice(channel);
    }
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        setup_chart(channel);
        setup_panel(channel);
    }
    show_curves_by_settings();
}

void setup_missing_channels() {
    for (i16 channel = sensor::state.max_sensors; channel < channel_count; ++channel) {
        setup_missing_panel(channel);
        charts.chart[channel].Title = "not installed";
    }
}

} // namespace

void load_settings() {
    for (const Ini::global_key& row : Ini::first_keys())
        Ini::load(row);
    FrmAbort::SetPassword(settings.passwd);
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        for (const Ini::channel_key& row : Ini::channel_keys())
            Ini::load(row, channel);
    }
    setup_time_resolution();
    for (const Ini::global_key& row : Ini::last_keys())
        Ini::load(row);
    settings.eventfile_ena_edit = settings.eventfile_ena;
}

void form_load(double width, double height) {
    debug_output("Programmstart");
    design_panels();
    load_settings();
    const screen_size size = screen();
    state.screen_w = narrow<i16>(size.width);
    state.screen_h = narrow<i16>(size.height);
    if (!screen_accepted()) {
        event_file_init();
        start_event();
        query_unload(); // nothing measures yet: the program ends here
        return;
    }
    state.design_w = width;
    state.design_h = height;
    design_all_channels();
    setup_channels_in_use();
    setup_missing_channels();
    serial::get_serial_port();
    sensor::state.measure_running = false;
    event_file_init();
    start_event();
    if (settings.autostart) mainfrm::startstop_click();
    state.Caption = " Quarvo / Tyxo Data Logger  " + std::string(log::version);
    start_gateway();
}

void start_program(double width, double height) {
    if (const auto holder = folder_holder()) {
        message_box("Another Tyxo Data Logger runs in this folder: " + *holder + ".\r\nThis one ends now.",
                    box_icon::critical);
        end_program(second_copy_code);
        return;
    }
    hold_events(true);
    const auto why = attempt([&] { form_load(width, height); });
    hold_events(false); // before the box too, which would not wait for the operator otherwise
    if (!why) return;
    message_box(*why, box_icon::critical);
    end_program(wrong_settings_code);
}

/// Looks like a mistake and stays: the event file says that the program stopped, whatever the answer is
/// (LockedClose.TheStopLineIsWrittenBeforeAnybodyIsAsked).
bool query_unload() {
    stop_event();
    return end_if_granted();
}

void end_without_question(int exit_code) {
    if (state.announced) stop_event();
    end_program(exit_code);
}

bool query_end_session(const std::function<bool()>& may_ask) {
    stop_event();
    if (sensor::state.measure_running && !may_ask())
        return true; // the log goes on as long as the session lets it
    return end_if_granted();
}

} // namespace tyxo::mainfrm
