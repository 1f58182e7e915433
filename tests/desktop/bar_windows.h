#pragma once
// The windows of the bar diagrams in the started program, for the tests that look at them.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "desktop/control_pictures.h"
#include "desktop/settings_file.h"
#include "desktop/shown_window.h"
#include "displays/bar_diagram.h"
#include "displays/bar_diagram_view.h"
#include "displays/panel.h"
#include "link/cylinder_model.h"
#include "platform/desktop/handlers.h"
#include "settings/settings.h"
#include "widgets/plots/bar_plot_view.h"
#include "widgets/show.h"

#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace tyxo {

using namespace cylinder_testing;

/// One of the two windows, with the names of what belongs to it.
struct bar_window_row {
    const char* window;
    const char* plot;
    const char* button;
    bar_form& bars;
    i16& selected;
    void (*refresh)();
    colour value_color;
    const char* title;
    const char* caption;
};

inline const bar_window_row both[] = {
    {"frmbarpic", "iPlotX_angle", "Cmd_diagramm", frmbarpic::state, sensor::state.bar_channel_angacc,
     refresh_speed_bars, rgb(0, 0, 255), "Cylinder speed difference diagram", "Speed difference diagram "},
    {"Frmbarpic2", "iPlotX_thermo", "Cmd_diagramm2", Frmbarpic2::state, sensor::state.bar_channel_thermo,
     refresh_thermo_bars, rgb(255, 0, 0), "Cylinder thermosignal difference diagram",
     "Thermosignal difference diagram "},
};

inline const QColor difference_color(192, 0, 192);

class bar_windows : public QObject {
  protected:
    void start() {
        QVERIFY(QDir::setCurrent(folder_.path()));
        QVERIFY(write_settings_file("[tyxo]\r\nupd_periode= 100\r\nmax_sensors= 3\r\n"
                                    "location 1=K\xFChlung\r\nlocation 2=Engine 2\r\n"
                                    "location 3=Engine 3\r\n"));
        wire();
        main_ = new mainfrm_view;
        mainfrm::start_program(main_->width(), main_->height());
        for (std::size_t channel = 0; channel < 3; ++channel)
            panels.Cmd_diagramm[channel].Visible = panels.Cmd_diagramm2[channel].Visible = true;
        main_->show_state();
        main_->show();
        QVERIFY(QTest::qWaitForWindowExposed(main_));
    }

    void set_engines() {
        settings.speedbar_mode = 0;
        set_engine(0, in_line_engine());
        set_engine(1, banked_engine(24));
        sensor::state.channels[1].overspeed = 100;
        set_engine(2, {});
        sensor::state.detail_angacc = flat_curve(704);
        sensor::state.detail_thermo = flat_curve(529);
    }

    void close() {
        for (const bar_window_row& row : both)
            if (is_open(row)) window(row).close();
    }

    static void set_engine(std::size_t channel, channel_rec engine) {
        engine.location = sensor::state.channels[channel].location;
        sensor::state.channels[channel] = engine;
    }

    static bool is_open(const bar_window_row& row) { return shown_window(row.window) != nullptr; }
    /// Once it was open.
    bar_diagram_view& window(const bar_window_row& row) const {
        return *main_->findChild<bar_diagram_view*>(row.window);
    }
    bar_plot_view& plot(const bar_window_row& row) const {
        return *window(row).findChild<bar_plot_view*>(row.plot);
    }
    QLabel& label(const bar_window_row& row, const QString& name) const {
        return *window(row).findChild<QLabel*>(name);
    }

    void press(const bar_window_row& row, int channel) const {
        auto* const button = main_->findChild<QPushButton*>(element(row.button, channel));
        QTest::mouseClick(button, Qt::LeftButton);
        main_->show_state();
    }

    void new_curve(const bar_window_row& row) const {
        desktop::run_handler(desktop::source::device, row.refresh);
        main_->show_state();
    }

    QString shown_labels(const bar_window_row& row) const {
        QStringList texts;
        for (int bar = 0; bar < cylinder_max; ++bar) {
            const QLabel& one = label(row, element("Lbl_bar", bar));
            if (one.isVisible()) texts.push_back(one.text());
        }
        return texts.join(' ');
    }

    QImage drawn(const bar_window_row& row) const {
        QCoreApplication::processEvents();
        plot(row).replot();
        return picture_of(window(row));
    }

    QTemporaryDir folder_;
    mainfrm_view* main_ = nullptr;
};

} // namespace tyxo
