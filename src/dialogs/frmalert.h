#pragma once
// The alarm alert: a window of its own that flashes, beeps and sounds from the first main alarm until the
// operator confirms it. It changes nothing about the alarm.

#include "basics/per_channel.h"
#include "controls/controls.h"
#include "link/indicators.h"
#include "platform/timer.h"

#include <string_view>

namespace tyxo {

/// The two backgrounds of the flashing window.
namespace alert_colour {
inline constexpr colour black = 0;
inline constexpr colour red = 255;
inline constexpr colour light = 0xE0E0E0;
} // namespace alert_colour

/// The sound of the red phase, in the working directory.
inline constexpr std::string_view alert_sound = "ralarm_1.wav";

namespace FrmAlert {

struct window {
    Form form{.Caption = "Mainalarm"};
    colour BackColor = alert_colour::light;
    Label Lbl_attention{.Caption = "ATTENTION"};
    Label Lbl_relay{.Caption = "Main Alarm Relay triggered!"}; ///< its colour tells the phase
    per_channel<Label> lbl_inst{{{.Caption = "Tyxo 1:", .Visible = false},
                                 {.Caption = "Tyxo 2:", .Visible = false},
                                 {.Caption = "Tyxo 3:", .Visible = false},
                                 {.Caption = "Tyxo 4:", .Visible = false}}};
    per_channel<Label> lbl_inst1{{{.Caption = "TY 1", .Visible = false},
                                  {.Caption = "TY 2", .Visible = false},
                                  {.Caption = "TY 3", .Visible = false},
                                  {.Caption = "TY 4", .Visible = false}}};
    bool Image1_visible = false; ///< the alarm pictures
    bool Image2_visible = false;
    Command CmdAck{.Caption = "confirm"};
    bool operator==(const window&) const = default;
};

inline window state;
inline Timer timer_alert; ///< changes the phase

/// Hides the diagram windows that are open and shows the alert. The first red phase begins at once.
void open_alert();

/// Names a channel in the alert; gives its line a text. Failure: there is no such channel.
void show_alert_line(i16 channel);
void alert_text(i16 channel, std::string_view text);

void timer_alert_tick();

/// The window has become the active one.
void activate();

void CmdAck_click();

/// The window was closed, by its button or in another way: the alarm is confirmed.
void unload();

} // namespace FrmAlert

} // namespace tyxo
