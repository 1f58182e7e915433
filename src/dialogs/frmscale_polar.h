#pragma once
// The dialog "Setup scales": scale of the polar curves, refresh time of the charts, period of the log files.
//
// An option takes effect at once; "OK" stores all four values. There is no way back: closing the dialog in
// another way keeps the new values until the program ends, and stores nothing.

#include "basics/types.h"
#include "controls/controls.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tyxo {

template <class Value> struct choice_row {
    Value value;
    std::string_view caption;
};

/// The choices of `Opt_scale` and `Opt_scale_t`, `Opt_refr` (ms) and `Opt_logtime` (`log_mode`).
inline constexpr std::array<choice_row<double>, 8> scale_choices{{
    {5.0, "x 5"},
    {3.0, "x 3"},
    {2.0, "x 2"},
    {1.0, "x 1"},
    {0.5, "x 0.5"},
    {0.2, "x 0.2"},
    {0.1, "x 0.1"},
    {0.03, "x 0.03"},
}};
inline constexpr std::array<choice_row<i16>, 4> refresh_choices{{
    {100, "100 ms"},
    {250, "250 ms"},
    {500, "500 ms"},
    {1000, "1000 ms"},
}};
inline constexpr std::array<choice_row<i16>, 2> log_period_choices{{
    {1, "1 hour"},
    {0, "1 day  (24 hours)"},
}};

/// The selected option of an array; none for a value that is not among the choices.
using selection = std::optional<std::size_t>;

namespace frmscale_polar {

struct window {
    Form form{.Caption = "Setup scales"};
    Frame Frame1{.Caption = "Scale polardisplay"};
    Frame Frame_scale_a{.Caption = "Scale Angle acceleration"};
    Frame Frame_scale_t{.Caption = "Scale Thermosignal"};
    Frame Frame_refresh{.Caption = "Refresh time for chart in ms"};
    Frame Frame_logtime{.Caption = "Time interval for creating new logfile"};
    selection Opt_scale;
    selection Opt_scale_t;
    selection Opt_refr;
    selection Opt_logtime;
    Command cmd_default{.Caption = "default settings"};
    Command Cmd_ok{.Caption = "OK"};
};

inline window state;

/// An option was selected. Failure: there is no such option.
void Opt_scale_click(std::size_t index);
void Opt_scale_t_click(std::size_t index);
void Opt_refr_click(std::size_t index);
void Opt_logtime_click(std::size_t index);

/// Both scales as they are delivered; nothing while anything measures.
void cmd_default_click();

/// Stores the four values, also while anything measures, and closes the dialog.
void Cmd_ok_click();

/// The dialog was closed in another way.
void unload();

} // namespace frmscale_polar

namespace mainfrm {

/// The menu entry: loads the dialog and shows it. While anything measures, the values can only be looked at.
void setup_scale_click();

} // namespace mainfrm

} // namespace tyxo
