#pragma once
// A strip chart drawn by the plot library, for the screen and for paper.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "widgets/plots/strip_legend.h"

#include <QSharedPointer>
#include <QVector>

#include <vector>

class QCustomPlot;

namespace tyxo {

class given_ticks;

/// What differs between screen and paper.
struct strip_look {
    bool paper = false;  ///< white around the axes; the grid keeps its ground, or the white curve were lost
    int title_line = 24; ///< left free at the top, in pixels
};

/// Sets up a plot as a strip chart and fills it: curves over their grid, a row of legend entries above.
class strip_plot {
  public:
    /// `plot` is used for nothing else and lives as long as this.
    strip_plot(QCustomPlot& plot, strip_look look);

    /// The chart with the rows that end at the newest one; what did not change since the last call costs
    /// little. A frozen chart spans what `rows` span.
    void show(const iStripChartX& chart, const strip_window& rows);

    /// Legend and labels anew, for the plot's present size.
    void arrange();

    /// Leaves a line of this height free at the top.
    void set_title_line(int pixels);

    /// The width that the curves have at the plot's present size, in pixels of the device.
    [[nodiscard]] int columns() const;

  private:
    void set_colours();
    void set_fonts();
    void set_curves();
    void set_y_scale();
    void set_time_ticks();
    void set_even_ticks();
    void fill(std::size_t curve, const strip_window& rows);
    [[nodiscard]] double span_of(const strip_window& rows) const;
    [[nodiscard]] int letters() const;
    [[nodiscard]] int left_margin() const;
    [[nodiscard]] int legend_line() const;
    [[nodiscard]] int graph_width() const;

    QCustomPlot& plot_;
    strip_look look_;
    strip_legend legend_;
    QSharedPointer<given_ticks> time_ticks_;
    QSharedPointer<given_ticks> value_ticks_;
    iStripChartX shown_;
    bool set_up_ = false;
    int set_pixels_ = 0; ///< the letters' size
    double span_ = 1;    ///< ms
    double pixel_ = 1;   ///< ms
    bool any_rows_ = false;
    std::int64_t newest_ = 0;         ///< time of the newest row
    std::vector<strip_point> points_; // kept for its memory
};

} // namespace tyxo
