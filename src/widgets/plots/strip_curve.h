#pragma once
// A curve of a strip chart in the plot library.

#include "controls/curve_strokes.h"

#include <qcustomplot.h>

#include <QRect>

#include <vector>

namespace tyxo {

/// On the screen drawn column by column, on paper by the library, as lines.
class strip_curve : public QCPGraph {
  public:
    explicit strip_curve(QCustomPlot& plot) : QCPGraph(plot.xAxis, plot.yAxis) {}

  protected:
    void draw(QCPPainter* painter) override;

  private:
    curve_painter strokes_; // these three are kept for their memory
    std::vector<curve_corner> corners_;
    std::vector<QRectF> rectangles_;
};

} // namespace tyxo
