#include "app/mainfrm_view.h"

#include "app/mainfrm.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/chart.h"
#include "displays/panel_view.h"
#include "gateway/frmsetuptcp.h"
#include "link/indicators.h"
#include "link/start_stop.h"
#include "platform/desktop/handlers.h"
#include "widgets/click_label_view.h"
#include "widgets/picture_view.h"
#include "widgets/show.h"
#include "widgets/text_status_view.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QGroupBox>
#include <QGuiApplication>
#include <QMenuBar>
#include <QRadioButton>
#include <QScreen>
#include <QSessionManager>
#include <QStatusBar>

namespace tyxo {

namespace {

using desktop::on_command;
using desktop::on_view_command;

constexpr QRgb main_disabled_print = 0xFF5C6166; // the panels of missing channels
constexpr QSize least_main_size(960, 600);       // where the screen is smaller than the design
constexpr int title_bar = 30;                    // px, that a window manager adds
constexpr int label_rim = 8;
constexpr int longest_delay = 100; // ms until bytes of a line are seen

/// For entries that wait for the operator's answer: a screen reader that chooses one waits for no more than
/// the choice.
constexpr Qt::ConnectionType asked_later = Qt::QueuedConnection;

} // namespace

mainfrm_view::mainfrm_view() : windows_(this) {
    setObjectName("mainfrm");
    set_disabled_print(*this, main_disabled_print);
    QGuiApplication::setWindowIcon(program_icon());
    make_menu();
    make_client();
    pending_.setSingleShot(true);
    connect(&pending_, &QTimer::timeout, this, &mainfrm_view::show_state);
    desktop::on_handled([this](desktop::source from) { show_soon(from); });
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) {
        if (!end_session([&session] { return session.allowsInteraction(); })) session.cancel();
    });
    open_on_screen();
}

/// In the design's size; on a screen that has no room for it the window fills the screen.
void mainfrm_view::open_on_screen() {
    const QSize design(design_client_width, design_client_height + menuBar()->sizeHint().height());
    const QSize room = screen()->availableSize() - QSize(0, title_bar);
    const bool fits = design.boundedTo(room) == design;
    setMinimumSize(fits ? design : least_main_size.boundedTo(room));
    resize(design.boundedTo(room));
    if (!fits) setWindowState(windowState() | Qt::WindowMaximized);
}

QAction* mainfrm_view::add_entry(QMenu* menu, const char* name, const QString& caption) {
    QAction* const entry = menu->addAction(caption);
    entry->setObjectName(name);
    return entry;
}

void mainfrm_view::make_menu() {
    const auto add_menu = [this](const char* name, const QString& caption) {
        QMenu* const menu = menuBar()->addMenu(caption);
        menu->setObjectName(name);
        return menu;
    };
    QMenu* const file = add_menu("file", "&File");
    connect(add_entry(file, "prt", "&Print"), &QAction::triggered, this, on_command(mainfrm::prt_click));
    file->addSeparator()->setObjectName("null");
    QAction* const Quit = add_entry(file, "Quit", "E&xit");
    bind(Quit, indicators.Quit);
    connect(Quit, &QAction::triggered, this, &QWidget::close, asked_later);

    QMenu* const setup = add_menu("Setup_menue", "&Setup");
    connect(add_entry(setup, "setup", "Setup preferences"), &QAction::triggered, this,
            on_command(mainfrm::setup_click));
    connect(add_entry(setup, "setup_scale", "Setup scales"), &QAction::triggered, this,
            on_command(mainfrm::setup_scale_click));
    connect(add_entry(setup, "setup_passwd", "Setup password"), &QAction::triggered, this,
            on_command(mainfrm::setup_passwd_click));
    connect(add_entry(setup, "setup_tcp", "Setup Modbus TCP/IP"), &QAction::triggered, this,
            on_command(mainfrm::setup_tcp_click));

    QMenu* const start = add_menu("start", "&Start/Stop Log");
    QAction* const startstop = add_entry(start, "startstop", {});
    bind(startstop, indicators.startstop);
    connect(startstop, &QAction::triggered, this, on_command(mainfrm::startstop_click), asked_later);
    start->addSeparator()->setObjectName("null1");
    for (i16 channel = 0; channel < channel_count; ++channel) {
        QAction* const entry = add_entry(start, "", {});
        entry->setObjectName(element("start_channel", channel));
        connect(entry, &QAction::triggered, this,
                on_command([channel] { mainfrm::start_channel_click(channel); }), asked_later);
        bind(entry, indicators.start_channel[channel]);
    }
    QAction* const about = menuBar()->addAction("&About");
    about->setObjectName("about");
    connect(about, &QAction::triggered, this, on_view_command(mainfrm::about_click));
}

void mainfrm_view::make_client() {
    auto* const client = new QWidget(this);
    client->setAccessibleName(tr("Channels"));
    setCentralWidget(client);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        auto* const panel = new panel_view(channel, client);
        connect(panel, &panel_view::inhibit_clicked, this,
                on_command([channel] { mainfrm::Lbl_alminhibit_click(channel); }));
        panels_[channel] = panel;
    }
    for (panel_view* panel : panels_)
        panel->make_chart(client);
    for (panel_view* panel : panels_)
        panel->make_zoom_button(client);
    Text_status = new text_status_view(client);
    Text_status->setObjectName("Text_status");
    bind(Text_status, indicators.Text_status);
    connect(Text_status, &text_status_view::enlarged, this, on_view_command(mainfrm::Text_status_dblclick));
    make_resolution(client);
    Lbl_TY_logger = new click_label(client);
    Lbl_TY_logger->setObjectName("Lbl_TY_logger");
    Lbl_TY_logger->setText("Tyxo Data Logger");
    Lbl_TY_logger->setAccessibleName(tr("Tyxo Data Logger, software info"));
    Lbl_TY_logger->setAlignment(Qt::AlignCenter);
    Lbl_TY_logger->setWordWrap(true);
    connect(Lbl_TY_logger, &click_label::clicked, this, on_view_command(mainfrm::Lbl_TY_logger_click));

    make_tab_order();
    auto* const bar = new QStatusBar(client);
    bar->setObjectName("StatusBar");
    bar->setAccessibleName(tr("Status bar"));
    bar->setSizeGripEnabled(false);
    status_panel_ = new QLabel(bar);
    status_panel_->setObjectName("StatusBar(1)");
    bar->addWidget(status_panel_, 1);
}

void mainfrm_view::make_resolution(QWidget* client) {
    frame_resolution = new QGroupBox("Time Resolution", client);
    frame_resolution->setObjectName("frame_resolution");
    auto* const row = new QHBoxLayout(frame_resolution);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(2); // between a circle and its caption
    const int pair_gap = frame_resolution->fontMetrics().height() / 3;
    for (std::size_t index = 0; index < opt_res.size(); ++index) {
        const int column = static_cast<int>(index);
        opt_res[index] = new QRadioButton(frame_resolution);
        opt_res[index]->setObjectName(element("opt_res", column));
        connect(opt_res[index], &QRadioButton::clicked, this,
                on_view_command([index] { mainfrm::opt_res_click(index); }));
        auto* const caption = new click_label(frame_resolution);
        caption->setObjectName(element("Lbl_opt_res", column));
        caption->setFocusPolicy(Qt::NoFocus); // the keyboard has the circle
        connect(caption, &click_label::clicked, opt_res[index], &QRadioButton::click);
        bind(caption, charts.Lbl_opt_res[index]);
        Lbl_opt_res[index] = caption;
        if (index > 0) row->addSpacerItem(new QSpacerItem(pair_gap, 0, QSizePolicy::MinimumExpanding));
        row->addWidget(opt_res[index]);
        row->addWidget(caption);
    }
}

/// Channel after channel, then the row below them.
void mainfrm_view::make_tab_order() {
    std::vector<QWidget*> stops;
    for (const panel_view* panel : panels_) {
        const std::vector<QWidget*> of_panel = panel->tab_stops();
        stops.insert(stops.end(), of_panel.begin(), of_panel.end());
    }
    stops.push_back(Text_status);
    stops.insert(stops.end(), opt_res.begin(), opt_res.end());
    stops.push_back(Lbl_TY_logger);
    for (std::size_t index = 1; index < stops.size(); ++index)
        setTabOrder(stops[index - 1], stops[index]);
}

/// What a timer does is seen at once, which is the display tick with all that has come since the last one.
/// What a command does is seen as soon as the widget whose event it is has done with it. Bytes of a line
/// wait for the display tick, unless they have brought something that nobody may see late.
void mainfrm_view::show_soon(desktop::source from) {
    const bool due = from == desktop::source::device;
    const bool line = from == desktop::source::port;
    if (due || (line && urgent_.differs(urgent_now()))) {
        show_state();
    } else if (!line || !pending_.isActive()) {
        pending_.start(line ? longest_delay : 0);
    }
}

mainfrm_view::urgent mainfrm_view::urgent_now() {
    urgent now{indicators.Text_status.appended(), FrmAlert::state.form.Visible, {}};
    auto lamp = now.lamps.begin();
    for (const auto* const lamps : {&indicators.LED_Rdy, &indicators.LED_prealarm, &indicators.LED_Alarm})
        for (const iLedRoundX& one : *lamps)
            *lamp++ = one.Active;
    return now;
}

void mainfrm_view::show_state() {
    pending_.stop();
    if (caption_.differs(mainfrm::state.Caption)) setWindowTitle(qt_text(mainfrm::state.Caption));
    show_bound();
    if (!isMinimized()) show_client();
    windows_.show_state();
}

/// What is seen of this window itself; brought up to date when it comes back from being an icon.
void mainfrm_view::show_client() {
    for (panel_view* panel : panels_)
        panel->show_state();
    if (status_.differs(indicators.StatusBar)) {
        status_panel_->setText(qt_text(indicators.StatusBar));
        show_on(*status_panel_, !indicators.StatusBar.empty()); // a reader would stop at an empty text
    }
    for (std::size_t index = 0; index < opt_res.size(); ++index)
        opt_res[index]->setChecked(index == charts.opt_res);
    if (!resolutions_.differs(charts.Lbl_opt_res)) return;
    for (std::size_t index = 0; index < opt_res.size(); ++index)
        show_name(*opt_res[index], Lbl_opt_res[index]->text());
    if (charts.layout.print != measured_print()) place(); // captions have come
}

print_room mainfrm_view::measured_print() const {
    print_room print;
    const QFontMetrics metrics(font());
    const QSize resolution = frame_resolution->minimumSizeHint();
    print.text_height = std::max(print.text_height, resolution.height());
    print.resolution_width = std::max(print.resolution_width, resolution.width());
    print.logger_width =
        std::max(print.logger_width, metrics.horizontalAdvance(Lbl_TY_logger->text()) + 2 * label_rim);
    print.status_bar_height = std::max(print.status_bar_height, metrics.height() + label_rim);
    panels_[0]->measure(font(), print);
    return print;
}

void mainfrm_view::place() {
    const QSize client = centralWidget()->size();
    const window_layout layout =
        layout_window(client.width(), client.height(), isMaximized() || isFullScreen(), measured_print());
    place_charts(layout);
    for (std::size_t channel = 0; channel < panels_.size(); ++channel) {
        panels_[channel]->place(layout.quadrants[channel]);
    }
    Text_status->setGeometry(on_screen(layout.Text_status));
    frame_resolution->setGeometry(on_screen(layout.frame_resolution));
    Lbl_TY_logger->setGeometry(on_screen(layout.Lbl_TY_logger));
    status_panel_->parentWidget()->setGeometry(on_screen(layout.StatusBar));
}

void mainfrm_view::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    place();
}

void mainfrm_view::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::FontChange) place();
    if (event->type() == QEvent::WindowStateChange) show_state();
}

void mainfrm_view::closeEvent(QCloseEvent* event) {
    event->ignore(); // a granted request ends the program and does not come back
    desktop::run_handler(desktop::source::operator_, [] { mainfrm::query_unload(); });
}

bool mainfrm_view::end_session(const std::function<bool()>& may_ask) {
    if (desktop::inside_device_handler()) {
        // The answer is due now, and a tick that waits beneath cannot go on before it is given. So the
        // session stays, and the close request comes when the tick has ended.
        desktop::run_handler(desktop::source::operator_, [] { mainfrm::query_unload(); });
        return false;
    }
    bool granted = true;
    desktop::run_handler(desktop::source::operator_, [&] { granted = mainfrm::query_end_session(may_ask); });
    return granted;
}

} // namespace tyxo

#include "moc_mainfrm_view.cpp"
