#pragma once
// A checker that is told a history by hand: what came in, and each output as the formats have it.

#include "checker.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace months::check {

struct told_history {
    static constexpr std::string_view settings =
        "[tyxo]\r\nupd_periode= 500\r\nadc_offset=479\r\nzyl_speed_range=1\r\nscale_polar_a= 2.5\r\n"
        "scale_polar_t= .75\r\nmax_sensors= 2\r\neventfile_ena=1\r\nevtpath=C:\\logs\\\r\n"
        "comport 1=1\r\nlocation 1=Engine 1\r\nlogpath 1=C:\\logs\\\r\ntypecode 1=TX-6\r\n"
        "comport 2=2\r\nlocation 2=Engine 2\r\nlogpath 2=C:\\logs\\\r\n"
        "IPAutoC=1\r\nIPport=502\r\nREGBase=1000\r\nIPenaTRS=1\r\nIPsysstat=1\r\nIPpolar=1\r\nIPRefresh="
        "2\r\n";
    static constexpr std::string_view events = "C:/logs/TY_all_events.txt";
    static constexpr std::string_view log = "C:/logs/Engine 1/20260702Qu_Engine 1.xlg";

    checker check;
    seen now;
    std::string box;
    std::string event_time = "##;07-02-2026;13:05:09;", box_time = "07-02-2026 13:05:09 ";

    told_history() { at(0); }

    /// The clock shows 13:05:09 at the beginning.
    void at(std::int64_t ms) {
        const auto seconds = static_cast<int>(ms / 1000) + 9;
        wall(ms, {2026, 7, 2, 13, 5 + seconds / 60, seconds % 60});
    }
    void wall(std::int64_t ms, const wall_time& local) {
        check.time(ms, local);
        char text[64];
        std::snprintf(text, sizeof text, "%02d-%02d-%04d", local.month, local.day, local.year);
        const std::string date = text;
        std::snprintf(text, sizeof text, "%02d:%02d:%02d", local.hour, local.minute, local.second);
        event_time = "##;" + date + ";" + text + ";";
        box_time = date + " " + text + " ";
    }

    /// With check digits and CR LF.
    static std::string framed(const std::string& body) {
        int sum = 0;
        for (std::size_t i = 1; i < body.size(); ++i)
            sum += static_cast<unsigned char>(body[i]);
        char digits[8];
        std::snprintf(digits, sizeof digits, "%02x", (0x10000 - sum) & 0xff);
        return body + digits + "\r\n";
    }
    static std::string hex4(int value) {
        char digits[12];
        std::snprintf(digits, sizeof digits, "%04X", value & 0xffff);
        return digits;
    }

    void done() {
        now.status_text = box;
        now.status_text_end = box.size();
        check.handler_ended(now);
    }
    void told_box(const std::string& text) { box += box_time + text + "\r\n"; }
    void told_event(const std::string& text) { check.file_appended(events, event_time + text + "\r\n"); }
    void told_log(const std::string& line) { check.file_appended(log, line + "\r\n"); }

    void begin(std::string_view with = settings) {
        check.program_starts(with);
        check.debug_output("Programmstart");
        check.file_created(events);
        told_event("Tyxo Logger software started !");
        done();
    }
    /// After an end of any kind, in an event file that is still there.
    void begin_again() {
        now = {};
        box.clear();
        check.program_starts(settings);
        check.debug_output("Programmstart");
        told_event("Tyxo Logger software started !");
        done();
    }
    void start_channel_1() {
        check.start_asked(0, true);
        told_box("KVD Engine 1 ## Measure started ");
        told_event("KVD Engine 1 ## Measure started ");
        now.channel[0].measuring = true;
        done();
    }
    /// Whose log is open.
    void stop_channel_1() {
        check.stop_asked(0);
        told_log("<!-- 13:05:09 Measure Stopped -->");
        told_box("KVD Engine 1 ## Measure stopped ");
        told_event("KVD Engine 1 ## Measure stopped ");
        now.channel[0].measuring = false;
        done();
    }
    /// Six cylinders in line: what the golden file of that name has in its header.
    static std::string parameters(const std::string& alarm_level = "0140") {
        std::string body = ":06" + alarm_level + "004B05DC0672000400060004" + "010503060204";
        body += std::string(2 * 18, '0') + "0000" + "00780078007800780078" + std::string(4 * 18, '0');
        body += "0011"
                "0018"
                "000A"
                "2D"
                "006E"
                "0082"
                "0320"
                "V3.10-0042"
                "0003"
                "0005"
                "005A";
        return framed(body + "000C"
                             "0040"
                             "012C"
                             "SN004711"
                             "0055");
    }
    static std::string header() {
        const auto path =
            std::filesystem::path(__FILE__).parent_path() / "../../logging/golden/six_cylinders_in_line.xlg";
        std::ifstream stream(path, std::ios::binary);
        const std::string golden{std::istreambuf_iterator<char>(stream), {}};
        const std::string last = "<LOG>\r\n";
        return golden.substr(0, golden.find(last) + last.size());
    }
    /// The program runs, channel 1 measures, and its log has no header yet.
    void begin_log() {
        begin();
        start_channel_1();
        check.arrives(0, parameters());
        check.file_created(log);
    }
    void begin_log_without_room() {
        begin_log();
        check.file_refused(log, header());
        done();
    }
    /// The program runs, channel 1 measures, and its log is begun.
    void logging() {
        begin_log();
        check.file_appended(log, header());
        done();
    }
    static constexpr const char* measured_body = ":0181FE39D0000084D201E00046";
    static constexpr const char* measured_line = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>";
    void shows_measured() { now.channel[0].values = {51, 1480, 1234, 48, 7}; }
    /// What a tick behind `measured` shows.
    void shows_tick() {
        ++now.channel[0].chart_rows;
        now.channel[0].chart_last = {51, 74, 100, 617, 48, 7}; // RPM /20
        now.channel[0].panel_speed = 1480;
        now.channel[0].panel_tsignal = now.channel[0].digits_tsignal = 51;
        now.channel[0].digits_tmv = 12.34;
    }
    void measured() {
        check.arrives(0, framed(measured_body));
        told_log(measured_line);
        shows_measured();
        done();
    }
    /// A short status frame of version V2.07.
    static std::string status(int alarm, int error) {
        return framed(":08V2.07" + hex4(alarm) + hex4(error) + "0000");
    }
    void status_arrives(int alarm, int error) {
        check.arrives(0, status(alarm, error));
        now.channel[0].status_alarm = alarm;
        now.channel[0].status_error = error;
        now.channel[0].alarm_lamp = now.channel[0].latched = (alarm & 0x80) != 0;
        now.channel[0].prealarm_lamp = (alarm & 0x40) != 0;
        now.channel[0].ready_lamp = (alarm & 0x20) != 0;
    }
    /// All samples are the same.
    static std::string curve(const std::string& code, int sample) {
        std::string all;
        for (int block = 1; block <= 4; ++block) {
            std::string body = ":" + code + "0" + std::to_string(block);
            for (int i = 0; i < 64; ++i)
                body += hex4(sample);
            all += framed(body);
        }
        return all;
    }
    static std::string curve_line(const std::string& record, int sample) {
        std::string line = "<" + record + "> 13:05:09 ";
        for (int i = 0; i < 256; ++i)
            line += std::to_string(sample) + " ";
        return line + " </" + record + ">";
    }

    void fine() {
        for (const complaint& c : check.complaints())
            ADD_FAILURE() << c.ms << " ms, " << c.what;
    }
    /// The first complaint has these words.
    void wrong(std::string_view words) {
        ASSERT_FALSE(check.complaints().empty());
        EXPECT_NE(check.complaints().front().what.find(words), std::string::npos)
            << check.complaints().front().what;
    }
};

class told_plant : public testing::Test, public told_history {};

} // namespace months::check
