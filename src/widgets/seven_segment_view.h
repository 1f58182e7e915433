#pragma once
// The painted digits of seven segments, on dark glass.

#include "controls/controls.h"
#include "controls/gauge_geometry.h"
#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QWidget>

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

  private:
    void write();

    iSevenSegmentAnalogX shown_;
    std::string text_;
};

} // namespace tyxo
