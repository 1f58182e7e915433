#include "app/wiring.h"

#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "displays/chart.h"
#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "gateway/connection.h"
#include "gateway/modbus.h"
#include "gateway/modbus_calc.h"
#include "link/calls.h"
#include "link/main_timers.h"
#include "link/serial.h"
#include "link/supervision.h"
#include "logging/event_file.h"
#include "logging/log.h"

namespace tyxo {

namespace {

void wire_channel(i16 channel) {
    serial::state.comm[channel].on_comm([channel] { serial::on_comm(channel); });
    mainfrm::timers.Timer_timeout[channel].on_tick([channel] { sensor::link_timed_out(channel); });
    mainfrm::timers.Timer_intervall[channel].on_tick([channel] { sensor::poll(channel); });
    mainfrm::timers.Timer_chartres[channel].on_tick([channel] { mainfrm::Timer_chartres_tick(channel); });
}

} // namespace

void wire() {
    calls.createlog = log::createlog;
    calls.close_log = log::close_log;
    calls.log_record = log::log_record;
    calls.log_note = log::log_note;
    calls.log_comment = log::log_comment;
    calls.event_line = event_line;
    calls.process_thermo = process_thermo;
    calls.process_angacc = process_angacc;
    calls.clear_curves = clear_curves;
    calls.calc_thermo_cyl = Modbus_calc::calc_thermo_cyl;
    calls.calc_angacc_cyl = Modbus_calc::calc_angacc_cyl;
    calls.open_alert = FrmAlert::open_alert;
    calls.show_alert_line = FrmAlert::show_alert_line;
    calls.alert_text = FrmAlert::alert_text;
    calls.stop_lock = FrmAbort::stop_lock;

    mainfrm::timers.Timer_chart_upd.on_tick(mainfrm::Timer_chart_upd_tick);
    mainfrm::timers.Timer_TCP.on_tick(mainfrm::Timer_TCP_tick);
    gateway.Timer_reconnect.on_tick(FrmSetupTCP::Timer_reconnect_tick);
    gateway.Timer1.on_tick(FrmSetupTCP::Timer1_tick);
    FrmAlert::timer_alert.on_tick(FrmAlert::timer_alert_tick);
    gateway.Winsock_A.on_data_arrival(FrmSetupTCP::Winsock_A_DataArrival);
    gateway.Winsock_A.on_send_complete([] { modbus.mb_send_done = true; });
    gateway.Winsock_A.on_error([] { modbus.tcp_sock_error = true; });
    for (i16 channel = 0; channel < channel_count; ++channel)
        wire_channel(channel);
}

} // namespace tyxo
