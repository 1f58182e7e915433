// The first start at the real widgets: an operator sets two sensors up and measures with them, without a
// restart.

#include "desktop/desktop_test.h"
#include "desktop/serial_line.h"
#include "desktop/settings_file.h"
#include "desktop/setup_window.h"
#include "displays/chart.h"
#include "logging/evaluator_frames.h"
#include "settings/ini.h"

using namespace tyxo;

class first_start_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        setup_.start("");
        serial::serial_ports = std::vector<i16>{3, 7};
        for (int port : {3, 7})
            lines_.push_back(std::make_unique<serial_line>(port));
    }
    void cleanupTestCase() { setup_.end(); }

    void two_sensors_are_set_up() {
        QCOMPARE(frame(0)->title(), QString("not installed"));
        setup_.open();
        QTest::keyClick(setup_.find("scroll_max_commport"), Qt::Key_Right);
        QTRY_COMPARE(setup_.find<QLineEdit>("Text_num_sensors")->text(), QString("2"));
        for (int row = 0; row < 2; ++row) {
            auto* const ports = setup_.find<QComboBox>("Select_com", row);
            ports->setFocus();
            for (int step = 0; step <= row; ++step)
                QTest::keyClick(ports, Qt::Key_Down);
            setup_window::type(setup_.find<QLineEdit>("Text_sensor_loc", row),
                               QString("Engine %1").arg(row + 1));
            setup_window::type(setup_.find<QLineEdit>("Text_logfile_path", row), "logs/");
        }
        QDir().mkpath("logs");
        setup_.click("cmd_OK");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QCOMPARE(Ini::ini_read("comport 1"), "3");
        QCOMPARE(Ini::ini_read("comport 2"), "7");
    }

    void a_refresh_time_is_chosen() {
        setup_.choose("Setup_menue", "setup_scale");
        QDialog* const scales = setup_.other_dialog("frmscale_polar");
        QTRY_VERIFY(scales->isVisible());
        option(scales, "Opt_refr", 0)->click(); // 100 ms
        QTest::mouseClick(button(scales, "Cmd_ok", "OK"), Qt::LeftButton);
        QTRY_VERIFY(!scales->isVisible());
        QCOMPARE(sensor::state.upd_periode, 100);
    }

    void they_measure_and_log() {
        setup_.choose("start", "startstop");
        QTRY_VERIFY(sensor::state.channel_running[0] && sensor::state.channel_running[1]);
        for (i16 channel = 0; channel < 2; ++channel) {
            send(channel, simulation::parameter_body({.alarmlevel = 2}));
            send(channel, simulation::status_body());
            for (const char* const code : {":03", ":04"}) {
                for (i32 block = 1; block <= 4; ++block)
                    send(channel, simulation::curve_body(code, block, 500));
            }
            send(channel, simulation::measured_body({.speed = 700 + channel}));
            QTRY_COMPARE(sensor::state.channels[channel].speed, 700 + channel);
            QTRY_VERIFY(shown_rows(channel).rows() > 1);
            QTRY_VERIFY(log_of(channel).contains(QString(" 51 %1 1234 48 7 ").arg(700 + channel).toLatin1()));
        }
        QCOMPARE(frame(0)->title(), QString("not installed"));
    }

    void the_setup_shows_them_locked() {
        setup_.open();
        QCOMPARE(setup_.tabs()->currentIndex(), 1);
        QVERIFY(!setup_.find("th_a")->isEnabled());
        QCOMPARE(setup_.find<QLineEdit>("txt_num_cyl", 1)->text(), QString("6"));
        send(0, simulation::measured_body({.speed = 901}));
        QTRY_COMPARE(sensor::state.channels[0].speed, 901); // behind the dialog
        setup_.click("cmd_OK");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QVERIFY(sensor::state.channel_running[0] && sensor::state.channel_running[1]);
    }

    void they_stop_without_a_password() {
        QTimer answer;
        connect(&answer, &QTimer::timeout, &answer, [] {
            const auto* const lock = qobject_cast<QDialog*>(shown_window("FrmAbort"));
            if (lock != nullptr) QTest::mouseClick(button(lock, "CmdStop", "Stop Logging"), Qt::LeftButton);
        });
        answer.start(5);
        setup_.choose("start", "startstop");
        QTRY_VERIFY(!sensor::state.measure_running);
        QTRY_VERIFY(shown_window("FrmAbort") == nullptr);
        QVERIFY(log_of(0).contains(" 51 901 1234 48 7 "));
        for (i16 channel = 0; channel < 2; ++channel)
            QVERIFY(log_of(channel).contains(" Measure Stopped -->"));
    }

    void a_curve_is_switched_in_the_setup_opened_again() {
        for (const char* const value : {"1", "0"}) {
            setup_.open();
            setup_.press_space("th_a");
            QTRY_COMPARE(Ini::ini_read("xy_tha"), value);
            close_with_escape(setup_.dialog());
        }
    }

  private:
    [[nodiscard]] QGroupBox* frame(int channel) const {
        auto* const found =
            setup_.main().centralWidget()->findChild<QGroupBox*>(QString("Frame_sensor(%1)").arg(channel));
        if (found == nullptr) qFatal("no Frame_sensor(%d)", channel);
        return found;
    }
    void send(i16 channel, const std::string& body) const {
        lines_[static_cast<std::size_t>(channel)]->send(simulation::closed(body));
    }
    static QByteArray log_of(i16 channel) {
        const QDir folder(QString("logs/Engine %1").arg(channel + 1));
        const QStringList names = folder.entryList({"*.xlg"});
        return names.size() == 1 ? written_file(folder.filePath(names.front())) : QByteArray();
    }

    setup_window setup_;
    std::vector<std::unique_ptr<serial_line>> lines_;
};

static const desktop_test<first_start_test> known;
#include "first_start_test.moc"
