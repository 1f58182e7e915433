#pragma once
// The controls of the main window that the link itself writes. Control arrays are indexed by channel.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "controls/controls.h"
#include "controls/text_box.h"

#include <string>
#include <string_view>

namespace tyxo {

struct indicator_controls {
    per_channel<iLedRoundX> LED_Alarm;
    per_channel<iLedRoundX> LED_prealarm;
    per_channel<iLedRoundX> LED_Rdy;

    per_channel<Label> Lbl_alm1; ///< names of the alarm relays, hidden during an alarm inhibit
    per_channel<Label> lbl_alm2;
    per_channel<Label> Lbl_alminhibit; ///< the reverse
    per_channel<Label> Lbl_inhtime;

    per_channel<iAngularGaugeX> drehzahl;
    per_channel<iSevenSegmentAnalogX> dig_drehzahl;
    per_channel<iAnalogDisplayX> digi_Thermo;
    per_channel<iAnalogDisplayX> t_mv;

    Command startstop{"Start all channels"};
    per_channel<Command> start_channel{
        {{"Start channel 1"}, {"Start channel 2"}, {"Start channel 3"}, {"Start channel 4"}}};
    Command Quit{"E&xit"};

    text_box Text_status;
    std::string StatusBar; ///< panel 1
};

inline indicator_controls indicators;

/// The texts of one event for the three places that record it.
struct event_texts {
    std::string_view box;     ///< for `Text_status`, behind date and time
    std::string_view comment; ///< for the channel's log; empty for none
    std::string_view file;    ///< for the event file, behind date and time
};

/// Puts an event into `Text_status`, the channel's log and the event file, in this order, each with its own
/// reading of the clock. What a file does not take is lost there and raises nothing.
void raise_event(i16 channel, const event_texts& texts);

/// The channel's number in texts: the index plus one.
[[nodiscard]] std::string channel_number(i16 channel);

} // namespace tyxo
