// The main window and the alert in the letters that desktops hand over, from 9 to 18 points.

#include "desktop/accessibility.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "desktop/window_states.h"
#include "displays/bar_diagram.h"
#include "displays/chart.h"
#include "displays/frmdetailedpic.h"
#include "displays/panel.h"

#include <QStatusBar>

using namespace tyxo;

class large_print_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        start_.start(accessible_settings);
        for (std::size_t channel = 0; channel < channel_count; ++channel) {
            panels.Frame_message[channel].Visible = false;
            panels.XYplot[channel].Visible = true;
            panels.Cmd_diagramm[channel].Visible = panels.Cmd_diagramm2[channel].Visible = true;
        }
        start_.end();
    }
    void init() {
        QFETCH(int, points);
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
        main_ = std::make_unique<mainfrm_view>();
        main_->show();
        main_->show_state();
        QTest::qWait(30);
    }
    void cleanup() { main_.reset(); }

    void buttons_have_room_data() { sizes(); }
    void buttons_have_room() {
        for (int channel = 0; channel < channel_count; ++channel) {
            const auto* const zoom = find<QPushButton>("cmd_zoom_xy", channel);
            QCOMPARE(zoom->font().pointSize(), QApplication::font().pointSize());
            check_text(*zoom, zoom->text(), 4);
            for (const char* array : {"Cmd_diagramm", "Cmd_diagramm2"}) {
                const auto* const button = find<QPushButton>(array, channel);
                for (const QString& word : button->text().split(' '))
                    check_text(*button, word, 4);
            }
        }
    }

    void frame_titles_have_room_above_the_instruments_data() { sizes(); }
    void frame_titles_have_room_above_the_instruments() {
        for (int channel = 0; channel < channel_count; ++channel) {
            const auto* const frame = find<QGroupBox>("Frame_sensor", channel);
            check_text(*frame, frame->title(), 0);
            for (const QWidget* control : frame->findChildren<QWidget*>()) {
                QVERIFY2(control->y() >= frame->fontMetrics().height(), qPrintable(described(control)));
                QVERIFY2(frame->rect().contains(control->geometry()), qPrintable(described(control)));
            }
        }
    }

    void no_line_of_a_frame_runs_through_an_instrument_data() { sizes(); }
    void no_line_of_a_frame_runs_through_an_instrument() {
        for (int channel = 0; channel < channel_count; ++channel) {
            const auto* const frame = find<QGroupBox>("Frame_sensor", channel);
            QStyleOptionGroupBox option;
            option.initFrom(frame);
            option.text = frame->title();
            option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
            const QRect lines = frame->style()->subControlRect(QStyle::CC_GroupBox, &option,
                                                               QStyle::SC_GroupBoxContents, frame);
            for (const QWidget* control : frame->findChildren<QWidget*>())
                QVERIFY2(lines.contains(control->geometry()), qPrintable(described(control)));
        }
    }

    void the_row_below_the_panels_has_room_data() { sizes(); }
    void the_row_below_the_panels_has_room() {
        const auto* const frame = main_->findChild<QGroupBox*>("frame_resolution");
        check_text(*frame, frame->title(), 0);
        for (int index = 0; index < 4; ++index) {
            const auto* const caption = find<QLabel>("Lbl_opt_res", index);
            check_text(*caption, caption->text(), 0);
            QVERIFY(frame->rect().contains(caption->geometry()));
            QVERIFY(caption->height() >= caption->fontMetrics().height());
        }
        const auto* const name = main_->findChild<QLabel*>("Lbl_TY_logger");
        check_text(*name, name->text(), 0);
        const auto* const status = main_->centralWidget()->findChild<QPlainTextEdit*>("Text_status");
        QVERIFY(status->viewport()->height() >= 2 * status->fontMetrics().lineSpacing());
        const auto* const bar = main_->findChild<QStatusBar*>("StatusBar");
        QVERIFY(bar->height() >= bar->fontMetrics().height());
        QVERIFY(!bar->geometry().intersects(status->geometry()));
    }

    void time_resolutions_stand_apart_data() { sizes(); }
    void time_resolutions_stand_apart() {
        for (int index = 0; index < 3; ++index) {
            const int apart = find<QRadioButton>("opt_res", index + 1)->x() -
                              find<QLabel>("Lbl_opt_res", index)->geometry().right();
            QVERIFY2(apart > 6, qPrintable(QString::number(apart)));
        }
    }

    void the_alerts_lines_are_whole_data() { sizes(); }
    void the_alerts_lines_are_whole() {
        show_alert(alert_colour::red);
        FrmAlert::alert_text(0, std::string(25, 'W') + "  Mainalarm DC");
        main_->show_state();
        QTest::qWait(30);
        QWidget* const alert = shown_window("FrmAlert");
        QVERIFY(alert != nullptr);
        check_room(alert);
        FrmAlert::unload();
        main_->show_state();
    }

    void diagrams_keep_a_size_in_which_their_print_is_legible_data() { sizes(); }
    void diagrams_keep_a_size_in_which_their_print_is_legible() {
        frmdetailedpic::state.form.show();
        frmbarpic::state.form.show();
        Frmbarpic2::state.form.show();
        main_->show_state();
        for (const auto& [name, least] : {std::pair{"frmdetailedpic", QSize(1000, 620)},
                                          {"frmbarpic", QSize(800, 500)},
                                          {"Frmbarpic2", QSize(800, 500)}})
            QCOMPARE(shown_window(name)->minimumSize(), least);
        frmdetailedpic::state.form.unload();
        frmbarpic::state.form.unload();
        Frmbarpic2::state.form.unload();
    }

  private:
    static void sizes() {
        QTest::addColumn<int>("points");
        for (const int points : {9, 10, 11, 12, 14, 18})
            QTest::newRow(qPrintable(QString::number(points))) << points;
    }
    template <class Widget> Widget* find(const char* array, int index) const {
        auto* const found =
            main_->centralWidget()->findChild<Widget*>(QString("%1(%2)").arg(array).arg(index));
        if (found == nullptr) qFatal("no %s(%d)", array, index);
        return found;
    }
    static void check_text(const QWidget& control, const QString& text, int rim) {
        const QSize needed = control.fontMetrics().size(Qt::TextShowMnemonic, text);
        QVERIFY2(needed.width() + rim <= control.width() && needed.height() <= control.height(),
                 qPrintable(text + ": " + described(&control)));
    }

    started_window start_;
    std::unique_ptr<mainfrm_view> main_;
};

static const desktop_test<large_print_test> known;
#include "large_print_test.moc"
