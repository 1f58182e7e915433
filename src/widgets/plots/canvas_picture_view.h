#pragma once
// The picture of a drawing surface, of which only what changed is painted anew.

#include "controls/canvas.h"
#include "widgets/plots/canvas_lines_view.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRegion>

#include <optional>
#include <vector>

namespace tyxo {

/// How a surface is painted; with another look all of it is painted anew.
struct canvas_look {
    QSize size;          ///< logical pixels
    double ratio = 1;    ///< device pixels in a logical one
    QPointF origin = {}; ///< of the surface, in logical pixels
    double unit = 1;     ///< logical pixels
    QColor ground = {};  ///< below all lines
    QFont text_font = {};
    bool operator==(const canvas_look&) const = default;
};

/// Lines are painted in their order, over them the texts. What a new picture has below the first line that
/// differs is taken from a layer: the picture of the lines up to there, which is kept for the next time.
class canvas_picture {
  public:
    [[nodiscard]] bool shows(const canvas& surface, const canvas_look& look) const {
        return passes_ == surface.passes && look_ == look;
    }

    /// Paints what differs. All pixels that may have changed lie in the region, in logical pixels.
    QRegion renew(const canvas& surface, const canvas_look& look);

    [[nodiscard]] const QImage& image() const { return image_; }

    /// Paints all of a surface, and keeps nothing.
    static void paint(QPainter& painter, const canvas& surface, const canvas_look& look);

  private:
    /// The first lines alone.
    struct layer {
        std::size_t lines = 0;
        unsigned met = 0; ///< the pass in which a picture last began to differ behind these lines
        bool valid = false;
        QImage image = {};
    };

    void begin_anew(const canvas_look& look);
    void add_layer(std::size_t lines);
    void paint_lines_above(const layer* below, const QRegion& area);
    void paint_lines(QPainter& painter, std::size_t from, std::size_t to) const;
    void paint_lines(std::size_t from, std::size_t to);
    void paint_texts(QPainter& painter) const;
    void paint_text(QPainter& painter, const QPointF& place, const QString& text) const;
    void paint_texts();
    [[nodiscard]] double pen_scale() const;
    [[nodiscard]] std::optional<QPointF> text_place(const canvas_text& text) const; ///< of its baseline
    [[nodiscard]] QRegion lines_area(std::size_t from) const;
    [[nodiscard]] QRegion texts_area() const;

    unsigned passes_ = 0;
    canvas_look look_;
    QImage image_;
    std::vector<line_run> lines_; // those in the picture
    std::vector<canvas_text> texts_;
    QRegion texts_area_;
    std::vector<layer> layers_; // by their number of lines
};

} // namespace tyxo
