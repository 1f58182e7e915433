// How fast the window of the log tool opens logs, and how many pictures a second it draws while it zooms,
// moves and follows the cursor. Qt's offscreen platform; a picture counts when the charts in sight were
// painted.
//
//     view_zoom FILE|FOLDER...

#include "view/log_window.h"
#include "widgets/light_palette.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace tyxo::view;

constexpr int pictures = 300;

/// Counts what a chart is painted.
class paint_count : public QObject {
  public:
    explicit paint_count(QObject* watched) { watched->installEventFilter(this); }
    [[nodiscard]] int count() const { return count_; }

  protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count_;
        return false;
    }

  private:
    int count_ = 0;
};

long resident_mb() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == "VmRSS:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    return 0;
}

/// Runs `step(share)` with shares from 0 to 1, each to its picture.
template <class Step> bool measure(const char* what, log_window& window, Step step) {
    paint_count painted(window.findChild<QWidget*>("lane_0_chart"));
    std::vector<double> times;
    for (int picture = 0; picture < pictures; ++picture) {
        const int before = painted.count();
        QElapsedTimer clock;
        clock.start();
        step(static_cast<double>(picture + 1) / pictures);
        while (painted.count() == before && clock.elapsed() < 2000)
            QApplication::processEvents();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        if (painted.count() == before) {
            std::printf("%-28s no picture\n", what);
            return false;
        }
    }
    std::ranges::sort(times);
    double sum = 0;
    for (const double time : times)
        sum += time;
    std::printf("%-28s %7.0f pictures/s   mean %5.2f ms   95 %% %5.2f ms   worst %5.2f ms\n", what,
                1000 * pictures / sum, sum / pictures, times[pictures * 95 / 100], times.back());
    return true;
}

std::int64_t between(std::int64_t from, std::int64_t to, double share) {
    return from + std::llround(share * static_cast<double>(to - from));
}

} // namespace

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle("Fusion");
    int own_name_only = 1;
    const QApplication application(own_name_only, words);
    tyxo::use_light_palette();
    QElapsedTimer clock;
    clock.start();
    log_window window({words + 1, words + count});
    window.show();
    while (window.opening() || window.lanes().empty()) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        if (clock.elapsed() > 600'000) return 1;
    }
    while (window.range().span() < 60'001 && clock.elapsed() < 600'000)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    QApplication::processEvents();
    const time_range whole = window.range();
    std::printf("opened in %.2f s, %zu lanes, %.1f days, %ld MB resident\n",
                static_cast<double>(clock.elapsed()) / 1000, window.lanes().size(),
                static_cast<double>(whole.span()) / 86'400'000, resident_mb());

    const std::int64_t middle = between(whole.from, whole.to, 0.437);
    const auto zoomed = [&](double share) {
        const double span =
            static_cast<double>(whole.span()) * std::pow(60'000.0 / static_cast<double>(whole.span()), share);
        const auto half = std::llround(span / 2);
        window.show_range({middle - half, middle + half});
    };
    bool well = measure("zoom in to a minute", window, zoomed);
    well = measure("zoom out to all", window, [&](double share) { zoomed(1 - share); }) && well;
    for (const auto& [what, span] : {std::pair{"move, 2 min in sight", 120'000LL},
                                     {"move, 15 min", 900'000LL},
                                     {"move, 1 h", 3'600'000LL},
                                     {"move, 24 h", 86'400'000LL}}) {
        if (span > whole.span()) continue;
        const std::int64_t way = span * 3;
        well = measure(what, window,
                       [&](double share) {
                           const std::int64_t from =
                               middle + std::llround(share * static_cast<double>(way)) - way / 2;
                           window.show_range({from, from + span});
                       }) &&
               well;
    }
    window.show_range(whole);
    well = measure("cursor over all", window,
                   [&](double share) { window.set_cursor(between(whole.from, whole.to - 1, share)); }) &&
           well;
    std::printf("%ld MB resident\n", resident_mb());
    return well ? 0 : 1;
}
