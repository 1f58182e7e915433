#pragma once
// The main window of four channels for benchmarks, in a folder of its own with its settings.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "desktop/settings_file.h"
#include "link/channel_rec.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace tyxo {

inline constexpr const char* settings_text =
    "[tyxo]\r\nupd_periode=100\r\nmax_sensors=4\r\nadc_offset=479\r\n"
    "zyl_speed_range=1\r\nscale_polar_a=0.5\r\nscale_polar_t=3\r\n"
    "xy_tmv=1\r\nxy_theff=1\r\nxy_theff_AC=1\r\nxy_tha=1\r\n"
    "location 1=Engine 1\r\nlocation 2=Engine 2\r\n"
    "location 3=Engine 3\r\nlocation 4=Engine 4\r\n";

/// The window while benchmarks run.
inline mainfrm_view* window = nullptr;

/// Runs all benchmarks with the window shown, unless said otherwise on Qt's offscreen platform. 1 when the
/// settings were not read.
inline int run_with_main_window(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" SCREEN);
    }
    QApplication::setStyle("Fusion");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir folder;
    if (!QDir::setCurrent(folder.path()) || !write_settings_file(settings_text)) return 1;
    wire();
    mainfrm_view main_window;
    window = &main_window;
    mainfrm::form_load(main_window.width(), main_window.height());
    if (sensor::state.max_sensors != channel_count) return 1;
    main_window.show_state();
    main_window.show();
    QCoreApplication::processEvents();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace tyxo
