#pragma once
// A strip chart on the screen.

#include "widgets/clickable.h"
#include "widgets/plots/strip_plot.h"
#include "widgets/spoken.h"

#include <qcustomplot.h>

class QLabel;

namespace tyxo {

/// Keeps no rows, only the points of its picture. The title stands in the middle of a line of its own, whose
/// ends are left free for the buttons of the panels. Beside the properties below it has those of each curve:
/// `CurveTitle(0)`, `CurveColor(0)`, `CurveVisible(0)` and so on.
class chart_view : public clickable<QCustomPlot>, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(double XAxisMin READ x_axis_min)
    Q_PROPERTY(double XAxisSpan READ x_axis_span)
    Q_PROPERTY(double YAxisMin READ y_axis_min)
    Q_PROPERTY(double YAxisMax READ y_axis_max)
    Q_PROPERTY(bool Frozen READ frozen)

  public:
    explicit chart_view(QWidget* parent = nullptr);

    /// Shows the control over the rows that belong to its span, or those that it was frozen with; costs a
    /// comparison when neither differs. A frozen chart keeps its picture and the titles of its curves, which
    /// name the scales that its values have, whatever becomes of the control's.
    void show_control(const iStripChartX& control, const strip_window& rows);

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
    void updateLayout() override;
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
        std::int64_t newest = 0;
        std::int64_t span = 0;
        int columns = 0;
        bool operator==(const rows_mark&) const = default;
    };

    void describe();
    void place_badge();
    void renew();
    [[nodiscard]] QFont title_font() const;
    [[nodiscard]] QRect title_place() const;

    int title_line_ = 24;
    int left_end_ = 125;
    int right_end_ = 125;
    strip_plot plot_;
    QLabel* badge_;
    iStripChartX shown_;
    rows_mark shown_rows_;
    QImage picture_; ///< none when it is to be painted anew
    QRect laid_out_; ///< what the layout is made for
};

} // namespace tyxo
