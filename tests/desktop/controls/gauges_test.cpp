// Dials and bars with their real widgets: what they tell through their properties, and what they paint.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/linear_gauge_view.h"

#include <QTest>

#include <cmath>

using namespace tyxo;

namespace {

QImage dial(const iAngularGaugeX& gauge, int side = 200) {
    return shown<angular_gauge_view>(gauge, {side, side});
}
QImage bar(const iLinearGaugeX& gauge) {
    return shown<linear_gauge_view>(gauge, {104, 208});
}

} // namespace

class gauges_test : public QObject {
    Q_OBJECT

  private slots:
    void dial_tells_what_it_shows() {
        angular_gauge_view view;
        iAngularGaugeX gauge = speed_gauge(517);
        gauge.PositionMin = -10;
        gauge.TickMajorCount = 9;
        view.show_control(gauge);
        expect_properties(view, {{"Position", 517.0},
                                 {"PositionMin", -10.0},
                                 {"PositionMax", 1000.0},
                                 {"SectionCount", 3},
                                 {"SectionEnd1", 600.0},
                                 {"SectionEnd2", 800.0},
                                 {"SectionColor1", 0x00FF00},
                                 {"SectionColor2", 0x00FFFF},
                                 {"SectionColor3", 0x0000FF},
                                 {"ArcStartDegrees", 230},
                                 {"ArcRangeDegrees", 280},
                                 {"TickMajorCount", 9},
                                 {"TickMinorCount", 1},
                                 {"Label1Text", "RPM"},
                                 {"Label2Text", "RPM"}});
        QCOMPARE(view.spoken_text(), "517 RPM");
    }

    void dial_section_colours_lie_on_the_arc() {
        const QImage image = dial(speed_gauge(0));
        constexpr double band = 0.885;
        QCOMPARE(dial_pixel(image, 230 - 0.10 * 280, band), QColor(0, 255, 0));
        QCOMPARE(dial_pixel(image, 230 - 0.58 * 280, band), QColor(0, 255, 0));
        QCOMPARE(dial_pixel(image, 230 - 0.62 * 280, band), QColor(255, 255, 0));
        QCOMPARE(dial_pixel(image, 230 - 0.78 * 280, band), QColor(255, 255, 0));
        QCOMPARE(dial_pixel(image, 230 - 0.82 * 280, band), QColor(255, 0, 0));
        QVERIFY(dial_pixel(image, 230 + 5, band).value() < 100); // the gap below
        QVERIFY(dial_pixel(image, -50 - 5, band).value() < 100);
    }

    void dial_needle_points_at_the_position() {
        const QImage upright = dial(speed_gauge(500));
        QCOMPARE(dial_pixel(upright, 90, 0.5), white);
        QVERIFY(dial_pixel(upright, 230, 0.5).value() < 100);
        const QImage resting = dial(speed_gauge(0));
        QCOMPARE(dial_pixel(resting, 230, 0.4), white);
        QVERIFY(dial_pixel(resting, 90, 0.5).value() < 100);
    }

    void dial_needle_stops_at_the_ends() {
        QCOMPARE(dial(speed_gauge(99999)), dial(speed_gauge(1000)));
        QCOMPARE(dial(speed_gauge(infinite)), dial(speed_gauge(1000)));
        QCOMPARE(dial(speed_gauge(-1)), dial(speed_gauge(0)));
        QCOMPARE(dial(speed_gauge(not_a_number)), dial(speed_gauge(0)));
        QVERIFY(dial(speed_gauge(0)) != dial(speed_gauge(1000)));
    }

    void dial_moved_back_looks_as_before() {
        angular_gauge_view view;
        view.resize(104, 104);
        view.show_control(speed_gauge(300));
        const QImage before = picture_of(view);
        view.show_control(speed_gauge(700));
        QVERIFY(picture_of(view) != before);
        view.show_control(speed_gauge(300));
        QCOMPARE(picture_of(view), before);
    }

    void dial_face_follows_its_scale() {
        angular_gauge_view view;
        view.resize(200, 200);
        iAngularGaugeX gauge = speed_gauge(300);
        view.show_control(gauge);
        picture_of(view);
        gauge.SectionEnd = {100, 200};
        view.show_control(gauge);
        QCOMPARE(dial_pixel(picture_of(view), 90, 0.885), QColor(255, 0, 0));
        view.resize(104, 104);
        QCOMPARE(picture_of(view), dial(gauge, 104));
    }

    void dial_leaves_corners_and_digit_area_free() {
        for (const int side : {80, 104, 200, 300}) {
            for (const double position : {0.0, 1000.0}) {
                const QImage image = dial(speed_gauge(position), side);
                QCOMPARE(pixel_at(image, 0, 0), page_color);
                QCOMPARE(pixel_at(image, side - 1, side - 1), page_color);
                angular_gauge_view view;
                view.resize(side, side);
                const QRect area = view.digit_area();
                QVERIFY(area.width() > 0.4 * side);
                for (int x = area.left(); x <= area.right(); ++x)
                    for (int y = area.top(); y <= area.bottom(); ++y) {
                        if (std::hypot(x + 0.5 - side / 2.0, y + 0.5 - side / 2.0) > 0.46 * side)
                            continue; // the rim
                        QVERIFY(pixel_at(image, x, y).value() < 110);
                    }
            }
        }
    }

    void dial_labels_only_where_they_can_be_read() {
        // Without ticks only the caption prints; labels come and go with the room that they have.
        iAngularGaugeX gauge = speed_gauge(0);
        gauge.Label1Text = gauge.Label2Text = "";
        const auto label_ring_is_printed = [&gauge](int side) {
            const QImage image = dial(gauge, side);
            for (double angle = 60; angle > -40; angle -= 0.5)
                for (double share = 0.45; share < 0.74; share += 0.02)
                    if (dial_pixel(image, angle, share).value() > 150) return true;
            return false;
        };
        QVERIFY(label_ring_is_printed(104));
        QVERIFY(!label_ring_is_printed(50));
        gauge.TickMajorCount = 0;
        QVERIFY(!label_ring_is_printed(104));
    }

    void bar_tells_what_it_shows() {
        linear_gauge_view view;
        iLinearGaugeX gauge = thermo_gauge(80);
        gauge.set_position(42);
        view.show_control(gauge);
        expect_properties(view, {{"Position", 42.0},
                                 {"PositionMin", 0.0},
                                 {"PositionMax", 125.0},
                                 {"SectionCount", 2},
                                 {"SectionEnd1", 100.0},
                                 {"SectionEnd2", 125.0},
                                 {"SectionColor1", 0xC0C0C0},
                                 {"SectionColor2", rgb(255, 120, 55)},
                                 {"TickMajorCount", 6},
                                 {"PointerSize", 8},
                                 {"PointerColor", 198},
                                 {"ShowMaxPointer", true},
                                 {"MaxPointerColor", 0},
                                 {"MaxPosition", 80.0}});
        QCOMPARE(view.spoken_text(), "42, highest 80");
    }

    void bar_sections_end_at_their_values() {
        const QImage image = bar(thermo_gauge(0));
        const QRectF lower = area_of(image, lower_section);
        const QRectF upper = area_of(image, upper_section);
        QVERIFY(upper.bottom() <= lower.top());
        QVERIFY(std::abs(upper.height() / (upper.height() + lower.height()) - 0.2) < 0.02);
    }

    void bar_pointer_stands_at_the_position() {
        for (const double value : {0.0, 42.0, 110.0, 125.0})
            QVERIFY(std::abs(pointer_share(bar(thermo_gauge(value)), pointer) - value / 125) < 0.015);
        QCOMPARE(bar(thermo_gauge(-7)), bar(thermo_gauge(0)));
        iLinearGaugeX beyond = thermo_gauge(400);
        QVERIFY(std::abs(pointer_share(bar(beyond), pointer) - 1) < 0.015);
        QCOMPARE(bar(beyond), bar(thermo_gauge(125)));
    }

    void bar_keeps_the_highest_position() {
        iLinearGaugeX gauge = thermo_gauge(75);
        gauge.set_position(25);
        QVERIFY(std::abs(pointer_share(bar(gauge), black) - 0.6) < 0.015);
        QVERIFY(std::abs(pointer_share(bar(gauge), pointer) - 0.2) < 0.015);
        // A line across the bar, and a pointer beside it.
        QVERIFY(area_of(bar(gauge), black).right() > area_of(bar(gauge), lower_section).right() + 1);
        gauge.ShowMaxPointer = false;
        QVERIFY(!has(bar(gauge), black));
    }
};

static const desktop_test<gauges_test> known;
#include "gauges_test.moc"
