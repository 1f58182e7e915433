#pragma once
// The core on its simulated machine, with the checker told of everything that goes in and comes out. What
// came out is found by comparing the machine before and behind each handler.

#include "app/mainfrm.h"
#include "checker.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/start_stop.h"
#include "logging/logging_machine.h"
#include "platform/clock.h"

#include <cmath>
#include <map>
#include <string>
#include <string_view>

namespace months {

using namespace tyxo::simulation;
using tyxo::i16;
using tyxo::sensor::state;

class watched_core {
  public:
    check::checker checker;
    int records = 0, registers = 0; ///< so many outputs were checked

    watched_core() { fresh_world(); }

    void start(const std::string& settings) {
        tell_time();
        checker.program_starts(settings);
        const bool by_itself = settings.find("autostart=1") != settings.npos;
        for (int channel = 0; by_itself && channel < settings[settings.find("max_sensors= ") + 13] - '0';
             ++channel)
            checker.start_asked(channel, true);
        fresh_world_keeping_files(settings);
        tyxo::mainfrm::start_program(1280, 960);
        look();
    }
    void close() {
        tell_time();
        checker.close_asked();
        tyxo::mainfrm::query_unload();
        look();
        checker.program_ends();
    }
    /// The program is gone, and with `torn` so is the end of a record that a log may have ended in.
    void kill(bool power_cut, bool torn) {
        tell_time();
        power_cut ? checker.power_cut() : checker.killed();
        for (auto& [path, content] : world().files) {
            const auto last = content.rfind("<REC");
            const bool fresh = written_.contains(path) && world().now_ms - written_[path] < 1000;
            if (torn && fresh && last != content.npos && content.find('\n', last) + 1 == content.size()) {
                content.resize(last + (content.size() - last) / 2);
            }
            sizes_[path] = content.size();
        }
        all_files();
    }
    /// Somebody moves the log of a channel away.
    void move_log(i16 channel) {
        tell_time();
        for (const auto& [path, content] : world().files) {
            if (!path.ends_with("Qu_Engine " + std::to_string(channel + 1) + ".xlg")) continue;
            const std::string name = path;
            take_file_away(name);
            checker.file_gone(name);
            sizes_.erase(name);
            return;
        }
    }
    void receive(i16 channel, std::string_view bytes) {
        tell_time();
        checker.arrives(channel, bytes);
        tyxo::simulation::receive(channel, bytes);
        look();
    }
    void click(i16 channel) {
        tell_time();
        const bool opens = !world().ports[static_cast<i16>(channel + 1)].refuses_to_open;
        if (state.channel_running[channel]) {
            checker.stop_asked(channel);
        } else {
            checker.start_asked(channel, opens);
        }
        tyxo::mainfrm::start_channel_click(channel);
        look();
    }
    /// The menu entry for all channels; it stops them, too.
    void click_all() {
        tell_time();
        for (i16 channel = 0; channel < state.max_sensors; ++channel)
            state.measure_running ? checker.stop_asked(channel) : checker.start_asked(channel, true);
        tyxo::mainfrm::startstop_click();
        look();
    }
    void click_gauge_name(i16 channel) {
        tell_time();
        const bool teff = state.channels[channel].th_dig_val == 1;
        checker.setting("th_dig_val " + std::to_string(channel + 1), teff ? "0" : "1");
        tyxo::mainfrm::Label4_click(channel);
        look();
    }
    /// A log an hour, or a log a day.
    void choose_period(bool hour) {
        tell_time();
        checker.setting("log_mode", hour ? "1" : "0");
        tyxo::mainfrm::setup_scale_click();
        tyxo::frmscale_polar::Opt_logtime_click(hour ? 0 : 1);
        tyxo::frmscale_polar::Cmd_ok_click();
        look();
    }
    void name_channel(i16 channel, const std::string& location) {
        tell_time();
        checker.setting("location " + std::to_string(channel + 1), location);
        tyxo::mainfrm::setup_click();
        tyxo::frmSetup::Text_sensor_loc_change(channel, location);
        tyxo::frmSetup::cmd_OK_click();
        look();
    }
    void disturb_controller() {
        tell_time();
        checker.controller_disturbed();
        controller_closes();
        look();
    }
    void confirm() {
        if (!state.alert_open) return;
        tell_time();
        checker.alert_confirmed();
        tyxo::FrmAlert::CmdAck_click();
        look();
    }
    void reset_inhibit(i16 channel) {
        tell_time();
        checker.inhibit_reset(channel);
        tyxo::mainfrm::Lbl_alminhibit_click(channel);
        tyxo::FrmResetInhTime::CmdDo_click();
        look();
    }
    void pass(std::int64_t ms) {
        for (const std::int64_t end = world().now_ms + ms; world().now_ms < end;) {
            advance(1);
            tell_time();
            look();
        }
    }
    void set_clock(const tyxo::local_time& local) {
        set_local(local);
        tell_time();
    }
    void all_files() {
        for (const auto& [path, content] : world().files)
            if (path != "tyxo.ini") checker.file_found(path, content);
        checker.all_files_found();
    }

  private:
    void fresh_world_keeping_files(const std::string& settings) {
        const auto files = world().files;
        const auto folders = world().folders;
        const std::int64_t now = world().now_ms;
        const auto local = tyxo::local_now();
        prepare(settings);
        world().now_ms = world().local_set_ms = now;
        world().local = local;
        world().folders.insert(folders.begin(), folders.end());
        for (const auto& [path, content] : files)
            if (path != "tyxo.ini") world().files[path] = content;
        sent_.clear();
        debug_ = boxes_ = frames_ = 0;
        rows_ = {};
        last_ = {};
        written_.clear();
    }
    static void prepare(const std::string& settings) {
        fresh_world();
        for (const char* folder : {"C:", "C:/logs"})
            world().folders.insert(folder);
        put_file("tyxo.ini", settings);
        tyxo::wire();
        tyxo::calls.stop_lock = [](std::string_view) { return true; };
    }
    void tell_time() {
        const tyxo::local_time l = tyxo::local_now();
        checker.time(world().now_ms, {l.year, l.month, l.day, l.hour, l.minute, l.second});
    }
    /// What each handler does first is told first: a frame to the controller, or the command to an Evaluator.
    void look() {
        for (; frames_ < world().plant.frames.size(); ++frames_, ++registers)
            checker.sent_to_controller(world().plant.frames[frames_].bytes);
        for (i16 channel = 0; channel < 4; ++channel) {
            const std::string& sent = tyxo::simulation::sent(channel);
            const std::string_view news = std::string_view(sent).substr(sent_[channel]);
            if (!news.empty()) checker.sent_to_line(channel, news);
            sent_[channel] = sent.size();
        }
        for (; debug_ < world().debug.size(); ++debug_)
            checker.debug_output(world().debug[debug_]);
        const std::int64_t all = rows(0) + rows(1) + rows(2) + rows(3);
        if (all != rows_) checker.chart_tick();
        rows_ = all;
        look_at_files();
        for (; boxes_ < world().boxes.size(); ++boxes_) {
            const std::string& text = world().boxes[boxes_].text;
            if (text.starts_with("Directory for")) checker.file_refused("C:/nowhere/TY_all_events.txt", "");
            checker.message_shown(text);
        }
        checker.handler_ended(seen());
    }
    void look_at_files() {
        for (const auto& [path, content] : world().files) {
            if (path == "tyxo.ini") continue;
            const auto known = sizes_.find(path);
            if (known == sizes_.end()) checker.file_created(path);
            std::size_t& size = sizes_[path];
            if (content.size() > size) written_[path] = world().now_ms;
            records += content.size() > size ? 1 : 0;
            if (content.size() > size) checker.file_appended(path, std::string_view(content).substr(size));
            size = content.size();
        }
    }
    static std::int64_t rows(i16 channel) {
        return tyxo::charts.rows[channel].window(tyxo::strip_spans[0]).rows();
    }
    static double newest(i16 channel, std::size_t curve) {
        std::vector<tyxo::strip_point> points;
        tyxo::charts.rows[channel].window(tyxo::strip_spans[0]).points(curve, 2000, points);
        for (auto point = points.rbegin(); point != points.rend(); ++point)
            if (!std::isnan(point->value)) return point->value;
        return tyxo::no_value;
    }
    check::seen seen() {
        check::seen now;
        for (i16 i = 0; i < 4; ++i) {
            check::seen_channel& c = now.channel[static_cast<std::size_t>(i)];
            const tyxo::channel_rec& r = state.channels[i];
            using tyxo::indicators;
            c.measuring = state.channel_running[i];
            c.latched = state.alert_latched[i];
            c.alarm_lamp = indicators.LED_Alarm[i].Active;
            c.prealarm_lamp = indicators.LED_prealarm[i].Active;
            c.ready_lamp = indicators.LED_Rdy[i].Active;
            c.inhibit_shown = indicators.Lbl_alminhibit[i].Visible;
            c.values = {double(r.tsignal), double(r.speed), r.tvoltage, double(r.teff_dc), double(r.teff_ac)};
            c.status_alarm = r.status_alarm;
            c.status_error = r.status_error;
            c.status_ext = r.status_ext;
            c.alminhibit_left = r.alminhibit_left;
            c.panel_speed = indicators.drehzahl[i].Position;
            c.panel_tsignal = tyxo::panels.Gauge_thermo[i].Position;
            c.digits_tsignal = indicators.digi_Thermo[i].Value;
            c.digits_tmv = indicators.t_mv[i].Value;
            c.chart_rows = rows(i);
            check::seen_channel& last = last_.channel[static_cast<std::size_t>(i)];
            for (std::size_t curve = 0; last.chart_rows != c.chart_rows && curve < 6; ++curve)
                last.chart_last[curve] = newest(i, curve);
            last.chart_rows = c.chart_rows;
            c.chart_last = last.chart_last;
        }
        now.alert_open = state.alert_open;
        now.status_text_end = tyxo::indicators.Text_status.appended();
        text_ = tyxo::indicators.Text_status.text();
        now.status_text = text_;
        return now;
    }

    std::map<std::string, std::size_t> sizes_;
    std::map<std::string, std::int64_t> written_; ///< when, in this run of the program
    std::map<i16, std::size_t> sent_;
    std::size_t debug_ = 0, boxes_ = 0, frames_ = 0;
    std::int64_t rows_ = 0;
    check::seen last_; ///< of the charts, whose points take their time
    std::string text_;
};

} // namespace months
