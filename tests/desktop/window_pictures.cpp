// Pictures of all windows for engines of every kind, for people to look at.
//
//     build/release/window_pictures FOLDER [WIDTHxHEIGHT [POINTS]]
//
// With a size, as the windows open on such a screen; QT_SCALE_FACTOR=1.5 scales it.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "desktop/all_windows.h"
#include "desktop/picture_engines.h"
#include "desktop/picture_options.h"
#include "desktop/picture_taker.h"
#include "desktop/settings_file.h"
#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmbrowse.h"
#include "dialogs/frmpwd.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/frmsetuptcp.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "link/speed_bands.h"
#include "platform/clock.h"
#include "settings/serial_ports.h"
#include "settings/settings.h"
#include "widgets/light_palette.h"
#include "widgets/plots/chart_page.h"

#include <QApplication>
#include <QDir>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using namespace tyxo;

constexpr const char* settings_text =
    "[tyxo]\r\nupd_periode=250\r\nmax_sensors=4\r\nadc_offset=479\r\nzyl_speed_range=5\r\n"
    "scale_polar_a=0.5\r\nscale_polar_t=.2\r\nxy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\nxy_tha=1\r\n"
    "location 1=Port main engine\r\nlocation 2=Generator 2\r\nlocation 3=Slow runner\r\n"
    "location 4=Test bed\r\ntypecode 1=6L-750\r\ntypecode 2=24V-1000\r\ntypecode 3=6L-750\r\n"
    "logpath 1=logs/\r\nlogpath 2=logs/\r\nlogpath 3=logs/\r\nlogpath 4=logs/test bed/\r\n"
    "text_almrel1 1=Slow down\r\ntext_almrel2 1=Shut down\r\ntstsig_visible 4=1\r\nevtpath=logs/\r\n";

/// Two minutes of a start, a pause and a bearing that warms up.
void fill_chart(i16 channel) {
    const channel_rec& rec = sensor::state.channels[channel];
    const std::int64_t now = running_ms();
    charts.rows[channel].clear();
    for (std::int64_t time = now - 120'000; time <= now; time += 250) {
        const double second = static_cast<double>(time - now + 120'000) / 1000;
        if (second > 50 && second < 58) continue;
        const double warm = 20 + second * 0.5 + 4 * std::sin(second / 3 + channel) + 2 * std::sin(second * 3);
        strip_row row;
        row.time = time;
        row.values[0] = static_cast<float>(warm);
        if (second > 6) {
            const double speed = rec.ratedspeed * std::min(1.0, second / 20) + 6 * std::sin(second / 2);
            row.values[1] = static_cast<float>(speed / band_of(speed_bands, rec.overspeed).divisor);
        }
        row.values[2] = 100;
        row.values[3] = static_cast<float>(30 + 8 * std::sin(second / 5));
        row.values[4] = static_cast<float>(warm * 0.8);
        row.values[5] = static_cast<float>(12 + 3 * std::sin(second));
        charts.last_row[channel] = charts.rows[channel].append(row);
    }
    charts.chart[channel].curves[1].Title = band_of(speed_bands, rec.overspeed).title;
}

/// The instruments of a channel at the end of its chart.
void fill_instruments(i16 channel) {
    channel_rec& rec = sensor::state.channels[channel];
    std::vector<strip_point> points;
    const strip_window& rows = shown_rows(channel);
    const auto last = [&](std::size_t curve) {
        rows.points(curve, 1, points);
        return points.empty() ? 0.0 : static_cast<double>(points.back().value);
    };
    rec.tsignal = static_cast<i16>(last(0));
    rec.speed = static_cast<i16>(last(1) * band_of(speed_bands, rec.overspeed).divisor);
    rec.tvoltage = static_cast<i16>(last(3) * 2);
    rec.teff_dc = static_cast<i16>(last(4));
    rec.teff_ac = static_cast<i16>(last(5));
    indicators.LED_Rdy[channel].Active = true;
    indicators.LED_prealarm[channel].Active = indicators.LED_Alarm[channel].Active = rec.tsignal >= 100;
    update_panel(channel);
}

void take_diagrams(picture_taker& pictures, i16 channel, const engine& what) {
    const QString name = what.name;
    mainfrm::XYplot_click(channel);
    mainfrm::Cmd_diagramm_click(channel);
    mainfrm::Cmd_diagramm2_click(channel);
    // A new size shows curves only with the next cycle.
    for (const auto& [prefix, size] :
         {std::pair{"detailed-", QSize(1240, 900)}, {"detailed-small-", {860, 540}}}) {
        pictures.resize("frmdetailedpic", size);
        run_engine(channel, what.parameters);
        pictures.take("frmdetailedpic", prefix + name);
    }
    frmdetailedpic::unload();
    pictures.take("frmbarpic", "speed-bars-" + name);
    pictures.take("Frmbarpic2", "thermo-bars-" + name);
    settings.speedbar_mode = 1;
    mainfrm::Cmd_diagramm_click(channel);
    process_angacc(channel);
    pictures.resize("frmbarpic", {1100, 700});
    pictures.take("frmbarpic", "speed-bars-firing-order-" + name);
    settings.speedbar_mode = 0;
    frmbarpic::unload();
    Frmbarpic2::unload();
}

/// The gateway's window by hand, with automatic blocks, and without its registers.
void take_gateway(picture_taker& pictures) {
    settings.REGView = 1;
    mainfrm::setup_tcp_click();
    pictures.take("FrmSetupTCP", "gateway");
    for (std::size_t box = 0; box < FrmSetupTCP::state.Text4.size(); ++box)
        FrmSetupTCP::state.Text4[box] = std::to_string(box * 531 % 65536);
    FrmSetupTCP::show_tcp_status("Registers written", status_colour::green);
    FrmSetupTCP::Check2_click();
    pictures.take("FrmSetupTCP", "gateway-automatic");
    FrmSetupTCP::show_tcp_status("Connection locked", status_colour::yellow);
    FrmSetupTCP::Reg_content_click();
    pictures.take("FrmSetupTCP", "gateway-without-registers");
}

/// All tabs of the setup dialog, for an engine in line, a V engine, one whose Evaluator reports little, and
/// one that has not sent anything before the measurement.
void take_setup(picture_taker& pictures, bool measuring) {
    const QString prefix = measuring ? "setup-measuring-" : "setup-";
    sensor::state.measure_running = measuring;
    mainfrm::setup_click();
    for (i16 tab = 0; tab < 5; ++tab) {
        frmSetup::state.SSTab.Tab = tab;
        pictures.take("frmSetup", prefix + QString::number(tab));
    }
    frmSetup::state.SSTab.Tab = 0;
    if (!measuring) {
        frmSetup::cmd_browse_path_click(0);
        pictures.take("frmbrowse", "setup-browse");
        frmbrowse::Ok_click("logs");
    }
    frmSetup::cmd_cancel_click();
    sensor::state.measure_running = false;
}

void prepare_setup() {
    const auto plain_six = simulated::plain_engine(false, 6, 4, 750, 860);
    const auto v24 = simulated::plain_engine(true, 24, 4, 1000, 1150);
    report(0, plain_six, simulated::ParameterForm::percent);
    report(1, v24, simulated::ParameterForm::percent);
    report(2, plain_six, simulated::ParameterForm::base);
    serial::serial_ports = std::vector<i16>{1, 2, 3, 4, 17, 256};
    sensor::state.comport = {{1, 2, 256, 99}};
}

/// The alert in its two phases: one channel, then three.
void take_alert(picture_taker& pictures) {
    FrmAlert::open_alert();
    FrmAlert::show_alert_line(1);
    FrmAlert::alert_text(1, "Generator 2  Mainalarm DC");
    pictures.take("FrmAlert", "alert");
    FrmAlert::show_alert_line(0);
    FrmAlert::alert_text(0, "Port main engine  Mainalarm AC");
    FrmAlert::show_alert_line(3);
    FrmAlert::alert_text(3, "WWWWWWWWWWWWWWWWWWWWWWWWW  Mainalarm DC");
    FrmAlert::timer_alert_tick();
    pictures.take("FrmAlert", "alert-dark");
    FrmAlert::unload();
}

/// The stop lock before and behind the right password, without anybody who waits for its answer.
void take_stop_lock(picture_taker& pictures) {
    FrmAbort::SetPassword("Kessel 7");
    FrmAbort::state.form.Loaded = FrmAbort::state.form.Visible = true;
    FrmAbort::state.Lbl_what.Caption = "Stops channel 2: Generator 2";
    FrmAbort::TextPassword_change("Kess");
    pictures.take("FrmAbort", "stop-lock");
    FrmAbort::TextPassword_change("Kessel 7");
    pictures.take("FrmAbort", "stop-lock-open");
    FrmAbort::unload();
}

void take_questions(picture_taker& pictures) {
    take_alert(pictures);
    take_stop_lock(pictures);
    mainfrm::setup_passwd_click();
    frmpwd::newpasswd_change("Kessel 7");
    frmpwd::newpasswd2_change("Kessel 7");
    pictures.take("frmpwd", "password");
    frmpwd::CmdCancel_click();
}

/// The windows that need nothing but to be opened.
void take_plain_windows(picture_taker& pictures) {
    for (const window_row& row : window_table()) {
        if (row.picture == nullptr) continue;
        row.open();
        pictures.take(row.name, row.picture);
        row.leave();
    }
}

/// On a screen of its own the main window is seen maximised too.
void take_maximised(picture_taker& pictures) {
    pictures.maximise(true);
    pictures.take("mainfrm", "main-window-maximised-enlarged");
    mainfrm::cmd_zoom_xy_click(3);
    pictures.take("mainfrm", "main-window-maximised");
    mainfrm::cmd_zoom_xy_click(3);
    pictures.maximise(false);
}

void take_all(picture_taker& pictures, bool own_screen) {
    prepare_setup();
    take_setup(pictures, false);
    report(3, *simulated::engine_preset("inline5-2"), simulated::ParameterForm::percent);
    take_setup(pictures, true);
    const auto all = engines();
    for (i16 channel = 0; channel < channel_count; ++channel) {
        sensor::state.channel_running[channel] = true;
        run_engine(channel, all[static_cast<std::size_t>(channel)].parameters);
        fill_chart(channel);
        fill_instruments(channel);
        raise_event(channel,
                    {" KVD " + sensor::state.channels[channel].location + " ## Measure started ", "", ""});
    }
    pictures.take("mainfrm", "main-window");
    mainfrm::chart_click(0);
    mainfrm::cmd_zoom_xy_click(3);
    pictures.take("mainfrm", "main-window-frozen-and-enlarged");
    if (own_screen) take_maximised(pictures);
    for (std::size_t index = 0; index < all.size(); ++index)
        take_diagrams(pictures, static_cast<i16>(std::min<std::size_t>(index, 3)), all[index]);
    take_plain_windows(pictures);
    take_questions(pictures);
    take_gateway(pictures);
    for (const window_row& row : window_states())
        pictures.expect(row.window());
}

/// A page as `printplot` prints it, into a PDF file.
bool print_page(const QString& folder, i16 channel) {
    iStripChartX chart = charts.chart[channel];
    chart.PrintMode = 1;
    chart.PrintFontName = "arial";
    chart.PrintFontSize = 12;
    chart.PrintFontBold = true;
    chart.PrintTitle = {" ", "Sensor 1:  Port main engine", " ",
                        "Printed by Quarvo | Tyxo Data Logger Version 2.10_4"};
    chart.PrinterMarginRight = chart.PrinterMarginBottom = 2.0;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder + "/printed-page.pdf");
    return paint_chart_page(printer, chart, shown_rows(channel));
}

} // namespace

int main(int argc, char** argv) {
    const picture_options options(argc, argv);
    if (!options.valid()) {
        QTextStream(stderr) << "usage: window_pictures FOLDER [WIDTHxHEIGHT [POINTS]]\n";
        return 2;
    }
    options.use_screen(SCREEN);
    QApplication::setStyle("Fusion");
    const QApplication application(argc, argv);
    use_light_palette();
    options.use_letters();
    const QString& folder = options.folder;
    const QTemporaryDir plant;
    if (!QDir().mkpath(folder) || !QDir::setCurrent(plant.path()) ||
        !QDir().mkpath("logs/Port main engine") || !QDir().mkpath("events") ||
        !write_settings_file(settings_text))
        return 1;
    wire();
    options.answer_boxes();
    mainfrm_view main_window;
    mainfrm::form_load(main_window.width(), main_window.height());
    main_window.show();
    picture_taker pictures(folder, main_window);
    take_all(pictures, options.own_screen);
    return pictures.failed() || !print_page(folder, 0) ? 1 : 0;
}
