#include "displays/frmdetailedpic.h"

#include "basics/number.h"

#include <utility>

namespace tyxo {

const channel_rec& frmdetailedpic::detailed_channel() {
    return sensor::channel_at(narrow<i16>(sensor::state.polar_channel - 1));
}

void frmdetailedpic::show(std::string_view caption) {
    frmdetailedpic::window& window = frmdetailedpic::state;
    window.form.Caption = caption;
    if (!window.form.Loaded) {
        window.form.Loaded = true;
        window.Chck_tsrel = window.Chck_tsabs = window.Chck_aa = 1;
        window.open = true;
        frmdetailedpic::draw_scale();
    }
    window.form.Visible = true;
}

void frmdetailedpic::unload() {
    sensor::state.polar_channel = 0;
    // The surface goes on counting its changes, so that no view takes a later picture for this one.
    canvas surface = std::move(frmdetailedpic::state.surface);
    surface.clear();
    frmdetailedpic::state = {};
    frmdetailedpic::state.surface = std::move(surface);
}

void frmdetailedpic::resize(double width, double height) {
    frmdetailedpic::state.surface.ScaleWidth = width;
    frmdetailedpic::state.surface.ScaleHeight = height;
    frmdetailedpic::draw_scale();
}

void frmdetailedpic::prepare() {
    frmdetailedpic::state.surface.clear();
    frmdetailedpic::draw_scale();
    frmdetailedpic::draw_engine(engine_picture::engine);
    frmdetailedpic::draw_refcircle();
}

void frmdetailedpic::draw_scale() {
    frmdetailedpic::state.surface.clear();
    frmdetailedpic::draw_engine(engine_picture::frame);
    if (sensor::state.max_sensors < sensor::state.polar_channel) return;
    frmdetailedpic::draw_refcircle();
    frmdetailedpic::draw_refline();
    frmdetailedpic::draw_almcircle();
    frmdetailedpic::draw_almline();
}

} // namespace tyxo
