// The rows of a chart out of logs: the same picture from single records and from their extremes.

#include "desktop/desktop_test.h"
#include "platform/clock.h"
#include "view/plant_logs.h"

#include <cmath>

using namespace tyxo;
using namespace tyxo::view;

namespace {

constexpr std::size_t tsig = 0;
constexpr std::size_t speed = 1;

struct least_and_greatest {
    float least = 1e9F;
    float greatest = -1e9F;
    int gaps = 0;
};

least_and_greatest seen(const strip_window& rows, std::size_t curve) {
    std::vector<strip_point> points;
    rows.points(curve, 1000, points);
    least_and_greatest found;
    for (const strip_point& point : points) {
        if (std::isnan(point.value)) {
            ++found.gaps;
            continue;
        }
        found.least = std::min(found.least, point.value);
        found.greatest = std::max(found.greatest, point.value);
    }
    return found;
}

} // namespace

class history_rows_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        using plant = plant_logs;
        add("20260702Qu_Engine 1.xlg", plant::steady(3600, 5000, 40) + plant::record(5000, 140, 1600) +
                                           plant::steady(5001, 7200, 40) + plant::steady(9000, 10'800, 60));
    }

    void one_record_is_seen_in_every_span() {
        for (const std::int64_t span : {minute, 10 * minute, hour, 3 * hour, 24 * hour, 30 * 24 * hour}) {
            const std::int64_t middle = midnight + 5000 * second;
            const strip_window rows = rows_of(*line_, kept_, {middle - span / 2, middle + span / 2});
            QCOMPARE(seen(rows, tsig).greatest, 140.0F);
            QCOMPARE(seen(rows, speed).greatest, 80.0F); // "RPM /20"
            QCOMPARE(rows.newest(), middle + span / 2);
            QCOMPARE(rows.span(), span);
        }
    }

    void what_is_outside_is_not_seen() {
        const strip_window rows =
            rows_of(*line_, kept_, {midnight + 5010 * second, midnight + 5010 * second + 10 * minute});
        QCOMPARE(seen(rows, tsig).greatest, 40.0F);
        const strip_window before =
            rows_of(*line_, kept_, {midnight + 4700 * second, midnight + 5000 * second});
        QCOMPARE(seen(before, tsig).greatest, 40.0F);
    }

    void a_gap_is_a_gap() {
        for (const std::int64_t span : {hour, 2 * hour, 24 * hour}) {
            const std::int64_t middle = midnight + 8100 * second;
            QCOMPARE(seen(rows_of(*line_, kept_, {middle - span / 2, middle + span / 2}), tsig).gaps, 1);
        }
        const strip_window in_it =
            rows_of(*line_, kept_, {midnight + 8000 * second, midnight + 8060 * second});
        QVERIFY(std::isnan(in_it.newest_value(tsig)));
    }

    void steady_values_have_no_gap() {
        for (const std::int64_t span :
             {20 * second, minute, 10 * minute, 20 * minute, 30 * minute, 50 * minute}) {
            const std::int64_t from = midnight + 7000 * second - span;
            QCOMPARE(seen(rows_of(*line_, kept_, {from, from + span}), tsig).gaps, 0);
        }
    }

    void records_that_have_changed_are_read_again() {
        const time_range end{midnight + 10'780 * second, midnight + 10'810 * second};
        QCOMPARE(seen(rows_of(*line_, kept_, end), tsig).greatest, 60.0F);
        logs_.append("20260702Qu_Engine 1.xlg", plant_logs::record(10'801, 99));
        QVERIFY(line_->read_on());
        kept_.forget_from(10'799 + midnight / second);
        QCOMPARE(seen(rows_of(*line_, kept_, end), tsig).greatest, 99.0F);
    }

    void the_clock_is_that_of_the_log() {
        QCOMPARE(local_at(midnight + 3661 * second), (local_time{2026, 7, 2, 1, 1, 1}));
        QCOMPARE(local_at(-second), (local_time{1969, 12, 31, 23, 59, 59}));
    }

  private:
    void add(const std::string& name, const std::string& lines) {
        kept_ = {};
        line_ = std::make_unique<xlg::time_line>("Engine 1");
        auto log = std::make_shared<xlg::measured_log>(logs_.write(name, lines));
        log->read_on();
        line_->add(std::move(log));
    }

    plant_logs logs_;
    std::unique_ptr<xlg::time_line> line_;
    kept_records kept_;
};

static const desktop_test<history_rows_test> registered;

#include "history_rows_test.moc"
