#include "dialogs/frmselectprint.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "displays/chart.h"
#include "link/channel_rec.h"
#include "platform/printer.h"
#include "platform/program.h"

#include <cmath>

namespace tyxo::frmselectprint {

namespace {

/// Takes the title lines away again, whatever became of the print.
class title_lines {
  public:
    explicit title_lines(iStripChartX& chart) : chart_(chart) {}
    ~title_lines() { chart_.PrintTitle.clear(); }
    title_lines(const title_lines&) = delete;
    title_lines& operator=(const title_lines&) = delete;

    void add(std::string_view line) { chart_.PrintTitle.emplace_back(line); }

  private:
    iStripChartX& chart_;
};

/// The time window of the print: a frozen chart keeps the one that it was frozen with.
std::string window_text(bool frozen) {
    const std::string& chosen = at(charts.Lbl_opt_res, charts.opt_res).Caption;
    if (!frozen) return chosen;
    constexpr double ms_per_day = 86'400'000;
    const std::int64_t span = shown_rows(state.print_channel).span();
    for (const time_resolution& choice : time_resolutions)
        if (std::llround(choice.span * ms_per_day) == span) return std::string(choice.caption);
    return chosen;
}

void tell_what_prints() {
    const std::string number = channel_number(state.print_channel);
    std::string& text = state.LblPrint.Caption;
    if (state.print_channel >= sensor::state.max_sensors) {
        text = "Channel " + number + " is not installed";
        return;
    }
    const bool frozen = charts.chart[state.print_channel].Frozen;
    text = "Prints channel " + number + ", the last " + window_text(frozen);
    if (frozen) text += ", frozen";
}

void load() {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        Command& option = state.optPrint[channel];
        option.Caption = channel_number(channel) + ":   " + sensor::state.channels[channel].location;
        option.Enabled = channel < sensor::state.max_sensors;
    }
    state.selected.reset();
    if (state.print_channel < sensor::state.max_sensors)
        state.selected = static_cast<std::size_t>(state.print_channel);
    tell_what_prints();
}

void close() {
    state.form.unload();
}

} // namespace

void optPrint_click(std::size_t index) {
    if (index >= state.optPrint.size()) failures::subscript();
    state.print_channel = narrow<i16>(index);
    state.selected = index;
    tell_what_prints();
}

void Cmd_ok_click() {
    close(); // the printer's own dialog is the next
    mainfrm::printplot(state.print_channel);
}

void cmd_cancel_click() {
    close();
}

} // namespace tyxo::frmselectprint

namespace tyxo {

void mainfrm::prt_click() {
    frmselectprint::load();
    frmselectprint::state.form.show();
}

void mainfrm::printplot(i16 channel) {
    iStripChartX& chart = charts.chart[channel];
    chart.PrintFlag = true;
    chart.PrintMode = 1;
    chart.PrintFontName = "arial";
    chart.PrintFontSize = 12;
    chart.PrintFontBold = true;
    frmselectprint::title_lines title(chart);
    title.add(" ");
    title.add("Sensor " + channel_number(channel) + ":  " + sensor::channel_at(channel).location);
    title.add(" ");
    title.add("Printed by Quarvo | Tyxo Data Logger " + std::string(program_version));
    chart.PrinterMarginLeft = 0.5;
    chart.PrinterMarginTop = 0.5;
    chart.PrinterMarginRight = 2.0;
    chart.PrinterMarginBottom = 2.0;
    print_chart(chart, shown_rows(channel));
}

} // namespace tyxo
