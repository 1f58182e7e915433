#include "view/lane_pictures.h"

#include "link/engine_texts.h"
#include "platform/desktop/text.h"
#include "view/time_texts.h"
#include "xlg/log_record.h"

namespace tyxo::view {

namespace {

constexpr int usual_picture_width = 1600;
constexpr int first_chart_height = 600;
constexpr int further_chart_height = 450;

} // namespace

QString period_text(const time_range& range) {
    const QString from = moment_text(range.from);
    const QString to = moment_text(range.to);
    constexpr qsizetype date = 10;
    return from + " to " + (from.first(date) == to.first(date) ? clock_text(range.to) : to);
}

QString engine_words(const lane& one, std::int64_t ms) {
    const xlg::measured_log* const log = one.line.log_at(ms / 1000);
    if (log == nullptr) return {};
    const channel_rec rec = xlg::record_of(log->header(), one.line.location());
    if (!rec.param_valid) return {};
    QString words = qt_text(arrangement_text(rec));
    if (rec.enginetype == 2 || rec.enginetype == 4)
        words += QString(", %1 stroke engine").arg(rec.enginetype);
    if (rec.ratedspeed > 0) words += QString(", %1 rpm").arg(rec.ratedspeed);
    return words;
}

QSize usual_size_of(std::size_t charts, const std::string& file) {
    const int further = static_cast<int>(charts) - 1;
    return usual_picture_size(file,
                              {usual_picture_width, first_chart_height + further_chart_height * further});
}

void paint_lanes(QCPPainter& painter, const picture_place& place, const QString& title,
                 const lane_list& lanes, const time_range& window) {
    std::vector<strip_window> rows;
    std::vector<iStripChartX> charts;
    std::vector<chart_of_picture> pictures;
    rows.reserve(lanes.size());
    charts.reserve(lanes.size());
    for (const auto& one : lanes) {
        const time_range range = one->range(window);
        iStripChartX& chart = charts.emplace_back(one->chart);
        chart.XAxisMin = static_cast<double>(range.from) / ms_per_day;
        chart.XAxisSpan = static_cast<double>(range.span()) / ms_per_day;
        rows.push_back(rows_of(one->line, one->kept, range));
        pictures.push_back({chart, rows.back(), engine_words(*one, range.to)});
    }
    paint_charts(painter, place, title, pictures);
}

} // namespace tyxo::view
