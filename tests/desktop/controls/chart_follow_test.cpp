// A strip chart that has been followed row by row is, pixel for pixel, one that is drawn anew.

#include "desktop/desktop_test.h"
#include "desktop/paint_counter.h"
#include "desktop/random_steps.h"
#include "desktop/screen_copy.h"
#include "desktop/shown_chart.h"

#include <QTest>

#include <ctime>

using namespace tyxo;

namespace {

constexpr std::array<double, 5> windows{1.0 / 720, 1.0 / 96, 1.0 / 24, 1.0, 1.0 / 1000}; // days
constexpr std::array<std::int64_t, 8> pauses{100, 100, 100, 0, 250, 2900, 3100, 40'000}; // ms
const std::array<QByteArray, 4> zones{"UTC", "EST5", "CET-1CEST,M3.5.0,M10.5.0/3", "<+0530>-5:30"};

void set_zone(const QByteArray& name) {
    qputenv("TZ", name);
    tzset();
}

} // namespace

class chart_follow_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        zone_ = qgetenv("TZ");
        set_zone(zones[0]);
        time_ = 1'000'000'000;
        rows_.clear();
        frozen_.reset();
        chart_ = engine_chart();
        view_ = std::make_unique<chart_view>([this]() -> const strip_window& { return shown(); });
        view_->resize(design_size);
        view_->setFocusPolicy(Qt::NoFocus); // a window's only control would have a rim around it
        view_->show();
        QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
        screen_ = std::make_unique<screen_copy>(*view_);
    }
    void cleanup() {
        screen_.reset();
        view_.reset();
        if (zone_.isNull()) {
            qunsetenv("TZ");
            tzset();
        } else {
            set_zone(zone_);
        }
    }

    void is_at_every_moment_what_a_new_one_is_data() { add_seeds(10); }
    void is_at_every_moment_what_a_new_one_is() {
        QFETCH(unsigned, seed);
        steps_ = random_steps(seed);
        for (int step = 0; step < 250; ++step) {
            const int act = change();
            view_->show_control(chart_);
            const QImage seen = screen_->picture();
            chart_view anew([this]() -> const strip_window& { return shown(); });
            anew.resize(view_->size());
            anew.setEnabled(view_->isEnabled());
            anew.show_control(chart_);
            const QImage wanted = anew.grab().toImage().convertToFormat(seen.format());
            const QByteArray where = QString("step %1, change %2").arg(step).arg(act).toLatin1();
            QVERIFY2(same_pixels(seen, wanted), where);
        }
    }

    void moves_by_whole_columns_and_paints_nothing_between_them() {
        chart_ = engine_chart(1.0); // a column is more than two minutes
        for (int row = 0; row < 600; ++row)
            append(level_row(time_ += 1000));
        view_->show_control(chart_);
        screen_->picture();
        paint_counter paints(*view_);
        for (int row = 0; row < 3000; ++row) { // five minutes
            append(level_row(time_ += 100));
            view_->show_control(chart_);
            QCoreApplication::processEvents();
        }
        const int painted = paints.taken();
        QVERIFY2(painted >= 2 && painted <= 3, qPrintable(QString::number(painted)));
    }

    void the_last_column_grows_with_its_values() {
        chart_ = engine_chart(1.0);
        const double column = 86'400'000.0 / 578;
        time_ = static_cast<std::int64_t>((std::floor(static_cast<double>(time_) / column) + 1.1) * column);
        append(level_row(time_));
        view_->show_control(chart_);
        screen_->picture();
        paint_counter paints(*view_);
        strip_row higher = level_row(time_ += 100);
        higher.values[0] += 10;
        append(higher);
        view_->show_control(chart_);
        QCoreApplication::processEvents();
        QCOMPARE(paints.taken(), 1);
    }

    void a_corrected_clock_moves_the_labels_of_a_picture_that_stands() {
        chart_ = engine_chart(1.0);
        append(level_row(time_));
        view_->show_control(chart_);
        const QImage before = screen_->picture();
        set_zone("EST5");
        append(level_row(time_));
        view_->show_control(chart_);
        QVERIFY(screen_->picture() != before);
    }

  private:
    [[nodiscard]] const strip_window& shown() const {
        return frozen_ ? *frozen_ : rows_.window(std::llround(chart_.XAxisSpan * 86'400'000));
    }
    void append(const strip_row& row) { rows_.append(row); }
    std::size_t below(std::size_t count) {
        return static_cast<std::size_t>(steps_.below(static_cast<int>(count)));
    }

    void append_random() {
        strip_row row;
        const std::size_t kind = below(12);
        row.time = time_ += kind == 0 ? pauses[below(pauses.size())] * 100 : pauses[below(pauses.size())];
        for (std::size_t curve = 0; curve < strip_curves; ++curve) {
            row.values[curve] = level(curve) + static_cast<float>(below(5));
            if (kind == 1) row.values[curve] = static_cast<float>(below(70'000)) - 30'000;
            if (kind == 2) row.values[curve] = std::numeric_limits<float>::infinity();
            if (kind == 3 && below(2) == 0) row.values[curve] = no_value;
        }
        append(row);
    }

    /// One thing that may happen to a chart, most often a row.
    int change() {
        const auto act = static_cast<int>(below(40));
        switch (act) {
        case 0:
            if (!frozen_) chart_.XAxisSpan = windows[below(windows.size())];
            break;
        case 1:
            if (frozen_) {
                frozen_.reset();
            } else {
                frozen_ = shown();
            }
            chart_.Frozen = frozen_.has_value();
            break;
        case 2:
            chart_.curves[below(strip_curves)].Visible = below(2) == 0;
            break;
        case 3:
            view_->resize(350 + static_cast<int>(below(600)), 180 + static_cast<int>(below(300)));
            break;
        case 4:
            if (!frozen_) set_zone(zones[below(zones.size())]); // a frozen one keeps its labels
            append_random();
            break;
        case 5:
            chart_.GridLineStyle = static_cast<i32>(below(3));
            break;
        case 6:
            chart_.YAxisMax = 100 + static_cast<double>(below(100));
            break;
        case 7:
            for (std::size_t row = below(1500); row > 0; --row)
                append_random();
            break;
        default:
            append_random();
        }
        return act;
    }

    QByteArray zone_;
    random_steps steps_{1};
    std::int64_t time_ = 0;
    strip_history rows_;
    std::optional<strip_window> frozen_;
    iStripChartX chart_;
    std::unique_ptr<chart_view> view_;
    std::unique_ptr<screen_copy> screen_;
};

static const desktop_test<chart_follow_test> known;
#include "chart_follow_test.moc"
