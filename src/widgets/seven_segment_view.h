#pragma once
// The painted digits of seven segments, on dark glass.

#include "controls/controls.h"
#include "controls/gauge_geometry.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

#include <map>
#include <string>

namespace tyxo {

/// Right-aligned, as high as the widget allows; a number too long for the width gets narrower, then smaller
/// digits and is never cut. With one colour for lit and unlit segments the display looks switched off.
/// Readable from about 14 pixels height on.
class seven_segment_view : public QWidget, public spoken_control {
    Q_OBJECT
    Q_PROPERTY(double Value READ value)
    Q_PROPERTY(int Precision READ precision)
    Q_PROPERTY(int DigitCount READ digit_count)
    Q_PROPERTY(bool ShowSign READ show_sign)
    Q_PROPERTY(int SegmentColor READ segment_color)
    Q_PROPERTY(int SegmentOffColor READ segment_off_color)
    Q_PROPERTY(QString Text READ text)

  public:
    explicit seven_segment_view(QWidget* parent = nullptr);

    /// How a digit stands in its box: lengths in logical pixels.
    struct digit_form {
        QSizeF size;
        double middle = 0; ///< height of the middle segment
        double thickness = 1;
        double ratio = 1; ///< of device pixels
        bool operator==(const digit_form&) const = default;
    };

    /// Shows the control as it is now; costs a comparison when nothing differs.
    void show_control(const iSevenSegmentAnalogX& control);

    [[nodiscard]] QSize sizeHint() const override { return {60, 20}; }

    [[nodiscard]] double value() const { return shown_.Value; }
    [[nodiscard]] int precision() const { return shown_.Precision; }
    [[nodiscard]] int digit_count() const { return shown_.DigitCount; }
    [[nodiscard]] bool show_sign() const { return shown_.ShowSign; }
    [[nodiscard]] int segment_color() const { return shown_.SegmentColor; }
    [[nodiscard]] int segment_off_color() const { return shown_.SegmentOffColor; }

    /// The digits as a text, without the unlit places before them.
    [[nodiscard]] QString text() const { return QString::fromStdString(text_); }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QString spoken_text() const override { return text(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void write();
    void paint_display(QPainter& painter);
    void show_form(const digit_form& form);
    const QPixmap& digit(char symbol);

    iSevenSegmentAnalogX shown_;
    std::string text_;
    face_cache glass_;
    digit_form form_;                // of the pictures
    std::map<char, QPixmap> digits_; // by their symbols
};

} // namespace tyxo
