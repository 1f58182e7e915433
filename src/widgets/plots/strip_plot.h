#pragma once
// A strip chart drawn by the plot library, for the screen and for paper.

#include "basics/clock_text.h"
#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "widgets/plots/strip_field.h"
#include "widgets/plots/strip_legend.h"
#include "widgets/plots/strip_times.h"

#include <QSharedPointer>
#include <QSize>

#include <vector>

class QCPGraphData;
class QCustomPlot;

namespace tyxo {

class given_ticks;

/// What differs between screen and paper.
struct strip_look {
    bool paper = false;  ///< white around the axes; the grid keeps its ground, or the white curve were lost
    int title_line = 24; ///< left free at the top, in pixels
    bool cut = false;    ///< curves end at the axes by their points, for what knows no clipping
};

/// Sets up a plot as a strip chart: axes, a row of legend entries above. On paper the plot library draws
/// grid, curves and clock too; on the screen these move, and `field` and `ticks` tell how they look.
class strip_plot {
  public:
    /// `plot` is used for nothing else and lives as long as this.
    strip_plot(QCustomPlot& plot, strip_look look);

    /// The size in logical pixels, and the device's pixels to each of them.
    void set_size(const QSize& size, double ratio);

    /// The chart with the rows that end at the newest one. A frozen chart spans what `rows` span.
    void show(const iStripChartX& chart, const strip_window& rows);

    /// The same chart on the screen with newer rows. Returns whether the ticks are others now, which they are
    /// not while the newest row stands in the same pixel column.
    bool follow(const strip_window& rows);

    /// Leaves a line of this height free at the top.
    void set_title_line(int pixels);

    /// The width that the curves have, in pixels of the device.
    [[nodiscard]] int columns() const;

    /// Grid and curves for a field of this height, in pixels of the device, which begins at `top`.
    [[nodiscard]] field_look field(int top, int height) const;

    /// The clock, and the columns at both ends of the picture.
    [[nodiscard]] const column_ticks& ticks() const { return ticks_; }
    [[nodiscard]] std::int64_t first_column() const { return last_column_ - columns() + 1; }
    [[nodiscard]] times_look times() const;
    [[nodiscard]] double ratio() const { return ratio_; }

  private:
    static constexpr int curve_width = 2;
    static constexpr int dot_pixels = 2; ///< what a row that stands alone is longer than thick
    static constexpr int most_strip_ticks = 50;

    void set_colours();
    void set_fonts();
    void set_curves();
    void set_y_scale();
    void set_ticks();
    void add_time_ticks(double from, double to);
    void add_even_ticks();
    void fill(std::size_t curve, const strip_window& rows);
    [[nodiscard]] QVector<QCPGraphData> cut_off(const QVector<QCPGraphData>& line) const;
    [[nodiscard]] bool clock_moved() const;
    [[nodiscard]] QColor muted(colour value) const;
    [[nodiscard]] double span_of(const strip_window& rows) const;
    [[nodiscard]] int letters() const;
    [[nodiscard]] int left_margin() const;
    [[nodiscard]] int legend_line() const;
    [[nodiscard]] int graph_width() const;
    [[nodiscard]] int field_left() const;

    QCustomPlot& plot_;
    strip_look look_;
    strip_legend legend_;
    QSharedPointer<given_ticks> time_ticks_;
    QSharedPointer<given_ticks> value_ticks_;
    iStripChartX shown_;
    QSize size_;
    double ratio_ = 1;
    bool set_up_ = false;
    int set_pixels_ = 0; ///< the letters' size
    double span_ = 1;    ///< ms
    double column_ = 1;  ///< ms of a pixel column of the device
    double label_ = 0;   ///< the width of a clock label
    bool any_rows_ = false;
    std::int64_t newest_ = 0; ///< time of the newest row
    std::int64_t last_column_ = 0;
    column_ticks ticks_;
    std::int64_t probe_ = 0; ///< a moment with a label, and what the clock showed then
    local_time probed_;
    std::vector<strip_point> points_; // kept for its memory
};

} // namespace tyxo
