#include "view/lane.h"

#include "displays/chart.h"
#include "xlg/log_record.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace tyxo::view {

namespace {

constexpr std::int64_t day = 86'400; // s

std::int64_t day_of(const xlg::measured_log& log) {
    // A log that a new period replaced ends in it; it belongs to the day on which it begins.
    return log.first() / day;
}

void set_up_chart(lane& one, lane_order order) {
    const xlg::measured_log& first = *one.line.logs().front();
    one.chart.Title = one.line.location();
    if (order == lane_order::days) one.chart.Title += ", " + xlg::iso_date(one.line.first());
    one.chart.curves = chart_curves();
    show_curves_by_settings(one.chart);
    one.chart.YAxisMin = 0;
    one.chart.YAxisMax = 150;
    one.chart.XAxisDateTimeFormatString = "d/m hh:nn:ss";
    name_curves(one.chart, xlg::record_of(first.header(), one.line.location()));
}

} // namespace

std::vector<std::unique_ptr<lane>> lanes_of(const log_list& logs, lane_order order) {
    std::map<std::pair<std::string, std::int64_t>, std::unique_ptr<lane>> found;
    for (const auto& log : logs) {
        if (!log->any()) continue;
        const std::string location = xlg::location_of(log->name());
        auto& one = found[{location, order == lane_order::days ? day_of(*log) : 0}];
        if (!one) one = std::make_unique<lane>(location);
        one->line.add(log);
    }
    std::vector<std::unique_ptr<lane>> lanes;
    std::int64_t first_day = 0;
    for (auto& [key, one] : found) {
        if (lanes.empty() || key.second < first_day) first_day = key.second;
        set_up_chart(*one, order);
        lanes.push_back(std::move(one));
    }
    auto of = lanes.begin();
    for (const auto& [key, gone] : found)
        (*of++)->shift = (key.second - first_day) * day * 1000;
    return lanes;
}

time_range whole_range(const std::vector<std::unique_ptr<lane>>& lanes) {
    std::optional<time_range> whole;
    for (const auto& one : lanes) {
        if (!one->line.any()) continue;
        const time_range own{one->line.first() * 1000 - one->shift,
                             (one->line.last() + 1) * 1000 - one->shift};
        if (!whole) whole = own;
        whole->from = std::min(whole->from, own.from);
        whole->to = std::max(whole->to, own.to);
    }
    return whole.value_or(time_range{0, 60'000});
}

std::optional<xlg::measured_row> values_at(lane& of, std::int64_t ms) {
    std::optional<xlg::measured_row> nearest;
    const auto away = [ms](const xlg::measured_row& row) { return std::abs(row.ms - ms); };
    for (const xlg::measured_row& row :
         of.kept.meeting(of.line, {ms - farthest_values, ms + farthest_values}))
        if (away(row) <= farthest_values && (!nearest || away(row) < away(*nearest))) nearest = row;
    return nearest;
}

} // namespace tyxo::view
