#pragma once
// Paints a drawing surface of the core.

#include "controls/canvas.h"
#include "widgets/plots/canvas_picture_view.h"
#include "widgets/spoken.h"

#include <QFont>
#include <QWidget>

namespace tyxo {

/// Shows the whole of a surface of fixed size in units, as large as it fits, with room around it for lines
/// that leave it. Lines without a finite end are left out, lines beyond the widget are cut.
class canvas_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double ScaleWidth READ ScaleWidth)
    Q_PROPERTY(double ScaleHeight READ ScaleHeight)
    Q_PROPERTY(int StrokeCount READ StrokeCount)
    Q_PROPERTY(int TextCount READ TextCount)
    Q_PROPERTY(double Unit READ unit)

  public:
    /// The size of the surface, and the room beside it, in units.
    struct design {
        double width;
        double height;
        double room_left;
        double room_right;
    };

    /// `surface` outlives the view.
    canvas_view(const canvas& surface, const design& size, QWidget* parent);

    /// The text with the least room, in units: it sets the size of all texts.
    void set_widest_text(const QString& text, double room);

    /// Paints the surface if it has changed.
    void show_state();

    [[nodiscard]] double ScaleWidth() const { return surface_.ScaleWidth; }
    [[nodiscard]] double ScaleHeight() const { return surface_.ScaleHeight; }
    [[nodiscard]] int StrokeCount() const { return static_cast<int>(surface_.strokes.size()); }
    [[nodiscard]] int TextCount() const { return static_cast<int>(surface_.texts.size()); }
    [[nodiscard]] double unit() const; ///< logical pixels

    /// A place on the surface in logical pixels of the widget.
    [[nodiscard]] QPointF place(double x, double y) const;

    /// The font of the surface's texts.
    [[nodiscard]] QFont text_font() const { return text_font_; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Chart; }
    /// The texts on the surface.
    [[nodiscard]] QString spoken_text() const override;

  signals:
    void resized();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    [[nodiscard]] QFont fitting_font() const;
    [[nodiscard]] canvas_look look() const;
    void renew_picture(const QRegion& painted);

    const canvas& surface_;
    design design_;
    QString widest_text_;
    double widest_text_room_ = 0;
    QFont text_font_; // costs time to find, so it is kept until the size changes
    canvas_picture picture_;
};

} // namespace tyxo
