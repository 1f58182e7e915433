#pragma once
// The row of legend entries above the curves of a strip chart.

#include <QBrush>

class QCPLayoutGrid;
class QCPLegend;
class QCustomPlot;
class QFont;
class QMargins;
class QSize;

namespace tyxo {

/// As many entries in a line as there is room for, on a ground as wide as the axes.
class strip_legend {
  public:
    /// Takes the legend of `plot` out of its axes and puts it above them.
    strip_legend(QCustomPlot& plot, int indent);
    strip_legend(const strip_legend&) = delete;
    strip_legend& operator=(const strip_legend&) = delete;

    void set_colours(const QBrush& ground, const QColor& print);

    /// The letters, the samples of the curves, and the room beside and below.
    void set_letters(const QFont& font, const QSize& sample, const QMargins& room);

    /// The curves are others now: entries are made anew.
    void renew() { wrap_ = -1; }

    /// For a width and a height of a line in pixels.
    void arrange(int width, int line);

  private:
    QCustomPlot& plot_;
    QCPLegend* legend_;
    QCPLayoutGrid* place_; ///< keeps the ground of the legend as wide as the axes
    int wrap_ = 0;
};

} // namespace tyxo
