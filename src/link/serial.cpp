#include "link/serial.h"

#include "link/channel_rec.h"
#include "link/frame_dispatch.h"
#include "link/hex.h"
#include "link/supervision.h"
#include "platform/debug_output.h"

#include <algorithm>

namespace tyxo::serial {

namespace {

struct event_text {
    i32 event;
    std::string_view text;
};

// Line changes: known, and nothing is done about them.
constexpr std::array<event_text, 5> line_changes{{
    {3, "CTS ge\xE4ndert"},
    {4, "DSR ge\xE4ndert"},
    {5, "CD ge\xE4ndert"},
    {6, "Das Telefon klingelt."},
    {7, "Dateiende erkannt."},
}};

constexpr std::array<event_text, 10> line_errors{{
    {1001, "Break empfangen"},
    {1007, "CD-Zeit\xFC"
           "berschreitung"},
    {1002, "CTS-Zeit\xFC"
           "berschreitung"},
    {1011, "Fehler bei DCB-Abfrage"},
    // Looks like a mistake and stays: keyed by 0, so that a DSR time-out, 1003, counts as unknown
    // (PortEventOf.GoesToTheDebugOutputAndNowhereElse).
    {0, "DSR-Zeit\xFC"
        "berschreitung"},
    {1004, "Frame-Fehler"},
    {1006, "\xDC"
           "berlauffehler"},
    {1008, "Empfangspuffer\xFC"
           "berlauf"},
    {1009, "Parit\xE4tsfehler"},
    {1010, "Sendepuffer voll"},
}};
constexpr std::string_view unknown_event = "Fehler oder Ereignis unbekannt";

template <std::size_t N>
std::string_view text_of(const std::array<event_text, N>& table, i32 event, std::string_view otherwise) {
    for (const event_text& row : table) {
        if (row.event == event) return row.text;
    }
    return otherwise;
}

void report_line_event(i32 event) {
    if (!text_of(line_changes, event, "").empty()) return;
    debug_output(text_of(line_errors, event, unknown_event));
}

void complete_frame(i16 channel) {
    state.rx_start_seen[channel] = false;
    state.rx_cr_seen[channel] = false;
    state.rx_spare[channel] = false;
    // Looks like a mistake and stays: before the check, so that a frame with a wrong one keeps the link alive
    // too (Supervision.FramesWithAWrongCheckKeepTheLinkAliveAndStoreNothing).
    funct::timeout_timer_stop(channel);
    funct::timeout_timer_start(channel);
    state.rx_frame[channel] += "\r\n";
    sensor::frame_dispatch(state.rx_frame[channel], channel);
}

/// The characters that make a frame; all others are its content. An object, for the search calls no pointer.
constexpr auto is_mark = [](char letter) { return letter == ':' || letter == '\r' || letter == '\n'; };

void receive_mark(i16 channel, char letter) {
    if (letter == ':') {
        state.rx_start_seen[channel] = true;
        state.rx_cr_seen[channel] = false;
        state.rx_spare[channel] = false;
        state.rx_frame[channel] = ':';
    } else if (letter == '\r') {
        if (state.rx_start_seen[channel]) state.rx_cr_seen[channel] = true;
    } else if (state.rx_start_seen[channel] && state.rx_cr_seen[channel]) {
        complete_frame(channel);
    }
}

/// Closes a port. That takes until the last byte is sent, and what comes in meanwhile is nobody's any more.
void close(MSComm& line) {
    line.RThreshold(0);
    line.PortOpen(false);
}

/// The description of the last failure, or nothing.
std::optional<std::string> receive(i16 channel) {
    std::string& chunk = state.rx_chunk[channel];
    std::optional<std::string> last = attempt([&] { state.comm[channel].Input(chunk); });
    if (last) chunk.clear();
    for (auto at = chunk.cbegin(); at != chunk.cend();) {
        const auto mark = std::find_if(at, chunk.cend(), is_mark);
        if (state.rx_start_seen[channel]) state.rx_frame[channel].append(at, mark);
        if (mark == chunk.cend()) break;
        if (auto why = attempt([&] { receive_mark(channel, *mark); })) last = std::move(why);
        at = mark + 1;
    }
    if (auto why = attempt([&] { sensor::link_returned(channel); })) last = std::move(why);
    return last;
}

} // namespace

void on_comm(i16 channel) {
    std::optional<std::string> last;
    switch (const i32 event = state.comm[channel].CommEvent()) {
    case comm_event::receive:
        last = receive(channel);
        break;
    case comm_event::send_buffer_low:
        last = attempt([&] { state.comm[channel].RTSEnable(false); });
        break;
    default:
        report_line_event(event);
    }
    if (last) debug_output("mscomm: " + *last);
}

bool port_open(i16 channel, i16 port) {
    MSComm& line = state.comm[channel];
    const auto prepared = attempt(
        [&] {
            if (line.PortOpen()) close(line);
        },
        [&] { line.CommPort(port); }, [&] { line.Settings(comm_settings); });
    if (line.PortOpen()) return prepared.has_value();
    const auto opened =
        attempt([&] { line.PortOpen(true); }, [&] { line.InBufferCount(0); }, [&] { line.OutBufferCount(0); },
                [&] { line.InputMode(1); }, [&] { line.RTSEnable(false); }, [&] { line.RThreshold(1); },
                [&] { line.SThreshold(1); }, [&] { line.Handshaking(0); });
    return prepared || opened;
}

void port_close(i16 channel) {
    if (state.comm[channel].PortOpen()) close(state.comm[channel]);
}

void frame_send(std::string_view body, i16 channel) {
    MSComm& line = state.comm[channel];
    const std::string frame = std::string(body) + funct::frame_lrc(body) + "\r\n";
    debug_output("TX: " + frame);
    const bool was_open = line.PortOpen();
    if (!was_open) {
        line.RThreshold(0); // the channel does not measure: what its Evaluator sends is not for it
        line.CommPort(sensor::state.comport[channel]);
        line.Settings(comm_settings);
        line.PortOpen(true);
    }
    // Also when the frame cannot be handed over: a port is open while its channel measures or for one frame.
    const auto why = attempt([&] { line.Output(frame); },
                             [&] {
                                 if (!was_open) close(line);
                             });
    if (why) throw failure(*why);
}

} // namespace tyxo::serial
