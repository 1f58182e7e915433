#pragma once
// One channel's quadrant of the main window.

#include "basics/types.h"
#include "displays/layout.h"
#include "widgets/state_view.h"

#include <QGroupBox>
#include <QLabel>
#include <QObject>
#include <QPushButton>

#include <functional>
#include <string>
#include <vector>

namespace tyxo {

class analog_display_view;
class chart_view;
class click_label;
class led_view;
class linear_gauge_view;
class xy_plot_view;

[[nodiscard]] inline QRect on_screen(const rectangle& place) {
    return {place.left, place.top, place.width, place.height};
}

/// Makes a channel's controls as children of `parent`, named after their control arrays, puts them in their
/// places and shows what the core says they show.
class panel_view : public QObject, public state_view {
    Q_OBJECT

  public:
    panel_view(i16 channel, QWidget* parent);

    void place(const quadrant_layout& layout);

    /// The room that the letters of the zoom and diagram buttons need, in the font of the desktop.
    void measure(const QFont& letters, print_room& print) const;
    void show_state() override;

    /// An enlarged chart lies over the instruments of its row, and under the zoom buttons: charts are made
    /// after all panels, buttons after all charts.
    void make_chart(QWidget* parent);
    void make_zoom_button(QWidget* parent);

    /// What the Tab key stops at, in the order of the eye.
    [[nodiscard]] std::vector<QWidget*> tab_stops() const;

  signals:
    /// The inhibit label was clicked.
    void inhibit_clicked();

  private:
    /// A control inside `Frame_sensor` and its place in the frame's design size.
    struct placed {
        QWidget* widget;
        rectangle place;
        int font; ///< pixels at the design size
    };

    /// The chart's place, and what depends on it.
    struct chart_surroundings {
        rectangle chart;
        rectangle row;
        rectangle button;
        print_room print;
        bool fills = false;   ///< its whole row
        bool covered = false; ///< by its neighbour
        bool operator==(const chart_surroundings&) const = default;
    };

    template <class Widget> Widget* make(const char* array, QWidget* parent);
    template <class Widget> Widget* instrument(const char* array, const rectangle& place, int font = 11);
    /// Names a control for those who hear it, with the number of its channel.
    void name(QWidget* widget, const QString& what) const;
    QLabel* caption(const char* array, const QString& text, const rectangle& place, int font = 11);
    [[nodiscard]] std::function<void()> on_view_command(void (*handler)(i16)) const;
    void make_gauges();
    void make_displays();
    void make_lamps();
    void make_levels();
    void make_plot_side(QWidget* parent);
    void show_chart();
    void place_chart(const chart_surroundings& around);
    void show_names();
    void show_stops(bool covered);

    i16 channel_;
    std::size_t index_; ///< the same, for arrays
    QGroupBox* Frame_sensor;
    std::vector<placed> instruments_;

    linear_gauge_view* Gauge_thermo;
    click_label* Label4;
    analog_display_view* digi_Thermo;
    led_view* LED_prealarm;
    led_view* LED_Alarm;
    click_label* Lbl_alminhibit;
    QLabel* Lbl_alm1;
    QLabel* lbl_alm2;
    QGroupBox* Frame_message;
    QLabel* Lbl_dama;
    xy_plot_view* XYplot;
    QPushButton* Cmd_diagramm;
    QPushButton* Cmd_diagramm2;
    QPushButton* cmd_zoom_xy;
    QWidget* row_cover_; // under an enlarged chart, so that no edges of instruments look out beside it
    chart_view* chart;
    last_shown<chart_surroundings> around_;
    std::vector<std::string> captions_; ///< that names were made of
};

} // namespace tyxo
