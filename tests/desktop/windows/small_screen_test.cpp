// A Full HD screen at 150 %: 1280 x 720 dots, fewer than the main window is designed for.

#include "desktop/all_windows.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "link/channel_rec.h"
#include "platform/program.h"

#include <QMessageBox>
#include <QScreen>
#include <QTimer>

using namespace tyxo;

class small_screen_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 1.5);
        QTimer look;
        connect(&look, &QTimer::timeout, &look, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            warning_ = box->text();
            box->button(QMessageBox::Ok)->click();
        });
        look.start(10);
        window_.start(accessible_settings);
        for (i16 channel = 0; channel < channel_count; ++channel) {
            panels.Frame_message[channel].Visible = false;
            panels.XYplot[channel].Visible = true;
            panels.Cmd_diagramm[channel].Visible = panels.Cmd_diagramm2[channel].Visible = true;
            sensor::state.channels[channel].numzyl = 6;
            sensor::state.channels[channel].param_valid = true;
            sensor::state.channels[channel].status_valid = true;
        }
        window_.show_state();
    }
    void cleanupTestCase() { window_.end(); }

    void the_warning_counts_the_dots_that_windows_are_laid_out_in() {
        QCOMPARE(screen().width, 1280);
        QCOMPARE(screen().height, 720);
        QVERIFY2(warning_.startsWith("Resolution is actual 1280 x 720dots"), qPrintable(warning_));
    }

    void the_main_window_fills_the_screen() {
        QVERIFY(window_.view().isMaximized());
        QVERIFY(fits(&window_.view()));
        QVERIFY(window_.view().width() >= 1270);
    }

    void instruments_have_their_design_height_and_charts_are_seen() {
        for (int channel = 0; channel < channel_count; ++channel) {
            QCOMPARE(window_.widget("Frame_sensor", channel)->height(), 125);
            QVERIFY(window_.widget("chart", channel)->height() >= 100);
            for (const char* array : {"Frame_sensor", "chart", "XYplot", "Cmd_diagramm2", "cmd_zoom_xy"}) {
                const QWidget* const control = window_.widget(array, channel);
                QVERIFY2(client()->rect().contains(control->geometry()), qPrintable(control->objectName()));
            }
        }
    }

    void un_maximised_it_keeps_to_the_screen_too() {
        window_.view().showNormal();
        QTRY_VERIFY(!window_.view().isMaximized());
        QVERIFY(fits(&window_.view()));
        instruments_have_their_design_height_and_charts_are_seen();
        window_.view().showMaximized();
        QTRY_VERIFY(window_.view().isMaximized());
    }

    void nothing_of_a_row_can_be_clicked_beside_an_enlarged_chart() {
        for (const i16 channel : {i16{0}, i16{3}}) {
            mainfrm::cmd_zoom_xy_click(channel);
            window_.show_state();
            const rectangle row = row_place(channel);
            for (int y = row.top; y < row.top + row.height; y += 3) {
                for (int x = 0; x < row.width; x += 3) {
                    const QWidget* control = client()->childAt(x, y);
                    while (control != nullptr && control->parentWidget() != client())
                        control = control->parentWidget();
                    QVERIFY(control != nullptr);
                    const QString name = control->objectName();
                    const QString chart = QString("chart(%1)").arg(channel);
                    QVERIFY2(name.isEmpty() || name == chart || name.startsWith("cmd_zoom_xy("),
                             qPrintable(QString("%1 at %2, %3").arg(name).arg(x).arg(y)));
                }
            }
            for (const int of_row : {int{channel}, int{row_neighbour(channel)}}) {
                const QWidget* const button = window_.widget("cmd_zoom_xy", of_row);
                QVERIFY(window_.widget("chart", channel)->geometry().contains(button->geometry()));
            }
            mainfrm::cmd_zoom_xy_click(channel);
            window_.show_state();
        }
    }

    void a_covered_control_gives_the_keyboard_up() {
        QWidget* const covered = window_.widget("Cmd_diagramm", 2);
        to_front(&window_.view());
        covered->setFocus();
        QVERIFY(covered->hasFocus());
        mainfrm::cmd_zoom_xy_click(0);
        window_.show_state();
        QVERIFY(!covered->hasFocus());
        mainfrm::cmd_zoom_xy_click(0);
        window_.show_state();
    }

    void a_zoom_buttons_tool_tip_names_its_chart() {
        for (int channel = 0; channel < channel_count; ++channel) {
            const QString title = QString("%1: ").arg(channel + 1);
            QVERIFY(window_.widget("cmd_zoom_xy", channel)->toolTip().contains(title));
        }
    }

    void no_window_exceeds_the_screen_data() {
        QTest::addColumn<int>("points");
        for (const int points : {9, 11, 14, 18})
            QTest::newRow(qPrintable(QString::number(points))) << points;
    }
    void no_window_exceeds_the_screen() {
        QFETCH(int, points);
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
        mainfrm_view large;
        large.show();
        for (const window_row& row : window_states()) {
            row.open();
            large.show_state();
            QTest::qWait(20);
            int found = 0;
            for (const QWidget* window : QApplication::topLevelWidgets()) {
                if (!window->isVisible() || window == &window_.view()) continue;
                if (window->objectName() != row.window()) continue;
                QVERIFY2(
                    fits(window),
                    qPrintable(
                        QString("%1: %2 x %3").arg(row.name).arg(window->width()).arg(window->height())));
                ++found;
            }
            QVERIFY2(found > 0, row.name);
            row.leave();
            large.show_state();
        }
    }

  private:
    [[nodiscard]] QWidget* client() const { return window_.view().centralWidget(); }
    static bool fits(const QWidget* window) {
        return window->size().boundedTo(window->screen()->availableSize()) == window->size();
    }

    started_window window_;
    QString warning_;
};

static const desktop_test<small_screen_test> known;
#include "small_screen_test.moc"
