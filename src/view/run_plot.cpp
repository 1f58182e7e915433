#include "view/run_plot.h"

#include "basics/failure.h"
#include "displays/bar_diagram.h"
#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic.h"
#include "displays/frmdetailedpic_view.h"
#include "platform/debug_output.h"
#include "platform/desktop/process.h"
#include "platform/desktop/text.h"
#include "view/cycles.h"
#include "view/lane_pictures.h"
#include "view/log_loader.h"
#include "view/plant_settings.h"
#include "view/time_texts.h"
#include "widgets/plots/xy_plot_view.h"
#include "xlg/files.h"
#include "xlg/log_record.h"
#include "xlg/run_files.h"

#include <QCheckBox>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tyxo::view {

namespace {

std::vector<std::string> files_of(const xlg::arguments& wanted) {
    std::vector<std::string> files = logs_named(wanted.files);
    if (files.empty()) throw failure("there is no log in " + wanted.files.front());
    return files;
}

lane_list lanes_of_files(const std::vector<std::string>& files) {
    log_loader loader(files);
    const log_list logs = loader.take_logs();
    if (!loader.failures().empty()) throw failure(loader.failures().front());
    return lanes_of(logs, lane_order::engines);
}

std::string picture_file(const xlg::arguments& wanted, const std::vector<std::string>& logs) {
    if (!wanted.output.empty()) {
        for (const std::string& log : logs)
            if (xlg::same_file(log, wanted.output)) throw failure(wanted.output + " is the log itself");
        return wanted.output;
    }
    return std::filesystem::path(logs.front()).stem().string() + ".png";
}

QSize size_of(const xlg::arguments& wanted, const QSize& usual) {
    return wanted.plot.size ? QSize(wanted.plot.size->width, wanted.plot.size->height) : usual;
}

QString own_title(const xlg::arguments& wanted, const QString& otherwise) {
    return wanted.plot.title.empty() ? otherwise : QString::fromStdString(wanted.plot.title);
}

int nothing(const QString& why) {
    std::fprintf(stderr, "xlg: %s; there is no picture\n", why.toStdString().c_str());
    return xlg::exit_codes::wrong;
}

int told(const std::string& file, const QString& title) {
    std::printf("%s: %s\n", file.c_str(), title.toStdString().c_str());
    if (std::fflush(stdout) != 0) throw failure("cannot write standard output");
    return xlg::exit_codes::fine;
}

/// From the first to the last record unless told. An end whose time of day is before that of the beginning is
/// one of the next day.
time_range range_wanted(const xlg::plot_wishes& wishes, const time_range& whole) {
    constexpr std::int64_t day = 86'400;
    const std::int64_t first = whole.from / 1000;
    time_range range = whole;
    if (wishes.from) range.from = wishes.from->on_day_of(first) * 1000;
    if (wishes.to) {
        const std::int64_t begin = range.from / 1000;
        std::int64_t end = wishes.to->on_day_of(wishes.from ? begin : first);
        if (!wishes.to->midnight && end <= begin) end += day;
        range.to = end * 1000;
    }
    if (range.to <= range.from && wishes.from && wishes.to)
        throw failure("the time from " + moment_text(range.from).toStdString() + " to " +
                      moment_text(range.to).toStdString() + " has no length");
    return range;
}

/// The engine as the log of this time tells it.
channel_rec record_at(const lane& one, std::int64_t ms) {
    const xlg::measured_log* const log = one.line.log_at(ms / 1000);
    return log == nullptr ? channel_rec() : xlg::record_of(log->header(), one.line.location());
}

bool measured_in(const lane& one, const time_range& range) {
    bool any = false;
    const std::int64_t end = (range.to + 999) / 1000;
    one.line.each_step(1, range.from / 1000, end, [&any](auto&&...) { any = true; });
    return any;
}

int plot_charts(const xlg::arguments& wanted, const std::string& file, lane_list& lanes) {
    const time_range range = range_wanted(wanted.plot, whole_range(lanes));
    const QSize size = size_of(wanted, usual_size_of(lanes.size(), file));
    if (const int least = least_picture_height(lanes.size()); size.height() < least)
        throw failure("a picture of " + xlg::counted(std::ssize(lanes), "engine", "engines") +
                      " is at least " + std::to_string(least) + " pixels high");
    const bool any = range.to > range.from && std::ranges::any_of(lanes, [&range](const auto& one) {
                         return measured_in(*one, range);
                     });
    if (!any)
        return nothing("nothing was measured from " + moment_text(range.from) + " to " +
                       moment_text(range.to));
    const QString engine = lanes.size() == 1 ? qt_text(lanes.front()->line.location()) + ", " : QString();
    const QString title = own_title(wanted, engine + period_text(range));
    write_picture(file, wanted.force, size, title, [&](QCPPainter& painter, const picture_place& place) {
        paint_lanes(painter, place, title, lanes, range);
    });
    return told(file, title);
}

/// As the program does in its handlers: what the header of a log makes impossible is left away.
void try_to(const std::function<void()>& step) {
    if (const auto why = attempt(step)) debug_output(*why);
}

/// A window of the program over one cycle.
struct cycle_window {
    std::unique_ptr<QWidget> widget;
    std::function<void()> renew;
};

template <class View> cycle_window window_of(std::unique_ptr<View> view, lane& one, std::int64_t ms) {
    cycle_window made;
    made.renew = [&shown = *view, &one, ms] {
        show_cycle(one, ms, true);
        try_to([&shown] { shown.show_state(); });
    };
    made.widget = std::move(view);
    return made;
}

cycle_window window_of_cycle(xlg::picture_kind kind, lane& one, std::int64_t ms) {
    if (kind == xlg::picture_kind::scope) {
        auto scope = std::make_unique<xy_plot_view>();
        xy_plot_view* const shown = scope.get();
        shown->setFocusPolicy(Qt::NoFocus);
        shown->show_control(one.scope);
        return {std::move(scope), [shown] { shown->clearFocus(); }};
    }
    cycle_window window;
    if (kind == xlg::picture_kind::detail) {
        auto view = std::make_unique<frmdetailedpic_view>(nullptr);
        for (QCheckBox* const box : view->findChildren<QCheckBox*>())
            box->hide();
        try_to(open_detailed_display);
        window = window_of(std::move(view), one, ms);
    } else {
        const bool speed = kind == xlg::picture_kind::speed_bars;
        bar_form& bars = speed ? frmbarpic::state : Frmbarpic2::state;
        try_to(speed ? open_speed_bars : open_thermo_bars);
        window = window_of(
            std::make_unique<bar_diagram_view>(bars, speed ? "frmbarpic" : "Frmbarpic2", nullptr), one, ms);
    }
    window.renew(); // it opens
    return window;
}

const char* name_of(xlg::picture_kind kind) {
    switch (kind) {
    case xlg::picture_kind::detail:
        return "Detailed Display";
    case xlg::picture_kind::speed_bars:
        return "Speed difference";
    case xlg::picture_kind::thermo_bars:
        return "Thermosignal difference";
    default:
        return "Polar scope";
    }
}

QSize pixels_of(xlg::picture_kind kind) {
    return kind == xlg::picture_kind::scope ? QSize(800, 826) : QSize(1600, 1000);
}

int plot_cycle(const xlg::arguments& wanted, const std::string& file, const lane_list& lanes) {
    const xlg::picture_kind kind = wanted.plot.kind;
    if (lanes.size() > 1)
        throw failure("a cycle is one of a single engine, and the logs are of " +
                      std::to_string(lanes.size()));
    lane& one = *lanes.front();
    const std::int64_t time = wanted.plot.cycle->on_day_of(one.line.first());
    const cycle_times times = show_cycle(one, time * 1000, true);
    auto latest = std::max(times.thermo, times.angacc);
    if (kind == xlg::picture_kind::speed_bars) latest = times.angacc;
    if (kind == xlg::picture_kind::thermo_bars) latest = times.thermo;
    if (!latest) return nothing("no cycle was logged up to " + moment_text(time * 1000));
    if (kind != xlg::picture_kind::scope && !record_at(one, time * 1000).param_valid)
        throw failure("the header of " + one.line.log_at(time)->name() + " tells nothing of the engine");
    const cycle_window window = window_of_cycle(kind, one, time * 1000);
    const QString title = own_title(wanted, qt_text(one.line.location()) + ", " +
                                                moment_text(*latest * 1000) + ": " + name_of(kind));
    write_picture(file, wanted.force, size_of(wanted, usual_picture_size(file, pixels_of(kind))), title,
                  [&](QCPPainter& painter, const picture_place& place) {
                      paint_widget(painter, place, title, *window.widget, window.renew);
                  });
    return told(file, title);
}

} // namespace

int run_plot(const xlg::arguments& wanted) {
    desktop::screen_lost(); // nobody answers a box
    const std::vector<std::string> files = files_of(wanted);
    const std::string file = picture_file(wanted, files);
    load_plant_settings(files.front(), wanted.plot.settings);
    lane_list lanes = lanes_of_files(files);
    if (lanes.empty()) return nothing(QString::fromStdString("nothing was measured in " + files.front()));
    return wanted.plot.cycle ? plot_cycle(wanted, file, lanes) : plot_charts(wanted, file, lanes);
}

} // namespace tyxo::view
