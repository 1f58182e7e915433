#include "link/status_update.h"

#include "basics/number_text.h"
#include "link/calls.h"
#include "link/channel_rec.h"
#include "link/indicators.h"

#include <array>

namespace tyxo::sensor {

namespace {

enum class rule {
    all_bits, ///< set when all bits of the mask are set
    equal,    ///< set when the word is the mask
};

/// A bit that is watched. A direction without a box text writes nothing.
struct status_row {
    rule test;
    i32 channel_rec::*word;
    i32 mask;
    bool channel_rec::*latch;
    std::string_view prefix;
    event_texts on;
    event_texts off;
    bool on_numbered = false; ///< ON in the event file names the channel by its number
};

constexpr auto errors = &channel_rec::status_error;
constexpr auto alarms = &channel_rec::status_alarm;
constexpr auto inhibit = &channel_rec::alminhibit_on;
constexpr std::string_view eva = "Evaluator";
constexpr std::string_view kvd = "KVD";

/// Texts of a row whose event file line reads like the box.
constexpr event_texts same(std::string_view box, std::string_view comment) {
    return {box, comment, box};
}
constexpr event_texts none{};

// The place in the table is the order of the messages.
constexpr std::array<status_row, 18> status_rows{{
    // clang-format off
    {rule::all_bits, errors, 0x8000, &channel_rec::lat_mem_overflow, eva, same(" ## Memory Overflow", "Evaluator Memory Overflow"), none},
    {rule::all_bits, errors, 0x4000, &channel_rec::lat_crc_error, eva, {" ## CRC Error", "Evaluator CRC Error", " CRC Error"}, none},
    {rule::all_bits, errors, 0x2000, &channel_rec::lat_mem_timeout, eva, same(" ## Memory Timeout", "Evaluator Memory Timeout"), none},
    {rule::all_bits, errors, 0x1000, &channel_rec::lat_mem_error, eva, same(" ## Memory Error", "Evaluator Memory Error"), none},
    {rule::all_bits, errors, 0x0004, &channel_rec::lat_inca, kvd, same(" ## INCA signal Error", "KVD INCA Error"), none},
    {rule::all_bits, errors, 0x0008, &channel_rec::lat_incb, kvd, same(" ## INCB signal Error", "KVD INCB Error"), none},
    {rule::all_bits, errors, 0x0010, &channel_rec::lat_sync, kvd, same(" ## Sync signal Error", "KVD SYNC Error"), none},
    {rule::all_bits, errors, 0x0063, &channel_rec::lat_not_connected, kvd, same(" ## Not connected", ""), none},
    {rule::all_bits, errors, 0x0020, &channel_rec::lat_testsignal, kvd, same(" ## Test signal Error", "KVD TESTSIGNAL Error"), none},
    {rule::all_bits, alarms, 0x2000, &channel_rec::lat_overspeed, kvd, same(" ## Overspeed Alarm ON", "KVD Overspeed Alarm ON"), same(" ## Overspeed Alarm OFF", "KVD Overspeed Alarm OFF")},
    {rule::all_bits, alarms, 0x0100, &channel_rec::lat_main_error, kvd, same(" ## Main Error", "KVD Main error"), none},
    {rule::all_bits, alarms, 0x0002, &channel_rec::lat_main_dc, kvd, same(" ## Main Alarm DC ON", "KVD Main ALARM DC ON"), same(" ## Main Alarm DC OFF", "KVD Main ALARM DC OFF")},
    {rule::all_bits, alarms, 0x0001, &channel_rec::lat_pre_dc, kvd, same(" ## Prealarm DC ON", "KVD Prealarm DC ON"), same(" ## Prealarm DC OFF", "KVD Prealarm DC OFF")},
    {rule::all_bits, alarms, 0x0008, &channel_rec::lat_main_ac, kvd, same(" ## Main Alarm AC ON", "KVD Main ALARM AC ON"), same(" ## Main Alarm AC OFF", "KVD Main ALARM AC OFF")},
    {rule::all_bits, alarms, 0x0004, &channel_rec::lat_pre_ac, kvd, same(" ## Prealarm AC ON", "KVD Prealarm AC ON"), same(" ## Prealarm AC OFF", "KVD Prealarm AC OFF")},
    {rule::all_bits, alarms, 0x8000, &channel_rec::lat_main_alarm, kvd, same(" ## Main Alarm ON", "KVD Main ALARM ON"), same(" ## Main Alarm OFF", "KVD Main ALARM OFF")},
    // Looks like a mistake and stays: in the event file a prealarm has the channel's number for its location, and no "##"
    // (StatusMessages.PrealarmOnNamesTheChannelNumberInTheEventFile).
    {rule::all_bits, alarms, 0x4000, &channel_rec::lat_prealarm, kvd, {" ## Prealarm ON", "KVD Prealarm ON", " Prealarm ON"}, same(" ## Prealarm OFF", "KVD Prealarm OFF"), true},
    {rule::equal, inhibit, 1, &channel_rec::lat_inhibit, kvd, same(" ## Alarm Inhibit ON", "KVD Alarm Inhibit ON"), same(" ## Alarm Inhibit OFF", "KVD Alarm Inhibit OFF")},
    // clang-format on
}};

// Bits of `status_alarm` that lamps and the alert follow.
constexpr i32 main_relay = 0x0080;
constexpr i32 prealarm_relay = 0x0040;
constexpr i32 ready = 0x0020;
constexpr i32 main_ac = 0x0008;
constexpr i32 main_dc = 0x0002;

void write_message(i16 channel, std::string_view prefix, const event_texts& texts,
                   const std::string& filed_name) {
    if (texts.box.empty()) return;
    const std::string start = std::string(prefix) + ' ';
    raise_event(channel, {' ' + start + state.channels[channel].location + std::string(texts.box),
                          texts.comment, start + filed_name + std::string(texts.file)});
}

void run_row(i16 channel, const status_row& row) {
    channel_rec& rec = state.channels[channel];
    const i32 word = rec.*row.word;
    const bool set = row.test == rule::equal ? word == row.mask : (word & row.mask) == row.mask;
    bool& latch = rec.*row.latch;
    if (set == latch) return;
    latch = set;
    const bool numbered = set && row.on_numbered;
    write_message(channel, row.prefix, set ? row.on : row.off,
                  numbered ? channel_number(channel) : rec.location);
}

void raise_alert(i16 channel) {
    const channel_rec& rec = state.channels[channel];
    constexpr std::size_t location_part = 25;
    if (!state.alert_open) calls.open_alert();
    calls.show_alert_line(channel);
    const std::string name = rec.location.substr(0, location_part);
    if ((rec.status_alarm & main_ac) != 0) calls.alert_text(channel, name + "  Mainalarm AC");
    if ((rec.status_alarm & main_dc) != 0) calls.alert_text(channel, name + "  Mainalarm DC");
    state.alert_latched[channel] = true;
}

void show_relays(i16 channel) {
    const i32 word = state.channels[channel].status_alarm;
    const bool main = (word & main_relay) != 0;
    indicators.LED_Alarm[channel].Active = main;
    if (!main) {
        state.alert_latched[channel] = false;
    } else if (!state.alert_latched[channel]) {
        raise_alert(channel);
    }
    indicators.LED_prealarm[channel].Active = (word & prealarm_relay) != 0;
    indicators.LED_Rdy[channel].Active = (word & ready) != 0;
}

void show_inhibit(i16 channel) {
    const channel_rec& rec = state.channels[channel];
    const bool inhibited = rec.alminhibit_on == 1;
    indicators.Lbl_alm1[channel].Visible = !inhibited;
    indicators.lbl_alm2[channel].Visible = !inhibited;
    indicators.Lbl_alminhibit[channel].Visible = inhibited;
    indicators.Lbl_inhtime[channel].Visible = inhibited;
    if (inhibited) indicators.Lbl_inhtime[channel].Caption = plain(rec.alminhibit_left);
}

} // namespace

void status_update(i16 channel) {
    const channel_rec& rec = channel_at(channel);
    indicators.Text_status.keep_last(status_text_limit);
    for (const status_row& row : status_rows)
        run_row(channel, row);
    show_relays(channel);
    if (!rec.connected) {
        const std::string text = "Evaluator " + channel_number(channel) + " not connected";
        raise_event(channel, {' ' + text, "Evaluator not connected", text});
    }
    indicators.Text_status.caret_to_end();
    show_inhibit(channel);
}

} // namespace tyxo::sensor
