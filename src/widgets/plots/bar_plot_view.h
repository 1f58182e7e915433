#pragma once
// The plot of a bar diagram, drawn by the plot library: bars side by side over one X axis and two Y axes.

#include "controls/bar_plot.h"
#include "widgets/spoken.h"

#include <qcustomplot.h>

#include <vector>

namespace tyxo {

/// Shows the first two Y axes of the control, left and right. What it shows stands in its dynamic properties:
/// `PlotTitle`, `XAxisSpan`, and per axis or series n `YAxisMin(n)`, `YAxisSpan(n)`, `YAxisTitle(n)`,
/// `SeriesTitle(n)`, `SeriesColor(n)`, `SeriesPoints(n)` (a list of QPointF).
class bar_plot_view : public QCustomPlot, public spoken_control {
    Q_OBJECT

  public:
    explicit bar_plot_view(QWidget* parent);

    void show_control(const iPlotX& control);

    /// The inner rectangle of the axes, in pixels of the widget, and the size of the texts.
    void set_places(const QRect& axes, int text_pixels);

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Chart; }
    /// The numbers of each series, bar by bar.
    [[nodiscard]] QString spoken_text() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void draw_anew();
    [[nodiscard]] bool paint_as_lines();
    void show_axes();
    void show_series();
    void show_marks(std::size_t series, const QVector<double>& keys, const QVector<double>& values);
    void place_heading();
    void describe();

    iPlotX shown_;
    QCPItemText* title_;
    QCPItemLine* zero_line_; ///< of the right axis
    std::vector<QCPBars*> bars_;
    std::vector<QCPGraph*> marks_; ///< two for each series: of bars that go beyond the axis up, and down
    int text_pixels_ = 11;
    bool stale_ = false; ///< it changed where nobody saw it
};

} // namespace tyxo
