#pragma once
// For the tests of the painted controls: controls to show, and a look at the pixels of what shows them.

#include "controls/controls.h"

#include <QColor>
#include <QEvent>
#include <QImage>
#include <QObject>
#include <QRectF>
#include <QTest>
#include <QVariant>
#include <QWidget>

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

namespace tyxo {

inline constexpr double infinite = std::numeric_limits<double>::infinity();
inline constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
inline const QColor page_color(192, 0, 192); ///< of what lies behind a control; no control paints in it
inline const QColor white(255, 255, 255);
inline const QColor black(0, 0, 0);

/// The view as it looks on a page of `page_color`, one pixel per logical pixel or more by the screen's ratio.
inline QImage picture_of(QWidget& view) {
    QImage image(view.size() * view.devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(view.devicePixelRatioF());
    image.fill(page_color);
    view.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

inline QColor pixel_at(const QImage& image, double x, double y) {
    const double ratio = image.devicePixelRatio();
    return image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
}

/// The pixel at an angle (degrees, counter-clockwise from the right) and a share of the radius of a dial.
inline QColor dial_pixel(const QImage& image, double angle, double share) {
    const double r = image.deviceIndependentSize().width() / 2;
    const double radians = angle * std::numbers::pi / 180;
    return pixel_at(image, r + share * r * std::cos(radians), r - share * r * std::sin(radians));
}

/// The smallest rectangle with all pixels of a colour, in logical pixels; empty if there are none.
inline QRectF area_of(const QImage& image, const QColor& color) {
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == color) area |= QRect(x, y, 1, 1);
    const double ratio = image.devicePixelRatio();
    return {area.x() / ratio, area.y() / ratio, area.width() / ratio, area.height() / ratio};
}

inline bool has(const QImage& image, const QColor& color) {
    return !area_of(image, color).isEmpty();
}

inline iAngularGaugeX speed_gauge(double position) {
    iAngularGaugeX gauge;
    gauge.Position = position;
    gauge.SectionCount = 3;
    gauge.SectionEnd = {600, 800};
    gauge.SectionColor = {rgb(0, 255, 0), rgb(255, 255, 0), rgb(255, 0, 0)};
    gauge.Label1Text = gauge.Label2Text = "RPM";
    return gauge;
}

inline iLinearGaugeX thermo_gauge(double position) {
    iLinearGaugeX gauge;
    gauge.PositionMax = 125;
    gauge.SectionCount = 2;
    gauge.SectionEnd = {100, 125};
    gauge.SectionColor = {rgb(192, 192, 192), rgb(255, 120, 55)};
    gauge.PointerColor = rgb(198, 0, 0);
    gauge.ShowMaxPointer = true;
    gauge.set_position(position);
    return gauge;
}

inline iSevenSegmentAnalogX digits(double value) {
    return {.Value = value, .SegmentColor = rgb(255, 128, 0), .SegmentOffColor = rgb(85, 0, 0)};
}

inline const QColor lit(255, 128, 0);
inline const QColor unlit(85, 0, 0);
inline const QColor pointer(198, 0, 0);
inline const QColor lower_section(192, 192, 192);
inline const QColor upper_section(255, 120, 55);

template <class View, class Control> QImage shown(const Control& control, QSize size, bool enabled = true) {
    View view;
    view.resize(size);
    view.setEnabled(enabled);
    view.show_control(control);
    return picture_of(view);
}

/// Where the middle of the pointer stands on the bar: 0 at its lower end, 1 at its upper end.
inline double pointer_share(const QImage& image, const QColor& color) {
    const QRectF scale = area_of(image, lower_section) | area_of(image, upper_section);
    return (scale.bottom() - area_of(image, color).center().y()) / scale.height();
}

/// How many separate runs of lit pixels a row has.
inline int lit_runs(const QImage& image, int row) {
    int runs = 0;
    bool inside = false;
    for (int x = 0; x < image.width(); ++x) {
        const bool is_lit = image.pixelColor(x, row).red() > 150;
        if (is_lit && !inside) ++runs;
        inside = is_lit;
    }
    return runs;
}

/// Values and counts that nothing should ask for.
inline constexpr i32 most = std::numeric_limits<i32>::max();

inline iAngularGaugeX degenerate_dial(double value) {
    iAngularGaugeX gauge = speed_gauge(value);
    gauge.PositionMin = value;
    gauge.PositionMax = -value;
    gauge.SectionEnd = {value, -value};
    gauge.SectionCount = gauge.ArcRangeDegrees = gauge.TickMajorCount = gauge.TickMinorCount = most;
    gauge.ArcStartDegrees = -most;
    return gauge;
}

inline iLinearGaugeX degenerate_bar(double value) {
    iLinearGaugeX gauge = thermo_gauge(value);
    gauge.PositionMax = gauge.MaxPosition = value;
    gauge.SectionEnd = {-value, value};
    gauge.SectionCount = gauge.TickMajorCount = gauge.PointerSize = most;
    return gauge;
}

inline void expect_properties(const QWidget& view,
                              const std::vector<std::pair<const char*, QVariant>>& expected) {
    for (const auto& [name, value] : expected) {
        QVERIFY2(view.property(name).isValid(), name);
        QVERIFY2(view.property(name) == value, name);
    }
}

} // namespace tyxo
