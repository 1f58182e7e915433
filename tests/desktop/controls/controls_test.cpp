// Digits, numbers and lamps with their real widgets: what they tell through their properties, and what they
// paint; and what holds for all painted controls.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/paint_counter.h"
#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/seven_segment_view.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace tyxo;

namespace {

QImage seven_segments(const iSevenSegmentAnalogX& control, QSize size = {60, 60}) {
    return shown<seven_segment_view>(control, size);
}

template <class View, class Control> void check_repaints(const Control& first, const Control& second) {
    View view;
    view.resize(60, 60);
    view.show_control(first);
    const paint_counter counter(view);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(counter.paints() > 0);
    QCoreApplication::processEvents();
    const int before = counter.paints();
    view.show_control(first);
    QTest::qWait(20);
    QCOMPARE(counter.paints(), before);
    view.show_control(second);
    QTRY_VERIFY(counter.paints() > before);
}

} // namespace

class controls_test : public QObject {
    Q_OBJECT

  private slots:
    void digits_tell_what_they_show() {
        seven_segment_view view;
        iSevenSegmentAnalogX control = digits(-12.345);
        control.Precision = 2;
        control.DigitCount = 6;
        view.show_control(control);
        expect_properties(view, {{"Value", -12.345},
                                 {"Precision", 2},
                                 {"DigitCount", 6},
                                 {"ShowSign", false},
                                 {"SegmentColor", 33023},
                                 {"SegmentOffColor", 85},
                                 {"Text", "-12.35"}});
        QCOMPARE(view.spoken_text(), "-12.35");
        control = digits(2.5);
        control.ShowSign = true;
        view.show_control(control);
        QCOMPARE(view.property("Text").toString(), "+2");
    }

    void digits_light_their_segments() {
        const QImage eight = seven_segments(digits(8));
        QVERIFY(!has(eight, unlit));
        const QRectF digit = area_of(eight, lit);
        const QImage one = seven_segments(digits(1));
        QVERIFY(area_of(one, lit).left() > digit.center().x());
        QVERIFY(area_of(one, unlit).left() < digit.center().x());
        QVERIFY(pixel_at(seven_segments(digits(8)), digit.center().x(), digit.center().y()) == lit);
        QVERIFY(pixel_at(seven_segments(digits(0)), digit.center().x(), digit.center().y()) == unlit);
        // A sign takes its own place and lights its middle only.
        iSevenSegmentAnalogX blank = digits(1);
        blank.DigitCount = 2;
        QVERIFY(area_of(seven_segments(digits(-1)), lit).left() < area_of(seven_segments(blank), lit).left());
    }

    void digits_are_right_aligned_and_never_cut() {
        const QImage one_digit = seven_segments(digits(8), {200, 40});
        QVERIFY(area_of(one_digit, lit).left() > 150);
        const QImage three = seven_segments(digits(888), {200, 40});
        QVERIFY(std::abs(area_of(three, lit).right() - area_of(one_digit, lit).right()) < 1);
        const QImage many = seven_segments(digits(888888888888), {240, 40});
        QVERIFY(area_of(many, lit).left() > 0);
        const QRectF row = area_of(many, lit);
        const double quarter = (row.top() + row.height() / 4) * many.devicePixelRatio();
        QCOMPARE(lit_runs(many, static_cast<int>(quarter)), 24);
    }

    void digits_of_one_colour_are_dark() {
        iSevenSegmentAnalogX dark = digits(3);
        dark.SegmentColor = dark.SegmentOffColor;
        const QImage three = seven_segments(dark);
        dark.Value = 8;
        QCOMPARE(seven_segments(dark), three);
        QVERIFY(has(three, unlit));
    }

    void number_tells_what_it_shows() {
        analog_display_view view;
        view.show_control({12.344, 2, "\xB5V", rgb(0, 255, 0)});
        expect_properties(view, {{"Value", 12.344},
                                 {"Precision", 2},
                                 {"UnitsText", QString::fromUtf8("\u00B5V")},
                                 {"ForeColor", 0x00FF00},
                                 {"Text", QString::fromUtf8("12.34 \u00B5V")}});
        QCOMPARE(view.spoken_text(), view.property("Text").toString());
        view.show_control({23.5, 0, "", 0});
        QCOMPARE(view.property("Text").toString(), "24");
    }

    void number_is_right_aligned_and_never_cut() {
        const auto number = [](double value) {
            return shown<analog_display_view>(iAnalogDisplayX{value, 0, "", rgb(255, 0, 0)}, {100, 30});
        };
        const QColor red(255, 0, 0);
        const QRectF short_number = area_of(number(8), red);
        QVERIFY(short_number.left() > 40);
        QVERIFY(short_number.right() > 85);
        const QRectF long_number = area_of(number(888888888888), red);
        QVERIFY(long_number.left() >= 2);
        QVERIFY(long_number.right() > 85);
        QVERIFY(long_number.height() < 0.8 * short_number.height());
    }

    void lamp_tells_and_shows_its_state() {
        led_view view;
        view.resize(16, 16);
        iLedRoundX lamp{.ActiveColor = rgb(255, 0, 0), .InactiveColor = 16512};
        view.show_control(lamp);
        expect_properties(view, {{"Active", false}, {"ActiveColor", 255}, {"InactiveColor", 16512}});
        QCOMPARE(view.accessibleDescription(), "off");
        QCOMPARE(pixel_at(picture_of(view), 8, 8), QColor(128, 64, 0));
        lamp.Active = true;
        view.show_control(lamp);
        QCOMPARE(view.property("Active").toBool(), true);
        QCOMPARE(view.accessibleDescription(), "on");
        QCOMPARE(pixel_at(picture_of(view), 8, 8), QColor(255, 0, 0));
        QCOMPARE(pixel_at(picture_of(view), 0, 0), page_color);
        QCOMPARE(pixel_at(picture_of(view), 15, 15), page_color);
    }

    void disabled_controls_are_muted() {
        angular_gauge_view view;
        view.resize(200, 200);
        view.show_control(speed_gauge(0));
        picture_of(view);
        view.setEnabled(false);
        const QColor muted = dial_pixel(picture_of(view), 90, 0.885);
        QVERIFY(muted.saturation() < 200);
        QVERIFY(muted.green() > muted.red() + 30);
        QVERIFY(!has(shown<linear_gauge_view>(thermo_gauge(50), {52, 104}, false), pointer));
        QVERIFY(!has(shown<seven_segment_view>(digits(8), {60, 60}, false), lit));
        QVERIFY(!has(shown<led_view>(iLedRoundX{.Active = true}, {16, 16}, false), QColor(0, 255, 0)));
        const iAnalogDisplayX number{8, 0, "%", rgb(255, 0, 0)};
        QVERIFY(!has(shown<analog_display_view>(number, {100, 30}, false), QColor(255, 0, 0)));
    }

    void only_a_difference_repaints() {
        check_repaints<angular_gauge_view>(speed_gauge(1), speed_gauge(2));
        check_repaints<linear_gauge_view>(thermo_gauge(1), thermo_gauge(2));
        check_repaints<seven_segment_view>(digits(1), digits(2));
        check_repaints<analog_display_view>(iAnalogDisplayX{1, 0, "%", 0}, iAnalogDisplayX{2, 0, "%", 0});
        check_repaints<led_view>(iLedRoundX{}, iLedRoundX{.Active = true});
    }

    void degenerate_controls_are_painted_data() {
        QTest::addColumn<QSize>("size");
        QTest::addRow("one pixel") << QSize(1, 1);
        QTest::addRow("a line") << QSize(300, 2);
        QTest::addRow("a column") << QSize(3, 300);
        QTest::addRow("small") << QSize(15, 9);
        QTest::addRow("design") << QSize(104, 104);
        QTest::addRow("a wall") << QSize(3840, 2160);
    }

    void degenerate_controls_are_painted() {
        QFETCH(const QSize, size);
        constexpr double values[] = {not_a_number, infinite, -1e308, 0};
        for (const double value : values) {
            iAngularGaugeX flat_dial = speed_gauge(value);
            flat_dial.PositionMax = flat_dial.TickMajorCount = 0;
            iLinearGaugeX flat_bar = thermo_gauge(value);
            flat_bar.PositionMax = flat_bar.TickMajorCount = flat_bar.PointerSize = 0;
            const iSevenSegmentAnalogX many{
                .Value = value, .Precision = most, .DigitCount = most, .ShowSign = true};
            const iAnalogDisplayX number{value, most, std::string(99, 'm'), 0};
            const int x = size.width() / 2;
            const int y = size.height() / 2;
            const double ratio = QWidget().devicePixelRatioF();
            for (const QImage& image :
                 {shown<angular_gauge_view>(degenerate_dial(value), size),
                  shown<angular_gauge_view>(flat_dial, size), shown<linear_gauge_view>(flat_bar, size),
                  shown<linear_gauge_view>(degenerate_bar(value), size),
                  shown<seven_segment_view>(many, size), shown<analog_display_view>(number, size),
                  shown<led_view>(iLedRoundX{}, size)}) {
                QCOMPARE(image.size(), size * ratio);
                QVERIFY(pixel_at(image, x, y) != page_color);
            }
        }
    }
};

static const desktop_test<controls_test> known;
#include "controls_test.moc"
