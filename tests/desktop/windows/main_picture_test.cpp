// The main window shows only what changed, and is at every moment what a new one is: picture, names, stops.

#include "desktop/desktop_test.h"
#include "desktop/random_steps.h"
#include "desktop/started_window.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "platform/desktop/handlers.h"

#include <QScreen>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\nupd_periode=100\r\nmax_sensors=3\r\nadc_offset=479\r\n"
                                      "zyl_speed_range=1\r\nscale_polar_a=0.5\r\nscale_polar_t=3\r\n"
                                      "xy_tha=1\r\nxy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\n"
                                      "location 1=Engine 1\r\nlocation 2=Engine 2\r\n"
                                      "location 3=Engine 3\r\n";

/// As the window system has it: what was not painted again keeps its old look.
QImage on_screen(const QWidget& window) {
    for (int pass = 0; pass < 3; ++pass) // a text asks for its layout first, and this one for a painting
        QCoreApplication::processEvents();
    return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
}

/// What is heard, shown by the mouse and reached by the keyboard.
QStringList told_of(const QWidget& window) {
    QStringList told;
    for (const QWidget* one : window.findChildren<QWidget*>()) {
        if (one->objectName().isEmpty() || one->objectName().startsWith("qt_")) continue;
        told.append(QString("%1: %2, %3, stop %4, %5")
                        .arg(one->objectName(), one->accessibleName(), one->toolTip())
                        .arg(static_cast<int>(one->focusPolicy()))
                        .arg(one->isVisibleTo(&window) ? "there" : "not there"));
    }
    told.sort();
    return told;
}

} // namespace

class main_picture_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(settings_text);
        if (QWidget* const focused = QApplication::focusWidget()) focused->clearFocus();
    }
    void cleanupTestCase() { window_.end(); }

    void is_at_every_moment_what_a_new_one_is_data() { add_seeds(4); }
    void is_at_every_moment_what_a_new_one_is() {
        QFETCH(unsigned, seed);
        steps_ = random_steps(seed);
        mainfrm_view& view = window_.view();
        for (int step = 0; step < 100; ++step) {
            const int act = change();
            window_.show_state();
            mainfrm_view anew;
            desktop::on_handled({}); // the test shows all changes itself
            anew.resize(view.size());
            anew.show_state();
            anew.grab(); // puts all charts back into their places, which is seen in both windows
            window_.show_state();
            const QImage seen = on_screen(view);
            anew.show_state();
            const QImage wanted = anew.grab().toImage().convertToFormat(seen.format());
            const QByteArray where = QString("step %1, change %2").arg(step).arg(act).toLatin1();
            QCOMPARE(told_of(view), told_of(anew));
            QVERIFY2(same_pixels(seen, wanted), where);
        }
    }

    void a_minimised_window_is_brought_up_to_date_when_it_comes_back() {
        const QWidget* const digits = window_.widget("dig_drehzahl", 0);
        const double before = digits->property("Value").toDouble();
        window_.view().showMinimized();
        indicators.dig_drehzahl[0].Value = before + 1;
        window_.show_state();
        QCOMPARE(digits->property("Value").toDouble(), before);
        window_.view().showNormal();
        QTRY_COMPARE(digits->property("Value").toDouble(), before + 1);
    }

  private:
    std::size_t below(std::size_t count) {
        return static_cast<std::size_t>(steps_.below(static_cast<int>(count)));
    }
    bool coin() { return below(2) == 0; }

    void measure(i16 channel) {
        channel_rec& rec = sensor::state.channels[channel];
        rec.tsignal = static_cast<i32>(below(140));
        rec.teff_dc = static_cast<i32>(below(120));
        rec.tvoltage = static_cast<i32>(below(1000));
        rec.speed = static_cast<i32>(below(1200));
        rec.param_valid = coin();
        rec.ext1_valid = coin();
        rec.ext2_valid = coin();
        rec.alarmlevel = static_cast<i32>(below(8));
        rec.eva_mode = static_cast<i32>(below(4));
        update_panel(channel);
        strip_row row;
        row.time = time_ += 100 + static_cast<std::int64_t>(below(400));
        for (float& value : row.values)
            value = static_cast<float>(below(150));
        charts.rows[channel].append(row);
    }

    void finish_curves(i16 channel) {
        for (std::size_t sample = 0; sample < curve_samples; ++sample) {
            sensor::state.channels[channel].thermo_data[sample] = 480 + static_cast<i32>(below(17));
            sensor::state.channels[channel].angacc_data[sample] = 700 + static_cast<i32>(below(31));
        }
        process_thermo(channel);
        process_angacc(channel);
    }

    void change_relay(i16 channel) {
        const bool inhibited = coin();
        indicators.Lbl_alm1[channel].Visible = indicators.lbl_alm2[channel].Visible = !inhibited;
        indicators.Lbl_alminhibit[channel].Visible = indicators.Lbl_inhtime[channel].Visible = inhibited;
        indicators.Lbl_inhtime[channel].Caption = coin() ? "120 s" : "7 s";
        indicators.Lbl_alm1[channel].Caption = coin() ? "Alarmrel 1" : "Shut & down";
    }

    /// One thing that may happen to the main window, most often the display tick of a channel.
    int change() {
        const auto channel = static_cast<i16>(below(channel_count));
        const auto act = static_cast<int>(below(16));
        switch (act) {
        case 0:
            indicators.LED_Rdy[channel].Active = coin();
            indicators.LED_prealarm[channel].Active = coin();
            indicators.LED_Alarm[channel].Active = coin();
            break;
        case 1:
            change_relay(channel);
            break;
        case 2:
            mainfrm::cmd_zoom_xy_click(channel);
            break;
        case 3:
            mainfrm::chart_click(channel);
            break;
        case 4:
            mainfrm::opt_res_click(below(4));
            break;
        case 5:
            sensor::state.channels[channel].th_dig_val = coin() ? 1 : 0;
            show_thermo_choice(channel);
            break;
        case 6:
            indicators.StatusBar = coin() ? "" : "Sensor 2 not connected";
            break;
        case 7:
            panels.Frame_sensor[channel].Caption = coin() ? "1: Engine 1" : "1: Port & forward";
            panels.Frame_sensor[channel].Enabled = coin();
            break;
        case 8:
            finish_curves(channel);
            break;
        case 9:
            minimise_and_return(channel);
            break;
        default:
            measure(channel);
        }
        return act;
    }

    void minimise_and_return(i16 channel) {
        window_.view().showMinimized();
        measure(channel);
        change_relay(channel);
        window_.show_state();
        window_.view().showNormal();
    }

    started_window window_;
    random_steps steps_{1};
    std::int64_t time_ = 1'000'000'000;
};

static const desktop_test<main_picture_test> known;
#include "main_picture_test.moc"
