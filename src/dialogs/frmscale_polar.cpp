#include "dialogs/frmscale_polar.h"

#include "basics/failure.h"
#include "basics/number_text.h"
#include "link/channel_rec.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo::frmscale_polar {

namespace {

constexpr double default_scale_t = 3.0;
constexpr double default_scale_a = 0.5;

/// The option of a value. A scale counts as a choice only if it is the very same number.
template <class Value, std::size_t N>
selection option_of(const std::array<choice_row<Value>, N>& choices, Value value) {
    for (std::size_t index = 0; index < N; ++index) {
        if (choices[index].value == value) return index;
    }
    return std::nullopt;
}

/// Takes the value of an option, and shows the option as selected.
template <class Value, std::size_t N>
void choose(const std::array<choice_row<Value>, N>& choices, std::size_t index, Value& value,
            selection& shown) {
    value = at(choices, index).value;
    shown = index;
}

void load() {
    window& dialog = state;
    dialog.Opt_scale = option_of(scale_choices, sensor::state.scale_polar_a);
    dialog.Opt_scale_t = option_of(scale_choices, sensor::state.scale_polar_t);
    dialog.Opt_refr = option_of(refresh_choices, sensor::state.upd_periode);
    dialog.Opt_logtime = option_of(log_period_choices, settings.log_mode);
    for (Frame* frame :
         {&dialog.Frame_scale_a, &dialog.Frame_scale_t, &dialog.Frame_logtime, &dialog.Frame_refresh}) {
        frame->Enabled = !sensor::state.measure_running;
    }
}

} // namespace

void Opt_scale_click(std::size_t index) {
    choose(scale_choices, index, sensor::state.scale_polar_a, state.Opt_scale);
}

void Opt_scale_t_click(std::size_t index) {
    choose(scale_choices, index, sensor::state.scale_polar_t, state.Opt_scale_t);
}

void Opt_refr_click(std::size_t index) {
    // The charts' timer follows with its next start.
    choose(refresh_choices, index, sensor::state.upd_periode, state.Opt_refr);
}

void Opt_logtime_click(std::size_t index) {
    choose(log_period_choices, index, settings.log_mode, state.Opt_logtime);
}

void cmd_default_click() {
    if (sensor::state.measure_running) return;
    sensor::state.scale_polar_t = default_scale_t;
    sensor::state.scale_polar_a = default_scale_a;
    load();
}

void Cmd_ok_click() {
    const Ini::one_change all_keys;
    Ini::ini_write("scale_polar_a", signed_form(sensor::state.scale_polar_a));
    Ini::ini_write("scale_polar_t", signed_form(sensor::state.scale_polar_t));
    Ini::ini_write("log_mode", signed_form(settings.log_mode));
    Ini::ini_write("upd_periode", signed_form(sensor::state.upd_periode));
    unload();
}

void unload() {
    state.form.unload();
}

} // namespace tyxo::frmscale_polar

namespace tyxo {

void mainfrm::setup_scale_click() {
    frmscale_polar::load();
    frmscale_polar::state.form.show();
}

} // namespace tyxo
