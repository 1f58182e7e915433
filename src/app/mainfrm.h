#pragma once
// The main window without its picture: the start in one pass, the close request, the settings' loading.

#include "basics/per_channel.h"
#include "basics/types.h"

#include <functional>
#include <string>

namespace tyxo::mainfrm {

struct window {
    std::string Caption;
    i16 screen_w = 0; ///< pixels
    i16 screen_h = 0;
    double design_w = 0; ///< the window's size at load, the base of its resizing
    double design_h = 0;
    bool announced = false;     ///< the start line was written
    per_channel<float> chart_w; ///< design sizes of the charts
    per_channel<float> chart_h;
};

inline window state;

/// Reads all settings, in the order of the table of keys, and repairs what is out of range. Failure: a number
/// outside its type, or more channels than there are records.
void load_settings();

/// The start: everything from the settings to the first running channel. `width` and `height` are the
/// window's. The first connection of the gateway is waited for as `TCP_connect` tells. Failure: settings that
/// cannot be used.
void form_load(double width, double height);

/// Exit codes beside 0.
inline constexpr int wrong_settings_code = 1;
inline constexpr int lost_screen_code = 1;
inline constexpr int second_copy_code = 2;

/// `form_load` with timers and serial ports held until it has returned. Settings that cannot be used end the
/// program with a message box. So does another copy in the same folder, before anything is touched: two would
/// write into the same logs and registers.
void start_program(double width, double height);

/// The close request of the main window; while measuring it waits for the operator's answer to the stop lock.
/// True lets the window close; the program has ended then.
bool query_unload();

/// The end of the desktop session: the same request. `may_ask` asks the session for leave to put a question
/// to the operator; it is called only while measuring, behind the stop line. Without leave the program goes
/// on until the session ends it. False keeps the session.
bool query_end_session(const std::function<bool()>& may_ask);

/// The machine ends the program: a signal, a lost screen. The stop line is written, and nobody is asked. It
/// takes as long as `end_program`.
void end_without_question(int exit_code);

} // namespace tyxo::mainfrm
