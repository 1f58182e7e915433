#pragma once
// The painted upright scale: a bar with coloured sections, a pointer, and a mark at the highest position so
// far.

#include "controls/controls.h"
#include "controls/gauge_geometry.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

#include <vector>

namespace tyxo {

/// Readable from about 40 x 80 pixels on; the scale is as high as the widget and stands in its middle.
class linear_gauge_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double Position READ position)
    Q_PROPERTY(double PositionMin READ position_min)
    Q_PROPERTY(double PositionMax READ position_max)
    Q_PROPERTY(int SectionCount READ section_count)
    Q_PROPERTY(double SectionEnd1 READ section_end_1)
    Q_PROPERTY(double SectionEnd2 READ section_end_2)
    Q_PROPERTY(int SectionColor1 READ section_color_1)
    Q_PROPERTY(int SectionColor2 READ section_color_2)
    Q_PROPERTY(int TickMajorCount READ tick_major_count)
    Q_PROPERTY(int PointerSize READ pointer_size)
    Q_PROPERTY(int PointerColor READ pointer_color)
    Q_PROPERTY(bool ShowMaxPointer READ show_max_pointer)
    Q_PROPERTY(int MaxPointerColor READ max_pointer_color)
    Q_PROPERTY(double MaxPosition READ max_position)

  public:
    explicit linear_gauge_view(QWidget* parent = nullptr);

    /// Shows the control as it is now; costs a comparison when nothing differs.
    void show_control(const iLinearGaugeX& control);

    [[nodiscard]] QSize sizeHint() const override { return {52, 104}; }

    [[nodiscard]] double position() const { return shown_.Position; }
    [[nodiscard]] double position_min() const { return shown_.PositionMin; }
    [[nodiscard]] double position_max() const { return shown_.PositionMax; }
    [[nodiscard]] int section_count() const { return shown_.SectionCount; }
    [[nodiscard]] double section_end_1() const { return shown_.SectionEnd[0]; }
    [[nodiscard]] double section_end_2() const { return shown_.SectionEnd[1]; }
    [[nodiscard]] int section_color_1() const { return shown_.SectionColor[0]; }
    [[nodiscard]] int section_color_2() const { return shown_.SectionColor[1]; }
    [[nodiscard]] int tick_major_count() const { return shown_.TickMajorCount; }
    [[nodiscard]] int pointer_size() const { return shown_.PointerSize; }
    [[nodiscard]] int pointer_color() const { return shown_.PointerColor; }
    [[nodiscard]] bool show_max_pointer() const { return shown_.ShowMaxPointer; }
    [[nodiscard]] int max_pointer_color() const { return shown_.MaxPointerColor; }
    [[nodiscard]] double max_position() const { return shown_.MaxPosition; }

    /// No progress bar: readers tell the progress of every such bar unasked.
    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Dial; }
    [[nodiscard]] QString spoken_text() const override;
    [[nodiscard]] std::optional<scale> spoken_scale() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] scale_limits limits() const { return {shown_.PositionMin, shown_.PositionMax}; }
    [[nodiscard]] double unit() const;
    [[nodiscard]] double pointer_length() const;
    [[nodiscard]] QRectF bar() const;
    [[nodiscard]] double height_of(double share) const;
    void paint_face(QPainter& painter) const;
    void paint_bar(QPainter& painter) const;
    void paint_scale(QPainter& painter) const;
    void paint_tick_labels(QPainter& painter, const std::vector<tick_mark>& ticks, double right) const;
    void paint_pointer(QPainter& painter, double value, const QColor& color, double size) const;
    void paint_max_line(QPainter& painter) const;
    void drop_faces();
    void move_pointers(const iLinearGaugeX& to);
    [[nodiscard]] QPolygonF triangle(double value, double size) const;
    [[nodiscard]] double pointer_rim() const;
    [[nodiscard]] QRect pointer_area() const;
    [[nodiscard]] QRectF max_line() const;
    [[nodiscard]] QRect max_pointer_area() const;

    iLinearGaugeX shown_;
    face_cache face_;      // without the pointers
    face_cache up_to_max_; // with the second one, which seldom moves
    face_cache gauge_;     // with both
};

} // namespace tyxo
