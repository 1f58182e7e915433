#include "dialogs/frmalert.h"

namespace tyxo {

void open_alert() {}
void show_alert_line(i16 /*channel*/) {}
void alert_text(i16 /*channel*/, std::string_view /*text*/) {}
void timer_alert_tick() {}
void FrmAlert_activate() {}
void FrmAlert_CmdAck_click() {}
void FrmAlert_unload() {}

} // namespace tyxo
