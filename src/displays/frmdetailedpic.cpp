#include "displays/frmdetailedpic.h"

#include "basics/number.h"

#include <utility>

namespace tyxo {

const channel_rec& detailed_channel() {
    return sensor::channel_at(narrow<i16>(sensor::state.polar_channel - 1));
}

void show_frmdetailedpic(std::string_view caption) {
    frmdetailedpic_form& window = frmdetailedpic;
    window.form.Caption = caption;
    if (!window.form.Loaded) {
        window.form.Loaded = true;
        window.Chck_tsrel = window.Chck_tsabs = window.Chck_aa = 1;
        window.open = true;
        draw_scale();
    }
    window.form.Visible = true;
}

void frmdetailedpic_unload() {
    sensor::state.polar_channel = 0;
    // The surface goes on counting its changes, so that no view takes a later picture for this one.
    canvas surface = std::move(frmdetailedpic.surface);
    surface.clear();
    frmdetailedpic = {};
    frmdetailedpic.surface = std::move(surface);
}

void frmdetailedpic_resize(double width, double height) {
    frmdetailedpic.surface.ScaleWidth = width;
    frmdetailedpic.surface.ScaleHeight = height;
    draw_scale();
}

void prepare_frmdetailedpic() {
    frmdetailedpic.surface.clear();
    draw_scale();
    draw_engine(engine_picture::engine);
    draw_refcircle();
}

void draw_scale() {
    frmdetailedpic.surface.clear();
    draw_engine(engine_picture::frame);
    if (sensor::state.max_sensors < sensor::state.polar_channel) return;
    draw_refcircle();
    draw_refline();
    draw_almcircle();
    draw_almline();
}

} // namespace tyxo
