#include "controls/strip_history.h"

#include "basics/failure.h"

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

// Buckets that the ring holds before those of the window.
constexpr std::int64_t lead_buckets = 50;

bool has_value(float value) {
    return !std::isnan(value);
}

/// Builds a line from what buckets hold of one curve, oldest first.
class line_maker {
  public:
    explicit line_maker(std::vector<strip_point>& points) : points_(points) {}

    /// The values of a bucket that has some, into the column of the buckets before or into a new one.
    template <class Bucket, class Extent>
    void add(const Bucket& bucket, const Extent& values, double column) {
        const bool cut = cut_ || (any_ && bucket.first_time - last_.time > longest_join);
        cut_ = false;
        const mark first{bucket.first_time, values.first};
        if (!any_ || column != column_) {
            flush();
            if (any_ && cut) points_.push_back({gap_time(bucket.first_time), no_value});
            first_ = least_ = greatest_ = first;
            column_ = column;
            any_ = true;
        }
        // Where in the bucket its extremes were is not known: between its ends, in the order of the
        // shorter way.
        const std::int64_t middle = bucket.first_time + (bucket.last_time - bucket.first_time) / 2;
        const bool falls_first = values.first - values.least < values.greatest - values.first;
        if (values.least < least_.value) least_ = {middle, values.least, falls_first ? 0 : 1};
        if (values.greatest > greatest_.value) greatest_ = {middle, values.greatest, falls_first ? 1 : 0};
        last_ = {bucket.last_time, values.last};
    }

    /// A bucket whose rows have no value.
    void add_gap() { cut_ = any_; }

    /// The last column.
    void finish() { flush(); }

  private:
    struct mark {
        std::int64_t time = 0;
        float value = no_value;
        int order = 0; ///< of two extremes in the same bucket
    };

    [[nodiscard]] double gap_time(std::int64_t next) const {
        return (static_cast<double>(last_.time) + static_cast<double>(next)) / 2;
    }

    void flush() {
        if (!any_) return;
        put(first_);
        const bool dips = least_.value < std::min(first_.value, last_.value);
        const bool peaks = greatest_.value > std::max(first_.value, last_.value);
        const bool dip_first =
            least_.time != greatest_.time ? least_.time < greatest_.time : least_.order < greatest_.order;
        if (dips && dip_first) put(least_);
        if (peaks) put(greatest_);
        if (dips && !dip_first) put(least_);
        put(last_);
    }

    /// Three points at one height need but two.
    void put(const mark& point) {
        const auto time = static_cast<double>(point.time);
        const std::size_t size = points_.size();
        if (size > 0 && points_[size - 1] == strip_point{time, point.value}) return;
        if (size > 1 && points_[size - 1].value == point.value && points_[size - 2].value == point.value) {
            points_.back().time = time;
            return;
        }
        points_.push_back({time, point.value});
    }

    std::vector<strip_point>& points_;
    mark first_, least_, greatest_, last_;
    double column_ = 0;
    bool any_ = false;
    bool cut_ = false;
};

} // namespace

std::int64_t strip_window::bucket_length() const {
    constexpr std::int64_t in_window = static_cast<std::int64_t>(strip_buckets) - lead_buckets;
    return (span_ + in_window - 1) / in_window;
}

std::int64_t strip_window::bucket_of(std::int64_t time) const {
    const std::int64_t length = bucket_length();
    return time / length - (time % length < 0 ? 1 : 0);
}

std::size_t strip_window::slot_of(std::int64_t index) {
    constexpr auto buckets = static_cast<std::int64_t>(strip_buckets);
    return static_cast<std::size_t>((index % buckets + buckets) % buckets);
}

void strip_window::append(const strip_row& row) {
    if (ring_.empty()) {
        ring_.resize(strip_buckets);
        begun_ = newest_ = row.time;
    }
    newest_ = std::max(newest_, row.time);
    rows_ = one_more_row(rows_);

    const std::int64_t index = bucket_of(newest_);
    bucket& into = ring_[slot_of(index)];
    if (into.index != index) {
        into = {};
        into.index = index;
        into.first_time = newest_;
    }
    into.last_time = newest_;
    for (std::size_t curve = 0; curve < strip_curves; ++curve) {
        const float value = row.values[curve];
        extent& of = into.curves[curve];
        if (!has_value(value)) continue;
        if (!has_value(of.first)) of = {value, value, value, value};
        of.least = std::min(of.least, value);
        of.greatest = std::max(of.greatest, value);
        of.last = value;
    }
}

std::int64_t strip_window::column_of_bucket(std::int64_t index, double column) const {
    const double columns_per_bucket = static_cast<double>(bucket_length()) / column;
    return static_cast<std::int64_t>(std::floor(static_cast<double>(index) * columns_per_bucket));
}

std::int64_t strip_window::oldest_bucket() const {
    return bucket_of(newest_) - static_cast<std::int64_t>(strip_buckets) + 1;
}

void strip_window::points(std::size_t curve, i32 columns, std::vector<strip_point>& points) const {
    // Columns are counted from time 0, not from the edge of the picture: a picture that moves on keeps the
    // points that it had.
    const double column = static_cast<double>(span_) / std::max(columns, i32{1});
    collect(curve, column, bucket_of(newest_ - span_ - longest_join), points);
}

void strip_window::points_from(std::size_t curve, double column, std::int64_t first,
                               std::vector<strip_point>& points) const {
    // A line comes in from a row as long before as rows are joined; that row's points stand in the column in
    // which its bucket begins, and are gathered from all buckets of that column.
    const double lead =
        (static_cast<double>(longest_join) + 2 * static_cast<double>(bucket_length())) / column;
    const auto from = static_cast<std::int64_t>(std::floor(static_cast<double>(first) - lead)) - 1;
    auto oldest = static_cast<std::int64_t>(
                      std::floor(static_cast<double>(from) * column / static_cast<double>(bucket_length()))) -
                  1;
    while (column_of_bucket(oldest, column) < from)
        ++oldest;
    collect(curve, column, oldest, points);
}

void strip_window::collect(std::size_t curve, double column, std::int64_t oldest,
                           std::vector<strip_point>& points) const {
    points.clear();
    if (curve >= strip_curves) failures::subscript();
    if (ring_.empty()) return;
    line_maker line(points);
    const std::int64_t newest = bucket_of(newest_);
    std::int64_t index = std::max(oldest, oldest_bucket());
    for (std::size_t slot = slot_of(index); index <= newest; ++index, slot = (slot + 1) % strip_buckets) {
        const bucket& from = ring_[slot];
        if (from.index != index) continue;
        const extent& values = from.curves[curve];
        if (has_value(values.first)) {
            line.add(from, values, static_cast<double>(column_of_bucket(index, column)));
        } else {
            line.add_gap();
        }
    }
    line.finish();
}

std::int64_t strip_window::first_open_column(double column) const {
    const std::int64_t newest = bucket_of(newest_);
    std::int64_t open = newest;
    if (ring_.empty()) return column_of_bucket(open, column);
    // A bucket without a value may still get one, and a line that comes in from the value before.
    const std::int64_t begun = ring_[slot_of(newest)].first_time;
    const std::int64_t oldest = std::max(oldest_bucket(), bucket_of(begun - longest_join));
    for (std::size_t curve = 0; curve < strip_curves; ++curve) {
        std::int64_t index = newest;
        const auto valued = [&] {
            const bucket& from = ring_[slot_of(index)];
            return from.index == index && has_value(from.curves[curve].first);
        };
        while (index >= oldest && !valued())
            --index;
        if (index >= oldest) open = std::min(open, index);
    }
    return column_of_bucket(open, column);
}

float strip_window::newest_value(std::size_t curve) const {
    if (curve >= strip_curves) failures::subscript();
    if (ring_.empty()) return no_value;
    for (std::int64_t index = bucket_of(newest_); index >= bucket_of(newest_ - span_); --index) {
        const bucket& from = ring_[slot_of(index)];
        if (from.index == index && has_value(from.curves[curve].last)) return from.curves[curve].last;
    }
    return no_value;
}

i32 strip_history::append(const strip_row& row) {
    for (strip_window& window : windows_)
        window.append(row);
    return windows_.front().rows() - 1;
}

void strip_history::clear() {
    for (strip_window& window : windows_)
        window = strip_window(window.span());
}

const strip_window& strip_history::window(std::int64_t span) const {
    for (const strip_window& window : windows_)
        if (window.span() >= span) return window;
    return windows_.back();
}

} // namespace tyxo
