#pragma once
// A window with instruments in a frame, all of it as one state, and its changes at random.

#include "desktop/control_pictures.h"
#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/seven_segment_view.h"

#include <QBackingStore>
#include <QGroupBox>
#include <QLabel>
#include <QStyleFactory>

#include <array>
#include <memory>
#include <random>

namespace tyxo {

inline constexpr std::size_t instrument_count = 7;

/// All that a page shows.
struct instruments_state {
    iAngularGaugeX dial = speed_gauge(300);
    iSevenSegmentAnalogX speed = digits(300);
    iLinearGaugeX bar = thermo_gauge(42);
    iAnalogDisplayX number{12.34, 2, "mV", rgb(0, 255, 0)};
    iLedRoundX lamp;
    std::string caption = "RPM";
    std::string scroll; ///< of a label that overlaps the dial's corner
    std::array<QRect, instrument_count> places{
        QRect(7, 25, 101, 101), QRect(34, 107, 48, 19), QRect(115, 25, 50, 101), QRect(171, 40, 84, 26),
        QRect(260, 25, 15, 15), QRect(84, 113, 28, 13), QRect(260, 50, 60, 15)};
    std::array<bool, instrument_count> hidden{};
    std::array<bool, instrument_count> disabled{};
    QRect frame{10, 10, 400, 150};
    QString title = "1: Engine";
    bool frame_disabled = false;
    int letters = 11;
    QRgb ground = 0xFFEFEFEF;
    bool plain_style = false;
};

/// A window with instruments in a frame of either kind.
template <class Frame> class instruments_page : public QWidget {
  public:
    explicit instruments_page(const instruments_state& state) : frame_(new Frame(this)) {
        setAttribute(Qt::WA_ShowWithoutActivating);
        resize(480, 220);
        dial_ = add<angular_gauge_view>(0);
        speed_ = add<seven_segment_view>(1);
        bar_ = add<linear_gauge_view>(2);
        number_ = add<analog_display_view>(3);
        lamp_ = add<led_view>(4);
        caption_ = add<QLabel>(5);
        words_ = add<QLabel>(6);
        show_state(state, instruments_state(), true);
        show();
    }

    /// Only what differs is touched, as by the views.
    void show_state(const instruments_state& now, const instruments_state& before, bool all = false) {
        if (all || now.ground != before.ground) {
            QPalette colours = palette();
            colours.setColor(QPalette::Window, QColor(now.ground));
            setPalette(colours);
        }
        if (all || now.letters != before.letters) set_letters(now.letters);
        if (now.plain_style != before.plain_style || (all && now.plain_style)) set_style(now.plain_style);
        if (all || now.frame != before.frame) frame_->setGeometry(now.frame);
        if (all || now.title != before.title) frame_->setTitle(now.title);
        if (all || now.frame_disabled != before.frame_disabled) frame_->setEnabled(!now.frame_disabled);
        for (std::size_t index = 0; index < instrument_count; ++index) {
            if (all || now.places[index] != before.places[index]) all_[index]->setGeometry(now.places[index]);
            if (now.hidden[index] != before.hidden[index] || (all && now.hidden[index]))
                all_[index]->setVisible(!now.hidden[index]);
            if (all || now.disabled[index] != before.disabled[index])
                all_[index]->setEnabled(!now.disabled[index]);
        }
        dial_->show_control(now.dial);
        speed_->show_control(now.speed);
        bar_->show_control(now.bar);
        number_->show_control(now.number);
        lamp_->show_control(now.lamp);
        caption_->setText(qt_text(now.caption));
        words_->setText(qt_text(now.scroll));
    }

    /// The window's pixels as they go to the screen.
    QImage picture() {
        QCoreApplication::processEvents();
        return dynamic_cast<const QImage&>(*backingStore()->paintDevice()).copy();
    }

    [[nodiscard]] QWidget& instrument(std::size_t index) const { return *all_[index]; }
    [[nodiscard]] QGroupBox& frame() const { return *frame_; }

  private:
    template <class View> View* add(std::size_t index) {
        auto* const view = new View(frame_);
        all_[index] = view;
        return view;
    }
    void set_letters(int pixels) {
        QFont letters = font();
        letters.setPixelSize(pixels);
        letters.setItalic(pixels % 2 == 0);
        setFont(letters);
    }
    void set_style(bool plain) {
        if (plain && !plain_) plain_.reset(QStyleFactory::create("Windows"));
        frame_->setStyle(plain ? plain_.get() : nullptr);
    }

    std::unique_ptr<QStyle> plain_;
    Frame* frame_;
    std::array<QWidget*, instrument_count> all_{};
    angular_gauge_view* dial_;
    seven_segment_view* speed_;
    linear_gauge_view* bar_;
    analog_display_view* number_;
    led_view* lamp_;
    QLabel* caption_;
    QLabel* words_;
};

/// Changes a state at random; mostly values, as in the life of a plant.
class instrument_changes {
  public:
    void apply(instruments_state& state) {
        const int kind = below(100);
        if (kind < 50) {
            move_values(state);
        } else if (kind < 75) {
            change_look(state);
        } else if (kind < 95) {
            change_page(state);
        } else { // where all can be seen
            state.places = instruments_state().places;
            state.hidden = state.disabled = {};
            state.frame_disabled = false;
        }
    }

  private:
    int below(int end) { return static_cast<int>(chance_() % static_cast<std::uint32_t>(end)); }
    bool coin() { return below(2) == 0; }
    colour any_colour() { return rgb(below(256), below(256), below(256)); }

    /// A small move, any value of the scale, or one that should not be.
    double value(double before, double most) {
        constexpr double odd[] = {not_a_number, infinite, -infinite, -7, 1e9, 0, -0.0, 1e-9};
        const int kind = below(10);
        if (kind < 6) return (std::isfinite(before) ? before : 0) + (below(41) - 20) * most / 1000;
        if (kind < 9) return below(1001) * most / 1000;
        return odd[below(std::size(odd))];
    }

    void move_values(instruments_state& state) {
        state.dial.Position = value(state.dial.Position, 1000);
        if (coin()) state.speed.Value = value(state.speed.Value, coin() ? 1000 : 10);
        if (coin()) state.bar.set_position(value(state.bar.Position, 125));
        if (below(8) == 0) state.bar.MaxPosition = value(state.bar.MaxPosition, 125);
        if (coin()) state.number.Value = value(state.number.Value, 20);
        if (coin()) state.lamp.Active = !state.lamp.Active;
    }

    void change_look(instruments_state& state) {
        switch (below(14)) {
        case 0:
            state.dial.SectionEnd = {10.0 * below(100), 10.0 * below(120)};
            break;
        case 1:
            state.dial.SectionColor = {any_colour(), any_colour(), any_colour()};
            break;
        case 2:
            state.dial.TickMajorCount = below(14);
            break;
        case 3:
            state.dial.Label1Text = coin() ? "RPM" : "1/min";
            break;
        case 4:
            state.dial.ArcStartDegrees = coin() ? 230 : 180 + below(60);
            break;
        case 5:
            state.dial.PositionMax = coin() ? 1000 : 100 + below(2000);
            break;
        case 6:
            state.speed.Precision = below(4);
            break;
        case 7:
            state.speed.DigitCount = below(7);
            break;
        case 8:
            state.speed.SegmentColor = coin() ? any_colour() : state.speed.SegmentOffColor;
            break;
        case 9:
            state.speed.ShowSign = coin();
            break;
        case 10:
            state.bar.ShowMaxPointer = coin();
            break;
        case 11:
            state.bar.PointerSize = below(16);
            break;
        case 12:
            state.number.UnitsText = coin() ? "mV" : "%";
            break;
        default:
            state.number.ForeColor = state.lamp.ActiveColor = state.bar.PointerColor = any_colour();
        }
    }

    void change_page(instruments_state& state) {
        const auto one = static_cast<std::size_t>(below(instrument_count));
        QRect& place = state.places[one];
        switch (below(12)) {
        case 0:
            state.title = coin() ? "not installed" : QString::number(below(1000));
            break;
        case 1:
            state.frame_disabled = !state.frame_disabled;
            break;
        case 2:
            state.letters = 9 + below(6);
            break;
        case 3:
            state.ground = 0xFF808080 + static_cast<QRgb>(below(0x7F));
            break;
        case 4:
            state.frame.moveTo(below(40), below(40));
            break;
        case 5:
            state.frame.setSize({350 + below(70), 130 + below(40)});
            break;
        case 6:
            place.moveTo(below(300), 15 + below(90));
            break;
        case 7:
            place.setSize({8 + below(110), 8 + below(110)});
            break;
        case 8:
            state.hidden[one] = !state.hidden[one];
            break;
        case 9:
            state.disabled[one] = !state.disabled[one];
            break;
        case 10:
            state.plain_style = !state.plain_style;
            break;
        default:
            state.scroll += static_cast<char>('a' + below(26));
        }
    }

    std::mt19937 chance_{20260722};
};

/// Where two pictures differ; empty if nowhere.
inline QRect difference(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) return one.rect();
    QRect area;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            if (one.pixel(x, y) != other.pixel(x, y)) area |= QRect(x, y, 1, 1);
    return area;
}

} // namespace tyxo
