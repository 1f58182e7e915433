#pragma once
// A strip chart on the screen.

#include "widgets/clickable.h"
#include "widgets/plots/strip_field.h"
#include "widgets/plots/strip_plot.h"
#include "widgets/plots/strip_times.h"
#include "widgets/spoken.h"

#include <qcustomplot.h>

#include <functional>
#include <vector>

class QLabel;

namespace tyxo {

/// Keeps no rows, only its picture, in which newer rows move on by whole pixel columns. The title stands in
/// the middle of a line of its own, whose ends are left free for the buttons of the panels. Beside the
/// properties below it has those of each curve: `CurveTitle(0)`, `CurveColor(0)`, `CurveVisible(0)` and so
/// on.
class chart_view : public clickable<QCustomPlot>, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(double XAxisMin READ x_axis_min)
    Q_PROPERTY(double XAxisSpan READ x_axis_span)
    Q_PROPERTY(double YAxisMin READ y_axis_min)
    Q_PROPERTY(double YAxisMax READ y_axis_max)
    Q_PROPERTY(bool Frozen READ frozen)

  public:
    /// The rows that belong to the control's span, or those that it was frozen with.
    using shown_rows = std::function<const strip_window&()>;

    explicit chart_view(shown_rows rows, QWidget* parent = nullptr);

    /// Shows the control over its rows; costs a comparison when neither differs. A frozen chart keeps its
    /// picture and the titles of its curves, which name the scales that its values have, whatever becomes of
    /// the control's.
    void show_control(const iStripChartX& control);

    /// Draws all of it anew: the rows are others, and not only newer ones.
    void renew();

    /// The height of the title's line, and the parts at its ends that buttons stand in. The title stands in
    /// the middle as long as it keeps free the same at both ends.
    void set_title_room(int line, int left_end, int right_end);

    [[nodiscard]] QString title() const;
    [[nodiscard]] double x_axis_min() const { return shown_.XAxisMin; }
    [[nodiscard]] double x_axis_span() const { return shown_.XAxisSpan; }
    [[nodiscard]] double y_axis_min() const { return shown_.YAxisMin; }
    [[nodiscard]] double y_axis_max() const { return shown_.YAxisMax; }
    [[nodiscard]] bool frozen() const { return shown_.Frozen; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Chart; }
    /// Whether it runs, how long a time it shows, and the newest value of each visible curve.
    [[nodiscard]] QString spoken_text() const override;

  signals:
    void clicked();

  protected:
    void draw(QCPPainter* painter) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void click() override { emit clicked(); }

  private:
    /// Tells one picture of rows from another.
    struct rows_mark {
        i32 rows = 0;
        std::int64_t begun = 0;
        std::int64_t newest = 0;
        std::int64_t span = 0;
        bool operator==(const rows_mark&) const = default;
    };

    /// A part of the picture around the field, in pixels of the device.
    struct still_part {
        QRect place;
        QImage picture;
    };

    void describe();
    void place_badge();
    void renew_part(const QRect& part);
    void follow_rows();
    void draw_picture(double ratio);
    [[nodiscard]] QImage still_picture(double ratio);
    void keep_still_parts(const QImage& picture);
    void paint_picture(QPainter& painter) const;
    void paint_title(QPainter& painter) const;
    void paint_times();
    [[nodiscard]] QRect times_place() const;
    [[nodiscard]] static rows_mark mark_of(const strip_window& rows);
    [[nodiscard]] QFont title_font() const;
    [[nodiscard]] QRect title_place() const;

    shown_rows rows_;
    int title_line_ = 24;
    int left_end_ = 125;
    int right_end_ = 125;
    strip_plot plot_;
    QLabel* badge_;
    iStripChartX asked_; ///< the control as it was given last
    iStripChartX shown_; ///< and what is shown of it
    rows_mark shown_rows_;
    std::vector<still_part> still_; ///< none when all is to be painted anew; the last one has the clock
    QImage below_field_;            ///< what stands still under the clock
    QRect picture_;                 ///< all of it, in pixels of the device
    QRect field_place_;             ///< the part that moves
    strip_field field_;
    strip_times times_;
};

} // namespace tyxo
