#pragma once
// Charts and cycles of logs on paper and in files.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"
#include "xlg/plot_words.h"

#include <QRectF>
#include <QSize>
#include <QString>

#include <cstddef>
#include <functional>
#include <span>
#include <string>

class QCPPainter;
class QWidget;

namespace tyxo::view {

/// Of the layout, which is that of a screen.
inline constexpr int pixels_an_inch = 96;

/// Where something is painted: an area in the painter's units, of which so many are a pixel of the layout.
struct picture_place {
    QRectF area;
    double pixel = 1;
    bool clips = true; ///< what is painted outside of a clip does not show
};

/// A chart with its rows, and what stands above it.
struct chart_of_picture {
    const iStripChartX& chart;
    const strip_window& rows;
    QString engine; ///< a few words
};

/// Charts below each other, the title over them, the name and the engine over each; of a single one there is
/// the title alone, with the engine beside it.
void paint_charts(QCPPainter& painter, const picture_place& place, const QString& title,
                  std::span<const chart_of_picture> charts);

/// What so many charts need, in pixels of the layout.
[[nodiscard]] int least_picture_height(std::size_t charts);

/// A widget of the program under a title. It gets the size that there is room for; then `renew` lets it show
/// its state again.
void paint_widget(QCPPainter& painter, const picture_place& place, const QString& title, QWidget& widget,
                  const std::function<void()>& renew);

/// The size of a picture of which none is wanted: a document is paper across, other pictures have so many
/// pixels. Failure: the ending of the file is none.
[[nodiscard]] QSize usual_picture_size(const std::string& file, const QSize& pixels);

using picture_painter = std::function<void(QCPPainter&, const picture_place&)>;

/// Paints a picture of this size and writes the file, by its ending, as a whole or not at all. `title` is
/// what readers of the file call it. Failure: that of `xlg::write_whole_file`, or an ending that is none.
void write_picture(const std::string& file, bool force, const QSize& size, const QString& title,
                   const picture_painter& paint);

} // namespace tyxo::view
