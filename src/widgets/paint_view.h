#pragma once
// What the painted controls share: their colours, muted while a control is disabled; fonts fitted into a box;
// and the cached picture of the part of a control that seldom changes.

#include "platform/desktop/text.h"
#include "widgets/colour.h"

#include <QColor>
#include <QFont>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QString>

class QWidget;

namespace tyxo {

/// The colours of all instruments, chosen to be read at a glance in a dark control room.
namespace ink {
inline constexpr QRgb rim_light = 0xFFF2F3F4;
inline constexpr QRgb rim_dark = 0xFF6E7378;
inline constexpr QRgb dial_light = 0xFF343A41;
inline constexpr QRgb dial_dark = 0xFF20252A;
inline constexpr QRgb dial_print = 0xFFD3D8DC;
inline constexpr QRgb dial_fine_print = 0xFFA9B1B8;
inline constexpr QRgb paper = 0xFFECEEEE;
inline constexpr QRgb paper_print = 0xFF24292E;
inline constexpr QRgb paper_fine_print = 0xFF7C848B;
inline constexpr QRgb needle = 0xFFFFFFFF;
inline constexpr QRgb hub = 0xFF0F1215;
inline constexpr QRgb glass = 0xFF0B0D10;
inline constexpr QRgb glass_edge = 0xFFA9AEB3;
inline constexpr QRgb focus = 0xFF1C4F9C;
} // namespace ink

/// `from` where `share` is 0, `to` where it is 1.
[[nodiscard]] QColor mixed(const QColor& from, const QColor& to, double share);

/// The colour of a mark as it is, or for a disabled control drawn halfway to a middle grey.
[[nodiscard]] QColor shaded(const QColor& color, const QWidget& widget);

/// The same for what lies under the marks: drawn less far, so that they stay legible.
[[nodiscard]] QColor shaded_ground(const QColor& color, const QWidget& widget);

/// True of a painter onto a file of lines and letters, such as SVG and PDF: there nothing is painted from a
/// kept picture, so that it is sharp at any size.
[[nodiscard]] bool paints_lines(const QPainter& painter);

/// Smaller labels of a gauge cannot be read.
inline constexpr int least_label_pixels = 8;

/// The nearest boundary between two device pixels, for edges that must be crisp.
[[nodiscard]] double snapped(double length, double device_pixel_ratio);

/// The logical pixels of which an antialiased shape within `area` may touch a part, also where a device pixel
/// belongs to two of them.
[[nodiscard]] QRect touched(const QRectF& area);

/// The widget's font family at a size in logical pixels, for numbers and short words.
[[nodiscard]] QFont print_font(const QWidget& widget, double pixels, bool bold = false);

/// The same, shrunk so far that the text fits the box.
[[nodiscard]] QFont fitted_font(const QWidget& widget, const QString& text, const QSizeF& box, double pixels,
                                bool bold = false);

/// The dark window behind digits, with a fine rim.
void paint_glass(QPainter& painter, const QWidget& widget);

/// What is inside of the rim.
[[nodiscard]] QRectF glass_inside(const QWidget& widget);

/// The rim of a control that has the keyboard's focus, inside of `place`.
void paint_focus_rim(QPainter& painter, const QRectF& place);

/// A part of an instrument looks different from now on. It is painted with its frame: Qt then walks through
/// that frame only, where a widget of its own that shines through costs a walk through the whole window.
void update_part(QWidget& widget, const QRect& part);

/// Calls `paint(part)` for each rectangle that is to be painted, with the clip at it. A rectangle is quick
/// for Qt to paint in, other regions are not; and what is painted together ends at the same device pixel,
/// also where that lies across two logical ones.
template <class Paint> void paint_parts(QPainter& painter, const QPaintEvent& event, Paint paint) {
    for (const QRect& part : event.region()) {
        painter.setClipRect(part);
        paint(part);
    }
}

/// Keeps the painted face of a control, sharp at the screen's pixel ratio. Faces beyond `most_pixels` are
/// painted anew each time, to keep memory bounded.
class face_cache {
  public:
    static constexpr int most_pixels = 1024 * 1024; ///< logical ones

    /// To be called when the face looks different from now on.
    void drop() { picture_ = {}; }

    /// Paints the face of `widget`, by `paint(QPainter&)` if there is no fresh picture of it. A face that
    /// covers its widget has a ground, and is copied faster.
    template <class Paint>
    void show(QPainter& painter, const QWidget& widget, Paint paint, const QColor& ground = Qt::transparent) {
        if (!cacheable(widget) || paints_lines(painter)) {
            painter.fillRect(widget.rect(), ground);
            paint(painter);
            return;
        }
        if (stale(widget)) {
            picture_ = blank_picture(widget, ground);
            QPainter onto(&picture_);
            onto.setRenderHint(QPainter::Antialiasing);
            paint(onto);
        }
        painter.drawPixmap(0, 0, picture_);
    }

  private:
    [[nodiscard]] static bool cacheable(const QWidget& widget);
    [[nodiscard]] bool stale(const QWidget& widget) const;
    [[nodiscard]] static QPixmap blank_picture(const QWidget& widget, const QColor& ground);

    QPixmap picture_;
};

} // namespace tyxo
