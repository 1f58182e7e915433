// The alarm alert on the screen, with real widgets: what it shows, and its end; alert_over_windows_test.cpp
// has the other windows.

#include "desktop/alert_window.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmalert.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "displays/xy_plot.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"
#include "platform/message_box.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>

#include <cmath>

using namespace tyxo;

namespace {

double brightness(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double a = brightness(one) + 0.05;
    const double b = brightness(other) + 0.05;
    return a > b ? a / b : b / a;
}

/// The two colours that most of a widget's picture is made of, the more frequent one first.
std::pair<QColor, QColor> main_colours(QWidget* widget) {
    const QImage picture = widget->grab().toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    const auto most = [&] {
        const auto found = std::max_element(counts.begin(), counts.end());
        const QColor colour(found.key());
        counts.erase(found);
        return colour;
    };
    const QColor first = most();
    return {first, most()};
}

} // namespace

class alert_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        window_.start(alert_settings);
        alert_ = alert_window();
        QVERIFY(alert_ != nullptr);
        QVERIFY(!alert_->isVisible());
    }
    void init() {
        window_.view().activateWindow();
        QTRY_VERIFY(window_.view().isActiveWindow());
    }
    void cleanup() { end_alarms(); }
    void cleanupTestCase() { window_.end(); }

    // What it is and shows.

    void it_belongs_to_no_window_and_stays_on_top() {
        raise_alarm(0);
        QVERIFY(alert_->parentWidget() == nullptr);
        QCOMPARE(alert_->windowModality(), Qt::NonModal);
        QVERIFY(alert_->windowFlags() & Qt::WindowStaysOnTopHint);
        QVERIFY(!(alert_->windowFlags() & Qt::WindowMinimizeButtonHint));
        QCOMPARE(alert_->windowTitle(), QString("Mainalarm"));
    }

    void it_comes_while_the_main_window_is_minimised() {
        window_.view().showMinimized();
        raise_alarm(0);
        QVERIFY(!alert_->isMinimized());
        window_.view().showNormal();
    }

    void it_flashes() {
        raise_alarm(0);
        QVERIFY(FrmAlert::timer_alert.Enabled());
        for (int turn = 0; turn < 2; ++turn) {
            QTRY_COMPARE(background(), QColor(255, 0, 0));
            QVERIFY(part("Image1")->isVisible() && part("Image2")->isVisible());
            QTRY_COMPARE(background(), QColor(0xE0, 0xE0, 0xE0));
            QVERIFY(!part("Image1")->isVisible() && !part("Image2")->isVisible());
        }
    }

    void it_is_red_at_once() {
        take_status(0, alarm_ac);
        QTest::qWait(60);
        QVERIFY(alert_->isVisible());
        QCOMPARE(background(), QColor(255, 0, 0));
    }

    void every_text_can_be_read_in_both_phases() {
        raise_all_alarms();
        for (const colour phase : {alert_colour::red, alert_colour::light}) {
            if (FrmAlert::state.BackColor != phase) next_phase();
            QCOMPARE(FrmAlert::state.BackColor, phase);
            QCOMPARE(part("Lbl_attention")->palette().color(QPalette::WindowText),
                     phase == alert_colour::red ? QColor(255, 0, 0) : QColor(0, 0, 0));
            for (QLabel* const label : alert_->findChildren<QLabel*>()) {
                const auto [plate, letters] = main_colours(label);
                QVERIFY2(contrast(plate, label->palette().color(QPalette::WindowText)) >= 4.5,
                         qPrintable(label->objectName()));
                QVERIFY2(contrast(plate, letters) >= 4.5, qPrintable(label->objectName()));
                QCOMPARE(plate, label->palette().color(QPalette::Window));
            }
        }
    }

    void locations_are_texts_and_nothing_is_cut_off() {
        raise_all_alarms();
        QCOMPARE(label("lbl_inst(0)")->text(), QString("Tyxo 1:"));
        QCOMPARE(label("lbl_inst1(0)")->text(), QString("Engine & pump  Mainalarm AC"));
        QCOMPARE(label("lbl_inst1(1)")->text(), QString("<b>two</b>  Mainalarm AC"));
        QCOMPARE(label("lbl_inst1(1)")->textFormat(), Qt::PlainText);
        QCOMPARE(label("lbl_inst1(2)")->text(), QString(25, 'W') + "  Mainalarm AC");
        QCOMPARE(label("lbl_inst1(3)")->text(), QString::fromUtf8("K\xC3\xBChlung  Mainalarm AC"));
        check_texts(alert_);
        QVERIFY(alert_->frameGeometry().width() < 1280);
        QVERIFY(alert_->screen()->availableGeometry().contains(alert_->geometry()));
    }

    void it_keeps_its_size_whatever_it_shows() {
        raise_alarm(0);
        const QSize size = alert_->size();
        next_phase();
        QCOMPARE(background(), QColor(0xE0, 0xE0, 0xE0));
        QCOMPARE(alert_->size(), size);
        raise_alarm(2);
        QCOMPARE(alert_->size(), size);
        QVERIFY(label("lbl_inst1(2)")->isVisible());
        QVERIFY(!label("lbl_inst1(1)")->isVisible());
    }

    void every_control_has_an_accessible_name() {
        raise_alarm(0);
        for (const char* const name : {"Image1", "Image2", "CmdAck"})
            QVERIFY2(!part(name)->accessibleName().isEmpty(), name);
    }

    // Its end.

    void the_button_confirms() {
        raise_alarm(0);
        QTest::mouseClick(part("CmdAck"), Qt::LeftButton);
        expect_confirmed();
    }

    void enter_escape_and_the_frame_confirm() {
        for (const int key :
             {int{Qt::Key_Return}, int{Qt::Key_Enter}, int{Qt::Key_Escape}, int{Qt::Key_Space}}) {
            raise_alarm(0);
            wait_until_it_takes_keys();
            QTest::keyClick(QApplication::focusWindow(), static_cast<Qt::Key>(key));
            expect_confirmed();
            take_status(0, 0);
            init(); // this screen leaves the keyboard with the hidden window
        }
        raise_alarm(0);
        alert_->close();
        expect_confirmed();
    }

    void a_key_that_is_held_down_confirms_nothing() {
        raise_alarm(0);
        wait_until_it_takes_keys();
        for (const int key :
             {int{Qt::Key_Return}, int{Qt::Key_Enter}, int{Qt::Key_Space}, int{Qt::Key_Escape}}) {
            QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
            QApplication::sendEvent(alert_->windowHandle(), &held);
        }
        QTest::qWait(50);
        QVERIFY(alert_->isVisible());
        QVERIFY(sensor::state.alert_open);
    }

    // The diagrams.

    void it_hides_the_diagrams_and_the_operator_opens_them_again() {
        sensor::state.channels[0].param_valid = true;
        const auto expect_hidden_and_opened = [&](const char* name, void (*open)(i16)) {
            const auto open_it = [&] {
                desktop::run_handler(desktop::source::operator_, [open] { open(0); });
            };
            open_it();
            QTRY_VERIFY2(shown_window(name) != nullptr, name);
            QWidget* const diagram = shown_window(name);
            raise_alarm(0);
            QTRY_VERIFY2(!diagram->isVisible(), name);
            confirm_alert();
            take_status(0, 0);
            QTest::qWait(50);
            QVERIFY2(!diagram->isVisible(), name);
            open_it();
            QTRY_VERIFY2(diagram->isVisible(), name);
            diagram->close();
            QTRY_VERIFY2(!diagram->isVisible(), name);
        };
        expect_hidden_and_opened("frmbarpic", mainfrm::Cmd_diagramm_click);
        expect_hidden_and_opened("Frmbarpic2", mainfrm::Cmd_diagramm2_click);
        expect_hidden_and_opened("frmdetailedpic", mainfrm::XYplot_click);
    }

  private:
    QWidget* part(const char* name) const { return alert_->findChild<QWidget*>(name); }
    QLabel* label(const char* name) const { return alert_->findChild<QLabel*>(name); }
    /// What is really painted beside the controls.
    QColor background() const { return alert_->grab(QRect(2, 2, 1, 1)).toImage().pixelColor(0, 0); }
    QPoint place_of_button() const {
        const QWidget* const button = part("CmdAck");
        return button->mapTo(alert_, button->rect().center());
    }

    started_window window_;
    QDialog* alert_ = nullptr;
};

static const desktop_test<alert_view_test> known;
#include "alert_view_test.moc"
