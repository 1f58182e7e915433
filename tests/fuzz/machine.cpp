#include "fuzz/machine.h"

#include "app/mainfrm.h"
#include "app/wiring.h"
#include "dialogs/frmabort.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "gateway/connection.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/cylinder_values.h"
#include "link/hex.h"
#include "link/serial.h"
#include "link/start_stop.h"
#include "link/status_update.h"
#include "logging/evaluator_frames.h"
#include "logging/event_file.h"
#include "platform/simulation.h"
#include "settings/serial_ports.h"

#include <cmath>
#include <tuple>

namespace tyxo::fuzzing {

using simulation::world;

std::string plant_settings(std::string_view more) {
    std::string text = "[tyxo]\r\nupd_periode=500\r\nadc_offset=479\r\nzyl_speed_range=1\r\n"
                       "scale_polar_a=2.5\r\nscale_polar_t=.75\r\nmax_sensors=4\r\n";
    for (const std::string number : {"1", "2", "3", "4"}) {
        text += "comport " + number + "=" + number + "\r\nlocation " + number + "=Engine " + number +
                "\r\nlogpath " + number + "=C:\\logs\\\r\n";
    }
    return text + std::string(more);
}

void start_program_on(std::string_view settings_text) {
    simulation::fresh_world();
    world().folders.insert({"C:", "C:/logs"});
    for (const char* name : {"COM1", "COM2", "COM3", "COM4"})
        world().port_names.push_back({"", name});
    simulation::put_file("tyxo.ini", settings_text);
    wire();
    calls.stop_lock = [](std::string_view) { return true; };
    mainfrm::start_program(1280, 960);
}

void start_plant(const std::function<void(settings_rec&)>& change) {
    static const auto started = [] {
        start_program_on(plant_settings("eventfile_ena=1\r\nevtpath=C:\\logs\\\r\nIPAdr=plc\r\n"));
        return std::make_tuple(world(), sensor::state, settings, panels, charts, indicators, mainfrm::state,
                               FrmAbort::state, serial::serial_ports);
    }();
    simulation::fresh_world();
    std::tie(world(), sensor::state, settings, panels, charts, indicators, mainfrm::state, FrmAbort::state,
             serial::serial_ports) = started;
    wire();
    calls.stop_lock = [](std::string_view) { return true; };
    change(settings);
    event_file_init();
    mainfrm::startstop_click();
    start_gateway();
}

std::string typed_text(input& in) {
    std::string text(in.short_text());
    std::erase_if(text, [](char letter) { return letter == '\r' || letter == '\n'; });
    return text;
}

std::string read_of(std::string_view value) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = value.find_first_not_of(blanks);
    if (first == value.npos) return {};
    const std::string_view text = value.substr(first, value.find_last_not_of(blanks) - first + 1);
    const bool quoted = text.size() > 1 && (text[0] == '"' || text[0] == '\'') && text[0] == text.back();
    return std::string(quoted ? text.substr(1, text.size() - 2) : text);
}

void append_hex(std::string& text, u8 value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[value >> 4U];
    text += digits[value & 15U];
}

void receive_frame(i16 channel, std::string_view body) {
    std::string frame(body);
    frame += funct::frame_lrc(body);
    frame += "\r\n";
    if (!simulation::receive(channel, frame)) return;
    expect(sensor::state.channels[channel].connected, "a link that bytes come from is there");
}

void receive_curve(i16 channel, std::string_view code, i32 first, i32 step) {
    constexpr i32 block_samples = curve_samples / 4;
    for (i32 block = 1; block <= 4; ++block) {
        std::string body = ':' + std::string(code);
        append_hex(body, static_cast<u8>(block));
        for (i32 sample = 0; sample < block_samples; ++sample) {
            const i32 value = first + step * (block % 2 == 0 ? block_samples - sample : sample);
            append_hex(body, static_cast<u8>(value >> 8));
            append_hex(body, static_cast<u8>(value));
        }
        receive_frame(channel, body);
    }
}

void receive_parameters(i16 channel) {
    static const std::string body = [] {
        simulation::parameter_values values;
        values.alarmlevel = 3;
        return simulation::parameter_body(values);
    }();
    receive_frame(channel, body);
}

namespace {

void check_log(std::string_view content) {
    constexpr std::string_view begin = "<?xml version=\"1.0\"?>\r\n";
    expect(content.starts_with(begin), "a log begins with its header");
    expect(content.ends_with("\r\n"), "a log ends with a whole line");
    const auto header_end = content.find("<LOG>\r\n");
    for (std::size_t at = header_end; at < content.size();) {
        const std::size_t end = content.find("\r\n", at);
        const std::string_view line = content.substr(at, end - at);
        const bool record = line.starts_with("<REC") && line[5] == '>' && line.ends_with('>') &&
                            line.substr(line.size() - 7).starts_with("</REC");
        const bool comment = (line.starts_with("<!--") || line.starts_with("<#--")) && line.ends_with("-->");
        expect(record || comment || line == "<LOG>", "every line of a log is whole");
        at = end + 2;
    }
}

void check_events(std::string_view content) {
    expect(content.empty() || content.ends_with("\r\n"), "the event file ends with a whole line");
    while (!content.empty()) {
        expect(content.starts_with("##;"), "every line of the event file has its mark");
        content.remove_prefix(content.find("\r\n") + 2);
    }
}

void check_frames() {
    for (const simulation::sent_frame& frame : world().plant.frames) {
        const std::string& bytes = frame.bytes;
        expect(bytes.size() >= 12, "a frame has a head");
        expect(static_cast<u8>(bytes[5]) + 6U == bytes.size(), "a frame is as long as it says");
        const bool write = bytes[7] == 16;
        expect(write || (bytes[7] == 3 && bytes.size() == 12), "a frame writes or reads");
        expect(!write || bytes.size() == 13U + 2U * static_cast<u8>(bytes[11]), "with all its registers");
    }
}

} // namespace

void check_records() {
    for (const channel_rec& rec : sensor::state.channels) {
        expect(rec.tsignal >= 0 && rec.tsignal <= 3277, "tsignal");
        expect(rec.teff_dc >= 0 && rec.teff_dc <= 6554, "teff_dc");
        expect(rec.teff_ac >= 0 && rec.teff_ac <= 6554, "teff_ac");
        expect(rec.tvoltage >= 0 && rec.tvoltage <= 32768, "tvoltage");
        expect(rec.speed >= 0 && rec.speed <= 6554, "speed");
        for (const i32 value : rec.bar_angacc_val)
            expect(value >= 0 && value <= cylinder_values::greatest_speed, "bar_angacc_val");
        for (const i32 value : rec.bar_thermo_val)
            expect(value >= 0 && value <= cylinder_values::greatest_thermosignal, "bar_thermo_val");
        for (const i32 value : rec.mb_angacc_val)
            expect(value >= 0 && value <= cylinder_values::greatest_speed, "mb_angacc_val");
        for (const i32 value : rec.mb_thermo_val)
            expect(value >= 0 && value <= cylinder_values::greatest_thermosignal, "mb_thermo_val");
    }
    for (const i16 block : sensor::state.thermo_block_last)
        expect(block >= 0 && block <= 3, "thermo_block_last");
    for (const i16 block : sensor::state.angacc_block_last)
        expect(block >= 0 && block <= 3, "angacc_block_last");
}

void check_windows() {
    for (const iXYPlotX& plot : panels.XYplot) {
        for (const plot_curve& curve : plot.curves) {
            expect(curve.points.size() <= curve_samples, "a curve has 256 points at most");
            for (const plot_point& point : curve.points)
                expect(std::isfinite(point.x) && std::isfinite(point.y), "a scope's points are numbers");
        }
    }
    for (const stroke& line : frmdetailedpic::state.surface.strokes)
        for (const double place : {line.x1, line.y1, line.x2, line.y2})
            expect(!std::isnan(place), "a picture's lines are numbers");
    for (const bar_form* bars : {&frmbarpic::state, &Frmbarpic2::state}) {
        for (const bar_series& series : bars->plot.series) {
            expect(series.points.size() <= cylinder_max, "a bar for each cylinder");
            for (const auto& bar : series.points)
                expect(std::isfinite(bar.y), "bars are numbers");
        }
    }
}

void check_files() {
    for (const auto& [path, content] : world().files) {
        if (path.ends_with(".xlg")) check_log(content);
        if (path.ends_with("TY_all_events.txt")) check_events(content);
    }
}

void check_state() {
    constexpr std::size_t one_run = 20'000; // what can be told between two cuts here
    check_records();
    check_windows();
    check_frames();
    expect(indicators.Text_status.size() < sensor::status_text_limit + one_run, "the status text is cut");
    for (i16 channel = 0; channel < channel_count; ++channel) {
        if (serial::state.rx_start_seen[channel])
            expect(serial::state.rx_frame[channel].starts_with(':'), "an open frame begins with its mark");
    }
}

} // namespace tyxo::fuzzing
