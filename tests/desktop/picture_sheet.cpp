// Renders the painted controls in several sizes and states onto one sheet, for people to look at.
//
//     QT_QPA_PLATFORM=offscreen picture_sheet sheet.png      (QT_SCALE_FACTOR=2 for a high-DPI screen)

#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/seven_segment_view.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QPixmap>
#include <QTextStream>

namespace {

using namespace tyxo;

constexpr int sheet_width = 1240;
constexpr int sheet_height = 1060;

iAngularGaugeX speed(double position, double end, i32 ticks, double rated, double over) {
    iAngularGaugeX gauge;
    gauge.Position = position;
    gauge.PositionMax = end;
    gauge.TickMajorCount = ticks;
    gauge.SectionCount = 3;
    gauge.SectionEnd = {rated, over};
    gauge.SectionColor = {rgb(0, 255, 0), rgb(255, 255, 0), rgb(255, 0, 0)};
    gauge.Label1Text = gauge.Label2Text = "RPM";
    return gauge;
}

iLinearGaugeX thermo(double position, double highest, colour pointer) {
    iLinearGaugeX gauge;
    gauge.PositionMax = 125;
    gauge.SectionCount = 2;
    gauge.SectionEnd = {100, 125};
    gauge.SectionColor = {rgb(192, 192, 192), rgb(255, 120, 55)};
    gauge.PointerColor = pointer;
    gauge.ShowMaxPointer = true;
    gauge.set_position(highest);
    gauge.set_position(position);
    return gauge;
}

iSevenSegmentAnalogX blue_digits(double value) {
    return {.Value = value, .SegmentColor = 16738370, .SegmentOffColor = rgb(0, 0, 128)};
}

iSevenSegmentAnalogX orange_digits(double value) {
    return {.Value = value, .SegmentColor = 33023, .SegmentOffColor = 85};
}

class sheet {
  public:
    sheet() {
        QPalette grey = page_.palette();
        grey.setColor(QPalette::Window, QColor(192, 192, 192));
        page_.setPalette(grey);
        page_.setAutoFillBackground(true);
        page_.resize(sheet_width, sheet_height);
    }

    /// Puts a control on the sheet.
    template <class View, class Control>
    View& put(const Control& control, const QRect& place, bool enabled = true) {
        auto* view = new View(&page_);
        view->setGeometry(place);
        view->setEnabled(enabled);
        view->show_control(control);
        return *view;
    }

    /// A dial with digits in its gap.
    void put_speed(const iAngularGaugeX& gauge, QPoint place, int side, bool enabled = true) {
        const auto& dial = put<angular_gauge_view>(gauge, {place, QSize(side, side)}, enabled);
        put<seven_segment_view>(blue_digits(gauge.Position), dial.digit_area().translated(place), enabled);
    }

    QPixmap picture() { return page_.grab(); }

  private:
    QWidget page_;
};

void put_dials(sheet& page) {
    page.put_speed(speed(517, 1000, 11, 1000, 1000), {10, 10}, 104);
    page.put_speed(speed(98, 120, 13, 100, 110), {124, 10}, 104);
    page.put_speed(speed(289, 300, 11, 250, 275), {238, 10}, 104);
    page.put_speed(speed(610, 700, 8, 514, 600), {352, 10}, 104);
    page.put_speed(speed(0, 1400, 9, 1000, 1150), {466, 10}, 104);
    page.put_speed(speed(1502, 3000, 7, 1500, 1725), {580, 10}, 104);
    page.put_speed(speed(5000, 4000, 9, 3000, 3450), {694, 10}, 104);
    page.put_speed(speed(0, 1000, 11, 1000, 1000), {808, 10}, 104, false);
    page.put_speed(speed(750, 1400, 9, 1000, 1150), {922, 10}, 80);
    page.put_speed(speed(750, 1400, 9, 1000, 1150), {1012, 10}, 60);
    page.put_speed(speed(517, 1000, 11, 600, 800), {10, 340}, 150);
    page.put_speed(speed(1502, 3000, 7, 1500, 1725), {170, 340}, 200);
    page.put_speed(speed(103, 120, 13, 100, 110), {380, 340}, 300);
    page.put_speed(speed(750, 1400, 9, 1000, 1150), {690, 340}, 300, false);
}

void put_bars(sheet& page) {
    constexpr colour tsig = rgb(198, 0, 0);
    constexpr colour teff = rgb(185, 0, 185);
    page.put<linear_gauge_view>(thermo(42, 71, tsig), {10, 130, 52, 104});
    page.put<linear_gauge_view>(thermo(42, 71, teff), {72, 130, 52, 104});
    page.put<linear_gauge_view>(thermo(110, 110, tsig), {134, 130, 52, 104});
    page.put<linear_gauge_view>(thermo(0, 0, tsig), {196, 130, 52, 104});
    page.put<linear_gauge_view>(thermo(300, 300, tsig), {258, 130, 52, 104});
    page.put<linear_gauge_view>(thermo(0, 0, tsig), {320, 130, 52, 104}, false);
    page.put<linear_gauge_view>(thermo(42, 71, tsig), {382, 130, 44, 88});
    page.put<linear_gauge_view>(thermo(42, 71, tsig), {436, 130, 30, 60});
    page.put<linear_gauge_view>(thermo(42, 71, tsig), {476, 130, 52, 200});
    page.put<linear_gauge_view>(thermo(88, 104, teff), {1000, 340, 100, 200});
    page.put<linear_gauge_view>(thermo(104, 117, tsig), {1110, 340, 120, 300});
}

void put_digits(sheet& page) {
    page.put<seven_segment_view>(blue_digits(1502), {540, 130, 60, 20});
    page.put<seven_segment_view>(blue_digits(0), {610, 130, 60, 20});
    page.put<seven_segment_view>(orange_digits(345), {680, 130, 40, 18});
    page.put<seven_segment_view>(orange_digits(-8), {730, 130, 40, 18});
    page.put<seven_segment_view>(orange_digits(1234567), {780, 130, 60, 20});
    page.put<seven_segment_view>(orange_digits(123456789012), {850, 130, 60, 20});
    page.put<seven_segment_view>(blue_digits(1502), {920, 130, 60, 20}, false);
    iSevenSegmentAnalogX fine = orange_digits(12.345);
    fine.Precision = 2;
    fine.DigitCount = 6;
    fine.ShowSign = true;
    page.put<seven_segment_view>(fine, {990, 130, 80, 20});
    page.put<seven_segment_view>(fine, {540, 200, 200, 48});
    page.put<seven_segment_view>(blue_digits(86), {1080, 130, 30, 14});
    iSevenSegmentAnalogX unlit = blue_digits(0);
    unlit.SegmentColor = rgb(0, 0, 128);
    page.put<seven_segment_view>(unlit, {1120, 130, 60, 20});
    page.put<seven_segment_view>(blue_digits(1234567890), {750, 200, 300, 60});

    page.put<analog_display_view>(iAnalogDisplayX{23, 0, "%", rgb(255, 0, 0)}, {540, 160, 60, 20});
    page.put<analog_display_view>(iAnalogDisplayX{123, 0, "%", rgb(255, 0, 255)}, {610, 160, 60, 20});
    page.put<analog_display_view>(iAnalogDisplayX{12.34, 2, "mV", rgb(0, 255, 0)}, {680, 160, 70, 20});
    page.put<analog_display_view>(iAnalogDisplayX{12345.678, 2, "mV", rgb(0, 255, 0)}, {760, 160, 60, 20});
    page.put<analog_display_view>(iAnalogDisplayX{0, 0, "%", rgb(85, 0, 0)}, {830, 160, 60, 20}, false);
    page.put<analog_display_view>(iAnalogDisplayX{12.34, 2, "mV", rgb(0, 255, 0)}, {900, 160, 60, 20}, false);
    page.put<analog_display_view>(iAnalogDisplayX{7.5, 1, "\xB0\x43", rgb(255, 160, 0)}, {970, 160, 48, 16});
    page.put<analog_display_view>(iAnalogDisplayX{12.34, 2, "mV", rgb(0, 255, 0)}, {540, 260, 200, 48});
}

void put_lamps(sheet& page) {
    const iLedRoundX ready;
    const iLedRoundX alarm{.ActiveColor = rgb(255, 0, 0), .InactiveColor = rgb(64, 0, 0)};
    const iLedRoundX warning{.ActiveColor = rgb(255, 0, 0), .InactiveColor = 16512};
    int left = 10;
    for (const int side : {10, 12, 16, 20, 32, 48}) {
        int top = 660;
        for (iLedRoundX lamp : {ready, alarm, warning}) {
            for (const bool active : {false, true}) {
                lamp.Active = active;
                page.put<led_view>(lamp, {left, top, side, side});
                page.put<led_view>(lamp, {left + 230, top, side, side}, false);
                top += 56;
            }
        }
        left += side + 14;
    }
    page.put<led_view>(iLedRoundX{.Active = true}, {500, 660, 200, 200});
    page.put<led_view>(alarm, {720, 660, 200, 200});
    page.put<led_view>(iLedRoundX{true, rgb(255, 0, 0), 0}, {940, 660, 200, 200});
}

/// Mean time of a paint, in microseconds, with and without the face painted anew.
template <class View, class Control>
void measure(const char* name, Control control, QSize size, void (*change)(Control&, int)) {
    constexpr int rounds = 2000;
    View view;
    view.resize(size);
    QImage canvas(size * 2, QImage::Format_ARGB32_Premultiplied);
    view.show_control(control);
    view.render(&canvas);
    QElapsedTimer clock;
    clock.start();
    for (int round = 0; round < rounds; ++round) {
        change(control, round);
        view.show_control(control);
        view.render(&canvas, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    }
    const double each = static_cast<double>(clock.nsecsElapsed()) / 1000 / rounds;
    QTextStream(stdout) << name << ' ' << size.width() << " x " << size.height() << ": " << each << " us\n";
}

void measure_all() {
    const auto move_needle = [](iAngularGaugeX& gauge, int round) { gauge.Position = round % 1000; };
    const auto new_face = [](iAngularGaugeX& gauge, int round) { gauge.PositionMax = 1000 + round % 2; };
    const auto move_pointer = [](iLinearGaugeX& gauge, int round) { gauge.set_position(round % 125); };
    const auto new_digits = [](iSevenSegmentAnalogX& digits, int round) { digits.Value = 1000 + round; };
    const auto new_number = [](iAnalogDisplayX& number, int round) { number.Value = round / 100.0; };
    const auto blink = [](iLedRoundX& lamp, int round) { lamp.Active = round % 2 == 0; };
    for (const int side : {104, 200}) {
        const iAngularGaugeX dial = speed(0, 1000, 11, 600, 800);
        measure<angular_gauge_view, iAngularGaugeX>("dial, needle", dial, {side, side}, move_needle);
        measure<angular_gauge_view, iAngularGaugeX>("dial, face", dial, {side, side}, new_face);
        measure<linear_gauge_view, iLinearGaugeX>("bar", thermo(0, 0, 198), {side / 2, side}, move_pointer);
        measure<seven_segment_view, iSevenSegmentAnalogX>("digits", blue_digits(0),
                                                          {side * 60 / 104, side / 5}, new_digits);
        measure<analog_display_view, iAnalogDisplayX>("number", iAnalogDisplayX{0, 2, "mV", rgb(0, 255, 0)},
                                                      {side * 60 / 104, side / 5}, new_number);
        measure<led_view, iLedRoundX>("lamp", iLedRoundX{}, {side * 16 / 104, side * 16 / 104}, blink);
    }
}

} // namespace

int main(int argc, char** argv) {
    const QApplication app(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: picture_sheet file.png | --measure\n";
        return 2;
    }
    const QString target = QString::fromLocal8Bit(argv[1]);
    if (target == "--measure") {
        measure_all();
        return 0;
    }
    sheet page;
    put_dials(page);
    put_bars(page);
    put_digits(page);
    put_lamps(page);
    return page.picture().save(target) ? 0 : 1;
}
