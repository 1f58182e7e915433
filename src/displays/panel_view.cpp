#include "displays/panel_view.h"

#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "platform/desktop/handlers.h"
#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/click_label_view.h"
#include "widgets/group_frame_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/plots/chart_view.h"
#include "widgets/plots/xy_plot_view.h"
#include "widgets/seven_segment_view.h"
#include "widgets/show.h"
#include "widgets/wrapped_button_view.h"

#include <QStyleOptionGroupBox>

#include <algorithm>
#include <initializer_list>
#include <type_traits>

namespace tyxo {

namespace {

// The part of `Frame_sensor` within its lines that the places below are given for.
constexpr rectangle design_inside{5, 15, 389, 101};
constexpr int inside_gap = 2; // between the lines and the instruments
constexpr double greatest_text_scale = 1.5;

// The captions of the buttons that need the most room.
constexpr const char* widest_zoom = "Enlarge XY graph";
constexpr const char* widest_word = "Thermosignal";
constexpr int button_rim = 6;
constexpr int title_gap = 7; // between a button and the title of the chart

/// What a group frame has below its title and within its lines.
QRect contents_of(const QGroupBox& frame) {
    QStyleOptionGroupBox option;
    option.initFrom(&frame);
    option.text = frame.title().isEmpty() ? QString('X') : frame.title(); // one may come
    option.lineWidth = 1;
    option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    option.textAlignment = Qt::AlignLeft;
    return frame.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxContents, &frame);
}

/// The room for instruments in it.
QRect inside_of(const QGroupBox& frame) {
    return contents_of(frame).adjusted(inside_gap, inside_gap, -inside_gap, -inside_gap);
}

/// Letters that would be too small to read are rather made narrower, down to half their width.
void set_text_size(QWidget* widget, double pixels) {
    constexpr int least_pixels = 9;
    constexpr int unstretched = QFont::Unstretched;
    QFont font = widget->font();
    font.setPixelSize(std::max(least_pixels, static_cast<int>(pixels)));
    font.setStretch(std::clamp(static_cast<int>(unstretched * pixels / least_pixels),
                               static_cast<int>(QFont::UltraCondensed), unstretched));
    widget->setFont(font);
}

} // namespace

template <class Widget> Widget* panel_view::make(const char* array, QWidget* parent) {
    auto* const widget = new Widget(parent);
    widget->setObjectName(element(array, channel_));
    // An operator's text is a text, whatever it looks like.
    if constexpr (std::is_base_of_v<QLabel, Widget>) widget->setTextFormat(Qt::PlainText);
    return widget;
}

template <class Widget> Widget* panel_view::instrument(const char* array, const rectangle& place, int font) {
    auto* const widget = make<Widget>(array, Frame_sensor);
    instruments_.push_back({widget, place, font});
    return widget;
}

/// A handler of the core for a view command that concerns this channel.
std::function<void()> panel_view::on_view_command(void (*handler)(i16)) const {
    return desktop::on_view_command([handler, channel = channel_] { handler(channel); });
}

void panel_view::name(QWidget* widget, const QString& what) const {
    show_name(*widget, tr("%1, channel %2").arg(what).arg(channel_ + 1));
}

QLabel* panel_view::caption(const char* array, const QString& text, const rectangle& place, int font) {
    auto* const label = instrument<QLabel>(array, place, font);
    label->setText(text);
    return label;
}

panel_view::panel_view(i16 channel, QWidget* parent)
    : QObject(parent), channel_(channel), index_(static_cast<std::size_t>(channel)),
      Frame_sensor(make<group_frame>("Frame_sensor", parent)) {
    bind(Frame_sensor, panels.Frame_sensor[index_]);
    make_gauges();
    make_displays();
    make_lamps();
    make_levels();
    make_plot_side(parent);
}

void panel_view::make_gauges() {
    auto* const drehzahl = instrument<angular_gauge_view>("drehzahl", {5, 15, 101, 101});
    bind(drehzahl, indicators.drehzahl[index_]);
    name(drehzahl, tr("Speed"));
    auto* const dig_drehzahl = instrument<seven_segment_view>("dig_drehzahl", {32, 97, 48, 19});
    bind(dig_drehzahl, indicators.dig_drehzahl[index_]);
    name(dig_drehzahl, tr("Speed in digits"));
    caption("lbl_rpm", "RPM", {82, 103, 28, 13}, 9);
    Gauge_thermo = instrument<linear_gauge_view>("Gauge_thermo", {112, 15, 50, 101});
    bind(Gauge_thermo, panels.Gauge_thermo[index_]);
}

void panel_view::make_displays() {
    Label4 = instrument<click_label>("Label4", {166, 16, 84, 15});
    bind(Label4, panels.Label4[index_]);
    connect(Label4, &click_label::clicked, this, on_view_command(mainfrm::Label4_click));
    Label4->setToolTip(tr("A click shows the other value"));
    digi_Thermo = instrument<analog_display_view>("digi_Thermo", {166, 32, 84, 26}, 16);
    bind(digi_Thermo, indicators.digi_Thermo[index_]);
    caption("Lbl_tmv", "Thermovoltage", {166, 66, 92, 15});
    auto* const t_mv = instrument<analog_display_view>("t_mv", {166, 82, 84, 26}, 16);
    bind(t_mv, indicators.t_mv[index_]);
    name(t_mv, tr("Thermovoltage"));
}

void panel_view::make_lamps() {
    auto* const LED_Rdy = instrument<led_view>("LED_Rdy", {258, 15, 15, 15});
    bind(LED_Rdy, indicators.LED_Rdy[index_]);
    caption("Label2", "System Ready", {277, 15, 116, 15});
    name(LED_Rdy, tr("System Ready"));
    LED_prealarm = instrument<led_view>("LED_prealarm", {258, 32, 15, 15});
    bind(LED_prealarm, indicators.LED_prealarm[index_]);
    Lbl_alm1 = caption("Lbl_alm1", "", {277, 32, 116, 15});
    bind(Lbl_alm1, indicators.Lbl_alm1[index_]);
    LED_Alarm = instrument<led_view>("LED_Alarm", {258, 49, 15, 15});
    bind(LED_Alarm, indicators.LED_Alarm[index_]);
    lbl_alm2 = caption("lbl_alm2", "", {277, 49, 116, 15});
    bind(lbl_alm2, indicators.lbl_alm2[index_]);

    // They stand in the place of the relays' names.
    Lbl_alminhibit = instrument<click_label>("Lbl_alminhibit", {277, 32, 116, 15});
    bind(Lbl_alminhibit, indicators.Lbl_alminhibit[index_]);
    Lbl_alminhibit->setStyleSheet("color: #a00000; font-weight: bold");
    connect(Lbl_alminhibit, &click_label::clicked, this, &panel_view::inhibit_clicked);
    Lbl_alminhibit->setToolTip(tr("A click restarts the alarm inhibit time"));
    auto* const Lbl_inhtime = caption("Lbl_inhtime", "", {277, 49, 116, 15});
    bind(Lbl_inhtime, indicators.Lbl_inhtime[index_]);
}

void panel_view::make_levels() {
    caption("lbl_sens", "Alarm Level:", {258, 66, 110, 13});
    auto* const Lbl_dc_percent = caption("Lbl_dc_percent", "", {258, 80, 54, 17});
    bind(Lbl_dc_percent, panels.Lbl_dc_percent[index_]);
    Lbl_dc_percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const dig_sens = instrument<seven_segment_view>("dig_sens", {316, 80, 48, 17});
    bind(dig_sens, panels.dig_sens[index_]);
    name(dig_sens, tr("DC alarm level"));
    caption("lbl_sens2", "DC", {368, 80, 24, 17});
    auto* const lbl_aimplevel = caption("lbl_aimplevel", "", {258, 99, 54, 17});
    bind(lbl_aimplevel, panels.lbl_aimplevel[index_]);
    lbl_aimplevel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* const dig_sens2 = instrument<seven_segment_view>("dig_sens2", {316, 99, 48, 17});
    bind(dig_sens2, panels.dig_sens2[index_]);
    name(dig_sens2, tr("AC alarm level"));
    caption("lbl_sens1", "AC", {368, 99, 24, 17});
}

void panel_view::make_plot_side(QWidget* parent) {
    XYplot = make<xy_plot_view>("XYplot", parent);
    bind(XYplot, panels.XYplot[index_]);
    connect(XYplot, &xy_plot_view::clicked, this, on_view_command(mainfrm::XYplot_click));
    Cmd_diagramm = make<wrapped_button>("Cmd_diagramm", parent);
    bind(Cmd_diagramm, panels.Cmd_diagramm[index_]);
    Cmd_diagramm2 = make<wrapped_button>("Cmd_diagramm2", parent);
    bind(Cmd_diagramm2, panels.Cmd_diagramm2[index_]);
    connect(Cmd_diagramm, &QPushButton::clicked, this, on_view_command(mainfrm::Cmd_diagramm_click));
    connect(Cmd_diagramm2, &QPushButton::clicked, this, on_view_command(mainfrm::Cmd_diagramm2_click));
    name(XYplot, tr("Polar scope"));
    Frame_message = make<QGroupBox>("Frame_message", parent);
    bind(Frame_message, panels.Frame_message[index_]);
    Lbl_dama = make<QLabel>("Lbl_dama", Frame_message);
    bind(Lbl_dama, panels.Lbl_dama[index_]);
    Lbl_dama->setWordWrap(true);
    Lbl_dama->setAlignment(Qt::AlignCenter);
}

void panel_view::make_chart(QWidget* parent) {
    row_cover_ = new QWidget(parent);
    row_cover_->setAutoFillBackground(true);
    chart = new chart_view([this]() -> const strip_window& { return shown_rows(channel_); }, parent);
    chart->setObjectName(element("chart", channel_));
    connect(chart, &chart_view::clicked, this, on_view_command(mainfrm::chart_click));
}

void panel_view::make_zoom_button(QWidget* parent) {
    cmd_zoom_xy = make<QPushButton>("cmd_zoom_xy", parent);
    bind(cmd_zoom_xy, panels.cmd_zoom_xy[index_]);
    connect(cmd_zoom_xy, &QPushButton::clicked, this, on_view_command(mainfrm::cmd_zoom_xy_click));
}

std::vector<QWidget*> panel_view::tab_stops() const {
    return {cmd_zoom_xy, chart, Label4, Lbl_alminhibit, XYplot, Cmd_diagramm, Cmd_diagramm2};
}

void panel_view::measure(const QFont& letters, print_room& print) const {
    const QFontMetrics metrics(letters);
    print.zoom_width = std::max(print.zoom_width, metrics.horizontalAdvance(widest_zoom) + 2 * button_rim);
    print.zoom_height = std::max(print.zoom_height, metrics.height() + button_rim);
    print.button_width =
        std::max(print.button_width, metrics.horizontalAdvance(widest_word) + 2 * button_rim);
    print.frame_line = std::max(print.frame_line, contents_of(*Frame_sensor).top());
}

void panel_view::place(const quadrant_layout& layout) {
    Frame_sensor->setGeometry(on_screen(layout.Frame_sensor));
    const QRect inside = inside_of(*Frame_sensor);
    const double across = 1.0 * inside.width() / design_inside.width;
    const double down = 1.0 * inside.height() / design_inside.height;
    const double text = std::min({across, down, greatest_text_scale});
    for (const placed& item : instruments_) {
        const rectangle& place = item.place;
        item.widget->setGeometry(inside.left() + static_cast<int>((place.left - design_inside.left) * across),
                                 inside.top() + static_cast<int>((place.top - design_inside.top) * down),
                                 static_cast<int>(place.width * across),
                                 static_cast<int>(place.height * down));
        set_text_size(item.widget, item.font * text);
    }
    XYplot->setGeometry(on_screen(layout.XYplot));
    Cmd_diagramm->setGeometry(on_screen(layout.Cmd_diagramm));
    Cmd_diagramm2->setGeometry(on_screen(layout.Cmd_diagramm2));
    Frame_message->setGeometry(on_screen(layout.Frame_message));
    Lbl_dama->setGeometry(inside_of(*Frame_message));
    show_chart();
}

void panel_view::show_chart() {
    const iStripChartX& control = charts.chart[channel_];
    const chart_surroundings around{
        {control.Left, control.Top, control.Width, control.Height},
        row_place(channel_),
        zoom_button_place(channel_),
        charts.layout.print,
        fills_row(channel_),
        fills_row(row_neighbour(channel_)),
    };
    if (around_.differs(around)) place_chart(around);
    chart->show_control(control);
}

void panel_view::place_chart(const chart_surroundings& around) {
    chart->setGeometry(on_screen(around.chart));
    const int end = around.print.zoom_width + title_gap;
    const bool left = around.fills || stands_left(channel_);
    const bool right = around.fills || !stands_left(channel_);
    chart->set_title_room(around.print.zoom_height + 2, left ? end : title_gap, right ? end : title_gap);
    row_cover_->setGeometry(on_screen(around.row));
    row_cover_->setVisible(around.fills);
    cmd_zoom_xy->setGeometry(on_screen(around.button));
    show_stops(around.fills || around.covered);
}

void panel_view::show_state() {
    show_bound();
    show_chart();
    show_names();
}

/// The names of controls whose captions change.
void panel_view::show_names() {
    const std::array<std::string_view, 10> captions{panels.Label4[index_].Caption,
                                                    panels.Frame_message[index_].Caption,
                                                    indicators.Lbl_alm1[index_].Caption,
                                                    indicators.lbl_alm2[index_].Caption,
                                                    indicators.Lbl_alminhibit[index_].Caption,
                                                    panels.Cmd_diagramm[index_].Caption,
                                                    panels.Cmd_diagramm2[index_].Caption,
                                                    panels.cmd_zoom_xy[index_].Caption,
                                                    charts.chart[channel_].Title,
                                                    fills_row(channel_) ? "both" : ""};
    if (std::ranges::equal(captions, captions_)) return;
    captions_.assign(captions.begin(), captions.end());
    name(Gauge_thermo, Label4->text());
    name(digi_Thermo, tr("%1 in digits").arg(Label4->text()));
    name(Label4, tr("%1, value shown").arg(Label4->text()));
    name(Frame_message, Frame_message->title());
    name(LED_prealarm, Lbl_alm1->text());
    name(LED_Alarm, lbl_alm2->text());
    name(Lbl_alminhibit, Lbl_alminhibit->text());
    for (QPushButton* button : {Cmd_diagramm, Cmd_diagramm2, cmd_zoom_xy})
        name(button, button->text());
    const QString tip = fills_row(channel_) ? tr("Puts chart %1 beside its neighbour again")
                                            : tr("Gives the whole row to chart %1");
    show_tool_tip(*cmd_zoom_xy, tip.arg(qt_text(charts.chart[channel_].Title)));
}

/// What lies under an enlarged chart is no stop of the Tab key.
void panel_view::show_stops(bool covered) {
    for (QWidget* control : std::initializer_list<QWidget*>{Label4, Lbl_alminhibit, XYplot}) {
        if (covered && control->hasFocus()) cmd_zoom_xy->setFocus();
        control->setFocusPolicy(covered ? Qt::NoFocus : Qt::TabFocus);
    }
    for (QPushButton* button : {Cmd_diagramm, Cmd_diagramm2}) {
        if (covered && button->hasFocus()) cmd_zoom_xy->setFocus();
        button->setFocusPolicy(covered ? Qt::NoFocus : Qt::StrongFocus);
    }
}

} // namespace tyxo

#include "moc_panel_view.cpp"
