#pragma once
// The painted dial: a needle over an arc with coloured sections, ticks and labels. Its lower gap takes a
// digit display, see `digit_area`.

#include "controls/controls.h"
#include "controls/gauge_geometry.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

#include <vector>

namespace tyxo {

/// Readable from about 80 pixels on; the dial is the largest circle in the widget, in its middle.
class angular_gauge_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double Position READ position)
    Q_PROPERTY(double PositionMin READ position_min)
    Q_PROPERTY(double PositionMax READ position_max)
    Q_PROPERTY(int SectionCount READ section_count)
    Q_PROPERTY(double SectionEnd1 READ section_end_1)
    Q_PROPERTY(double SectionEnd2 READ section_end_2)
    Q_PROPERTY(int SectionColor1 READ section_color_1)
    Q_PROPERTY(int SectionColor2 READ section_color_2)
    Q_PROPERTY(int SectionColor3 READ section_color_3)
    Q_PROPERTY(int ArcStartDegrees READ arc_start_degrees)
    Q_PROPERTY(int ArcRangeDegrees READ arc_range_degrees)
    Q_PROPERTY(int TickMajorCount READ tick_major_count)
    Q_PROPERTY(int TickMinorCount READ tick_minor_count)
    Q_PROPERTY(QString Label1Text READ label_1_text)
    Q_PROPERTY(QString Label2Text READ label_2_text)

  public:
    explicit angular_gauge_view(QWidget* parent = nullptr);

    /// Shows the control as it is now; costs a comparison when nothing differs.
    void show_control(const iAngularGaugeX& control);

    /// The area between hub, scale ends and rim that stays free for a digit display placed over the dial, in
    /// the widget's coordinates. Its lower corners may touch the rim. Free for arcs that leave the bottom
    /// open as the design values do.
    [[nodiscard]] QRect digit_area() const;

    [[nodiscard]] QSize sizeHint() const override { return {104, 104}; }

    [[nodiscard]] double position() const { return shown_.Position; }
    [[nodiscard]] double position_min() const { return shown_.PositionMin; }
    [[nodiscard]] double position_max() const { return shown_.PositionMax; }
    [[nodiscard]] int section_count() const { return shown_.SectionCount; }
    [[nodiscard]] double section_end_1() const { return shown_.SectionEnd[0]; }
    [[nodiscard]] double section_end_2() const { return shown_.SectionEnd[1]; }
    [[nodiscard]] int section_color_1() const { return shown_.SectionColor[0]; }
    [[nodiscard]] int section_color_2() const { return shown_.SectionColor[1]; }
    [[nodiscard]] int section_color_3() const { return shown_.SectionColor[2]; }
    [[nodiscard]] int arc_start_degrees() const { return shown_.ArcStartDegrees; }
    [[nodiscard]] int arc_range_degrees() const { return shown_.ArcRangeDegrees; }
    [[nodiscard]] int tick_major_count() const { return shown_.TickMajorCount; }
    [[nodiscard]] int tick_minor_count() const { return shown_.TickMinorCount; }
    [[nodiscard]] QString label_1_text() const { return qt_text(shown_.Label1Text); }
    [[nodiscard]] QString label_2_text() const { return qt_text(shown_.Label2Text); }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Dial; }
    [[nodiscard]] QString spoken_text() const override;
    [[nodiscard]] std::optional<scale> spoken_scale() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] scale_limits limits() const { return {shown_.PositionMin, shown_.PositionMax}; }
    [[nodiscard]] double radius() const;
    [[nodiscard]] double angle_of(double share) const;
    void paint_face(QPainter& painter) const;
    void paint_sections(QPainter& painter) const;
    void paint_ticks(QPainter& painter, const std::vector<tick_mark>& ticks) const;
    void paint_tick_labels(QPainter& painter, const std::vector<tick_mark>& ticks) const;
    void paint_caption(QPainter& painter) const;
    void paint_needle(QPainter& painter) const;
    void drop_faces();
    void move_needle(double position);
    [[nodiscard]] double needle_angle() const;
    [[nodiscard]] double needle_rim() const;
    [[nodiscard]] double hub_rim() const;
    [[nodiscard]] QPolygonF needle() const;
    [[nodiscard]] QRect needle_area() const;

    iAngularGaugeX shown_;
    face_cache face_; // without the needle
    face_cache dial_; // with it
};

} // namespace tyxo
