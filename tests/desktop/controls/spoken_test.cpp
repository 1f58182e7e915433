// What is told to those who cannot see the windows: of each painted control what it is and what it shows,
// that it can be pressed, and that nothing is told but what has happened.

#include "desktop/alert_window.h"
#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/shown_chart.h"
#include "desktop/started_window.h"
#include "desktop/window_states.h"
#include "dialogs/frmscale_polar.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "link/indicators.h"
#include "widgets/analog_display_view.h"
#include "widgets/angular_gauge_view.h"
#include "widgets/click_label_view.h"
#include "widgets/led_view.h"
#include "widgets/linear_gauge_view.h"
#include "widgets/plots/xy_plot_view.h"
#include "widgets/seven_segment_view.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QSignalSpy>

using namespace tyxo;

namespace {

QAccessibleInterface& interface_of(QWidget& widget) {
    QAccessibleInterface* const found = QAccessible::queryAccessibleInterface(&widget);
    if (found == nullptr) qFatal("%s is not told of", qPrintable(widget.objectName()));
    return *found;
}

/// The whole text that a reader gets.
QString read(QWidget& widget) {
    QAccessibleTextInterface* const text = interface_of(widget).textInterface();
    return text == nullptr ? QString() : text->text(0, text->characterCount());
}

bool can_be_pressed(QWidget& widget) {
    return interface_of(widget).actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction());
}

void press(QWidget& widget) {
    interface_of(widget).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

} // namespace

class spoken_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(accessible_settings);
        show_all_controls();
        window_.show_state();
    }
    void cleanupTestCase() { window_.end(); }

    void dials_have_a_scale_and_a_unit() {
        angular_gauge_view dial;
        iAngularGaugeX gauge = speed_gauge(517);
        gauge.PositionMin = -10;
        dial.show_control(gauge);
        QCOMPARE(interface_of(dial).role(), QAccessible::Dial);
        QAccessibleValueInterface* const value = interface_of(dial).valueInterface();
        QVERIFY(value != nullptr);
        QCOMPARE(value->minimumValue().toDouble(), -10.0);
        QCOMPARE(value->currentValue().toDouble(), 517.0);
        QCOMPARE(value->maximumValue().toDouble(), 1000.0);
        QCOMPARE(interface_of(dial).text(QAccessible::Description), QString("RPM"));
        QCOMPARE(read(dial), QString("Dial: 517 RPM"));
        QVERIFY(interface_of(dial).state().readOnly);
        value->setCurrentValue(3);
        QCOMPARE(dial.position(), 517.0);
    }

    void bars_have_a_scale_and_tell_the_highest_value() {
        linear_gauge_view bar;
        iLinearGaugeX gauge = thermo_gauge(80);
        gauge.set_position(42);
        bar.show_control(gauge);
        QCOMPARE(interface_of(bar).role(), QAccessible::Dial);
        QCOMPARE(interface_of(bar).valueInterface()->currentValue().toDouble(), 42.0);
        QCOMPARE(interface_of(bar).valueInterface()->maximumValue().toDouble(), gauge.PositionMax);
        QCOMPARE(read(bar), QString("Bar: 42, highest 80"));
    }

    void digits_and_lamps_are_texts() {
        seven_segment_view digits;
        digits.show_control({.Value = 723, .Precision = 0, .DigitCount = 4});
        analog_display_view number;
        number.show_control({12.344, 2, "mV", 0});
        led_view lamp;
        lamp.show_control({.Active = true});
        const std::vector<std::pair<QWidget*, QString>> rows{
            {&digits, "Digits: 723"}, {&number, "Number: 12.34 mV"}, {&lamp, "Lamp: on"}};
        for (const auto& [widget, text] : rows) {
            QCOMPARE(interface_of(*widget).role(), QAccessible::StaticText);
            QVERIFY(interface_of(*widget).valueInterface() == nullptr);
            QCOMPARE(read(*widget), text);
        }
    }

    void charts_are_told_in_words() {
        chart_of_rows chart;
        chart.resize(635, 278);
        iStripChartX control = engine_chart(1.0 / 96);
        control.curves[3].Visible = false;
        chart.show_control(control, strip_window(strip_spans[1]));
        QCOMPARE(interface_of(chart).role(), QAccessible::Chart);
        QCOMPARE(read(chart), QString("Chart 1: Engine 1: running, the last 15 min, nothing measured yet"));
        strip_window rows(strip_spans[1]);
        rows.append({1000, {10, 20, 30, 40, 50, 60}});
        rows.append({2000, {11, 21.26F, 31, 41, no_value, 61}});
        control.Frozen = true;
        control.XAxisSpan = 1;
        chart.show_control(control, rows);
        QCOMPARE(read(chart), QString("Chart 1: Engine 1: frozen, the last 24 h, Tsig %DCA: 11.0, "
                                      "RPM /10: 21.3, TAlm 100%: 31.0, Teff %DCA: 50.0, Teff %ACA: 61.0"));
        QVERIFY(interface_of(chart).text(QAccessible::Description).startsWith("frozen, the last 24 h"));
    }

    void scopes_tell_how_far_their_curves_leave_the_circle() {
        xy_plot_view scope;
        iXYPlotX plot;
        plot.curves = {{"zero", 0, true, {{30, 0}, {0, 30}}}, {"", 0, true, {}}, {"", 0, true, {}}};
        scope.show_control(plot);
        QCOMPARE(interface_of(scope).role(), QAccessible::Chart);
        QCOMPARE(read(scope), QString("Polar scope: no curve yet"));
        plot.curves[1].points = {{0, 27}, {36, 0}, {0, -30}};
        plot.curves[2].points = {{0, 30}, {0, 45}};
        scope.show_control(plot);
        QCOMPARE(read(scope), QString("Polar scope: Thermosignal: 90 to 120 % of the circle, "
                                      "Angular acceleration: 100 to 150 % of the circle"));
        plot.curves[1].Visible = false;
        scope.show_control(plot);
        QVERIFY(!read(scope).contains("Thermosignal"));
    }

    void what_can_be_clicked_can_be_pressed() {
        QWidget page;
        auto* const label = new click_label(&page);
        auto* const scope = new xy_plot_view(&page);
        auto* const chart = new chart_of_rows(&page);
        page.show();
        QCOMPARE(interface_of(*label).role(), QAccessible::Button);
        for (QWidget* control : std::initializer_list<QWidget*>{label, scope, chart}) {
            QSignalSpy clicks(control, SIGNAL(clicked()));
            QVERIFY(can_be_pressed(*control));
            press(*control);
            QCOMPARE(clicks.count(), 0); // whoever pressed goes on at once
            QTRY_COMPARE(clicks.count(), 1);
            control->setFocusPolicy(Qt::NoFocus); // covered by an enlarged chart
            QVERIFY(!can_be_pressed(*control));
            press(*control);
            QCoreApplication::processEvents();
            QCOMPARE(clicks.count(), 1);
        }
        led_view lamp;
        QVERIFY(!can_be_pressed(lamp));
    }

    void a_dialog_in_front_takes_presses_too() {
        QWidget* const value = window_.widget("Label4", 0);
        QSignalSpy clicks(value, SIGNAL(clicked()));
        mainfrm::setup_scale_click();
        window_.show_state();
        press(*value);
        QCoreApplication::processEvents();
        QCOMPARE(clicks.count(), 0);
        frmscale_polar::unload();
        window_.show_state();
        press(*value);
        QTRY_COMPARE(clicks.count(), 1);
    }

    void lists_of_ports_have_names() {
        open_setup(0, false);
        window_.show_state();
        auto* const ports = window_.dialog("frmSetup")->findChild<QComboBox*>("Select_com(2)");
        QCOMPARE(interface_of(*ports->view()).text(QAccessible::Name), QString("Sensor 3: Comports"));
        close_setup();
        window_.show_state();
    }

    void windows_have_their_roles() {
        QCOMPARE(interface_of(*alert_window()).role(), QAccessible::AlertMessage);
        QCOMPARE(interface_of(*alert_window()).text(QAccessible::Name), QString("Mainalarm"));
        for (const auto& [name, form] : {std::pair{"frmdetailedpic", &frmdetailedpic::state.form},
                                         {"frmbarpic", &frmbarpic::state.form},
                                         {"Frmbarpic2", &Frmbarpic2::state.form}}) {
            form->show();
            window_.show_state();
            QCOMPARE(interface_of(*window_.view().findChild<QWidget*>(name)).role(), QAccessible::Window);
            form->unload();
            window_.show_state();
        }
    }

    void an_announcer_is_heard_and_never_seen() {
        announcer voice(&window_.view());
        voice.say("something"); // to nobody: this screen has no listeners
        QCOMPARE(interface_of(voice).role(), QAccessible::Notification);
        QCOMPARE(voice.accessibleName(), QString());
        QVERIFY(!voice.isVisible());
    }

    void a_frame_inside_another_has_its_own_name() {
        mainfrm::setup_scale_click();
        window_.show_state();
        QWidget* const scale = window_.dialog("frmscale_polar")->findChild<QWidget*>("Frame_scale_t");
        QCOMPARE(interface_of(*scale).text(QAccessible::Name), QString("Scale Thermosignal"));
        frmscale_polar::unload();
        window_.show_state();
    }

  private:
    started_window window_;
};

static const desktop_test<spoken_test> known;
#include "spoken_test.moc"
