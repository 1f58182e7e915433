#pragma once
// The part of a strip chart that moves: grid and curves, pixel column by pixel column.

#include "controls/curve_strokes.h"
#include "controls/strip_history.h"

#include <QImage>
#include <QRect>

#include <array>
#include <optional>
#include <vector>

namespace tyxo {

/// What a field looks like. Lengths are pixels of the device.
struct field_look {
    QRect place;       ///< in the picture of the chart
    double column = 1; ///< ms that a pixel column spans
    double low = 0;    ///< the value of the line below the field
    double high = 100; ///< and of that above it
    QRgb ground = 0;
    QRgb grid = 0;
    i32 GridLineStyle = 0;
    std::vector<double> levels;                             ///< values with a line of the grid
    int thickness = 1;                                      ///< of a curve
    int dot = 0;                                            ///< what a row that stands alone is longer
    std::array<std::optional<QRgb>, strip_curves> curves{}; ///< none for a hidden one
};

/// Keeps the picture of a chart's field. Columns are counted from time 0 and each one is a matter of the rows
/// alone, so that a field that was followed row by row is, pixel for pixel, one that is drawn anew.
class strip_field {
  public:
    /// The whole field. `lines` are the columns with an upright line of the grid, ascending.
    void draw(field_look look, const strip_window& rows, std::vector<std::int64_t> lines);

    /// What newer rows change in the field that was drawn last: it moves by whole columns, and the newest
    /// ones are drawn. Returns the area of the chart's picture that changed, which may be empty.
    QRect follow(const strip_window& rows, const std::vector<std::int64_t>& lines);

    /// The field is the part `shown` of this picture, which has room to the right for columns to come.
    [[nodiscard]] const QImage& picture() const { return picture_; }
    [[nodiscard]] QRect shown() const { return {QPoint(left_, 0), look_.place.size()}; }

    /// The column at the right edge for a newest row of this time.
    [[nodiscard]] static std::int64_t column_of(std::int64_t time, double column);

  private:
    /// Pixels to draw columns into.
    struct pixels {
        QRgb* first;
        qsizetype line; ///< words from one line to the next
    };

    [[nodiscard]] double height_of(double value) const;
    [[nodiscard]] std::int64_t first() const { return last_ - look_.place.width() + 1; }
    [[nodiscard]] pixels pixels_at(std::int64_t column);
    [[nodiscard]] bool same_lines(const std::vector<std::int64_t>& lines, std::int64_t last,
                                  std::int64_t drawn_from) const;
    void draw_columns(const pixels& onto, std::int64_t from, std::int64_t to, const strip_window& rows);
    void draw_grid(const pixels& onto, std::int64_t from, std::int64_t to) const;
    void draw_curve(const pixels& onto, std::int64_t from, std::int64_t to, std::size_t curve,
                    const strip_window& rows);
    void make_corners(std::int64_t from);
    void move(int columns);
    [[nodiscard]] bool put(std::int64_t from, std::int64_t to);

    field_look look_;
    QImage picture_;
    int left_ = 0; ///< of the part that is shown
    std::vector<std::int64_t> lines_;
    std::int64_t last_ = 0; ///< column at the right edge
    std::int64_t open_ = 0; ///< from here on the next row may change columns

    std::vector<QRgb> newest_; // these are kept for their memory
    std::vector<strip_point> points_;
    std::vector<curve_corner> corners_;
    curve_painter strokes_;
};

} // namespace tyxo
