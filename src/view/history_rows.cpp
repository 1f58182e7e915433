#include "view/history_rows.h"

#include "displays/chart.h"
#include "xlg/log_record.h"

#include <algorithm>

namespace tyxo::view {

namespace {

constexpr std::int64_t minute = 60'000; // ms
constexpr std::size_t most_minutes = 64;

std::int64_t floored(std::int64_t value, std::int64_t step) {
    return value / step - (value % step < 0 ? 1 : 0);
}

/// Makes rows of the chart, with the scales of the log that was measured at their time.
class row_maker {
  public:
    row_maker(const xlg::time_line& line, strip_window& rows) : line_(line), rows_(rows) {}

    void add(std::int64_t ms, const xlg::measured& values) {
        const xlg::measured_log* const log = line_.log_at(floored(ms, 1000));
        if (log != log_ && log != nullptr) record_ = xlg::record_of(log->header(), line_.location());
        log_ = log;
        xlg::take_values(record_, values);
        rows_.append(chart_row(record_, ms));
    }

  private:
    const xlg::time_line& line_;
    strip_window& rows_;
    const xlg::measured_log* log_ = nullptr;
    channel_rec record_;
};

} // namespace

std::vector<xlg::measured_row> kept_records::meeting(const xlg::time_line& line, const time_range& range) {
    const std::int64_t first = floored(range.from, minute);
    const std::int64_t last = floored(range.to, minute);
    if (minutes_.size() > most_minutes) {
        std::erase_if(minutes_, [&](const auto& one) { return one.first < first || one.first > last; });
    }
    std::vector<xlg::measured_row> all;
    for (std::int64_t one = first; one <= last; ++one) {
        auto kept = minutes_.find(one);
        if (kept == minutes_.end()) kept = minutes_.emplace(one, line.rows(one * 60, one * 60 + 59)).first;
        all.insert(all.end(), kept->second.begin(), kept->second.end());
    }
    return all;
}

void kept_records::forget_from(xlg::log_seconds time) {
    minutes_.erase(minutes_.lower_bound(floored(time, 60)), minutes_.end());
}

strip_window rows_of(const xlg::time_line& line, kept_records& kept, const time_range& range) {
    strip_window rows(std::max<std::int64_t>(range.span(), 1));
    row_maker make(line, rows);
    const std::int64_t lead = longest_join + rows.bucket_length(); // from where the lines come in
    if (range.span() <= longest_of_records) {
        for (const xlg::measured_row& row : kept.meeting(line, {range.from - lead, range.to}))
            if (row.ms >= range.from - lead && row.ms < range.to) make.add(row.ms, row.values);
    } else {
        const std::int64_t bucket = rows.bucket_length();
        line.each_step(static_cast<double>(bucket) / 1000, floored(range.from - lead, 1000),
                       floored(range.to, 1000),
                       [&](xlg::log_seconds first, xlg::log_seconds length, const xlg::extremes& values) {
                           const std::int64_t begin = first * 1000;
                           const std::int64_t last = std::min(begin + length * 1000, range.to) - 1;
                           if (last < begin) return;
                           make.add(begin, values.least);
                           // Rows of two buckets of the chart are joined where they are near each other.
                           const std::int64_t edge = floored(last, bucket) * bucket;
                           if (edge > begin) {
                               make.add(edge - 1, values.greatest);
                               make.add(edge, values.least);
                           }
                           make.add(last, values.greatest);
                       });
    }
    // An empty row, with which the window ends.
    rows.append({.time = range.to});
    return rows;
}

} // namespace tyxo::view
