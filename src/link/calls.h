#pragma once
// Everything that the link tells the rest of the system. `app/wiring.cpp` fills the table: it is the map of
// who reacts to what. A call that is not wired does nothing.

#include "basics/types.h"

#include <functional>
#include <string_view>

namespace tyxo {

/// Only `stop_lock` asks the operator; the others wait no longer than a file or a message box does. What a
/// call raises comes back to the handler that the link runs in: to `on_comm` for all that a frame sets off.
struct link_calls {
    template <class Signature> using call = std::function<Signature>;

    // Logs and the event file.
    call<void(i16 channel)> createlog = [](i16) {};
    call<void(i16 channel)> close_log = [](i16) {};
    call<void(i16 channel, std::string_view kind)> log_record = [](i16, std::string_view) {};
    call<void(i16 channel, std::string_view text)> log_note = [](i16, std::string_view) {};
    call<void(i16 channel, std::string_view text)> log_comment = [](i16, std::string_view) {};
    call<void(std::string_view text)> event_line = [](std::string_view) {};

    // A finished curve, and the end of one when the link is lost.
    call<void(i16 channel)> process_thermo = [](i16) {};
    call<void(i16 channel)> process_angacc = [](i16) {};
    call<void(i16 channel)> clear_curves = [](i16) {};

    // A processed curve, for the plant controller.
    call<void(i16 channel)> calc_thermo_cyl = [](i16) {};
    call<void(i16 channel)> calc_angacc_cyl = [](i16) {};

    // Alarm alert: raise the window, and name a channel in it.
    call<void()> open_alert = [] {};
    call<void(i16 channel)> show_alert_line = [](i16) {};
    call<void(i16 channel, std::string_view text)> alert_text = [](i16, std::string_view) {};

    /// Asks the operator before a measurement stops, and tells what will; True lets it stop.
    call<bool(std::string_view what)> stop_lock = [](std::string_view) { return true; };
};

inline link_calls calls;

} // namespace tyxo
