#pragma once
// The painted lamp: round, lit in one colour, dark in another.

#include "controls/controls.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

namespace tyxo {

/// Readable from about 10 pixels on; the lamp is the largest circle in the widget, in its middle.
class led_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(bool Active READ active)
    Q_PROPERTY(int ActiveColor READ active_color)
    Q_PROPERTY(int InactiveColor READ inactive_color)

  public:
    explicit led_view(QWidget* parent = nullptr);

    /// Shows the control as it is now; costs a comparison when nothing differs.
    void show_control(const iLedRoundX& control);

    [[nodiscard]] QSize sizeHint() const override { return {16, 16}; }

    [[nodiscard]] bool active() const { return shown_.Active; }
    [[nodiscard]] int active_color() const { return shown_.ActiveColor; }
    [[nodiscard]] int inactive_color() const { return shown_.InactiveColor; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QString spoken_text() const override { return shown_.Active ? tr("on") : tr("off"); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void describe();
    void drop_faces();
    void paint_face(QPainter& painter) const;

    iLedRoundX shown_;
    face_cache lit_;
    face_cache dark_;
};

} // namespace tyxo
