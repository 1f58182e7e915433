#pragma once
// The painted number with its unit, on dark glass.

#include "controls/controls.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QTextLayout>
#include <QWidget>

namespace tyxo {

/// Right-aligned, as high as the widget allows, shrunk rather than cut. Readable from about 14 pixels height
/// on.
class analog_display_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double Value READ value)
    Q_PROPERTY(int Precision READ precision)
    Q_PROPERTY(QString UnitsText READ units_text)
    Q_PROPERTY(int ForeColor READ fore_color)
    Q_PROPERTY(QString Text READ text)

  public:
    explicit analog_display_view(QWidget* parent = nullptr);

    /// Shows the control as it is now; costs a comparison when nothing differs.
    void show_control(const iAnalogDisplayX& control);

    [[nodiscard]] QSize sizeHint() const override { return {60, 20}; }

    [[nodiscard]] double value() const { return shown_.Value; }
    [[nodiscard]] int precision() const { return shown_.Precision; }
    [[nodiscard]] QString units_text() const { return qt_text(shown_.UnitsText); }
    [[nodiscard]] int fore_color() const { return shown_.ForeColor; }

    /// Number, blank, unit: "12.34 mV"; without a unit the number alone.
    [[nodiscard]] QString text() const { return text_; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QString spoken_text() const override { return text_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void write();
    void paint_display(QPainter& painter, const QRect& part);
    QSizeF set_line(double pixels);
    void fit_line(const QRectF& room, double pixels);

    iAnalogDisplayX shown_;
    QString text_;
    face_cache glass_;
    QTextLayout line_; // the text, if laid out
};

} // namespace tyxo
