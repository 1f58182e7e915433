#include "displays/xy_plot_view.h"

namespace tyxo {

void xy_plot_view::show_control(const iXYPlotX& control) {
    if (control == shown_) return;
    shown_ = control;
    update();
}

} // namespace tyxo
