#pragma once
// The painted polar scope: closed curves around a reference circle, on a ground on which white, red and blue
// can be told apart.

#include "controls/xy_plot.h"
#include "widgets/clickable.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

#include <vector>

namespace tyxo {

/// Readable from about 60 pixels on; the scope is the largest square in the widget, in its middle. Curves are
/// cut at its frame, whatever their points are; a point that is no finite number breaks its curve.
///
/// Of each curve n it also tells `CurveTitle(n)`, `CurveVisible(n)`, `CurveColor(n)` and `CurvePoints(n)`,
/// the number of points, as dynamic properties.
class xy_plot_view : public clickable<QWidget>, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double XAxisMin READ x_axis_min)
    Q_PROPERTY(double XAxisSpan READ x_axis_span)
    Q_PROPERTY(double YAxisMin READ y_axis_min)
    Q_PROPERTY(double YAxisSpan READ y_axis_span)

  public:
    explicit xy_plot_view(QWidget* parent = nullptr);

    /// Shows the control as it is now, and itself if the control is visible; costs a comparison when nothing
    /// differs.
    void show_control(const iXYPlotX& control);

    [[nodiscard]] QSize sizeHint() const override { return {110, 110}; }

    [[nodiscard]] double x_axis_min() const { return shown_.XAxis.Min; }
    [[nodiscard]] double x_axis_span() const { return shown_.XAxis.Span; }
    [[nodiscard]] double y_axis_min() const { return shown_.YAxis.Min; }
    [[nodiscard]] double y_axis_span() const { return shown_.YAxis.Span; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Chart; }
    /// How far each visible curve leaves the reference circle.
    [[nodiscard]] QString spoken_text() const override;

  signals:
    /// Here a double click is one click.
    void clicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void click() override { emit clicked(); }

  private:
    [[nodiscard]] QRectF square() const;
    [[nodiscard]] QRectF area() const;
    [[nodiscard]] QPointF on_screen(const plot_point& point) const;
    void describe(std::size_t index);
    void drop_pictures(std::size_t first = 0);
    void show_curves(QPainter& painter, std::size_t last);
    void paint_face(QPainter& painter) const;
    void paint_curve(QPainter& painter, const plot_curve& curve) const;

    iXYPlotX shown_;
    /// Of the face with no curve but the first, with the second one too, and so on: a new curve leaves alone
    /// what lies below it.
    std::vector<face_cache> pictures_{1};
};

} // namespace tyxo
