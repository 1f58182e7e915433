#include "dialogs/frmsetup.h"

namespace tyxo {

void setup_click() {}
void refresh_para() {}
void setup_frame_commport() {}
void save_parameter() {}
void write_parameter(i16 /*channel*/) {}
void SSTab_click(i16 /*tab*/) {}
void Text_sensor_loc_change(i16 /*row*/, std::string_view /*text*/) {}
void Text_logfile_path_change(i16 /*row*/, std::string_view /*text*/) {}
void Text_type_code_change(i16 /*row*/, std::string_view /*text*/) {}
void Text_alm1_change(i16 /*row*/, std::string_view /*text*/) {}
void Text_alm2_change(i16 /*row*/, std::string_view /*text*/) {}
void Text_evtlogfile_path_change(std::string_view /*text*/) {}
void Select_com_click(i16 /*row*/, std::size_t /*entry*/) {}
void scroll_max_commport_change(i16 /*value*/) {}
void Check_tst_click(i16 /*row*/) {}
void cmd_browse_path_click(i16 /*row*/) {}
void cmd_browse_evtpath_click() {}
void Opt_diffmode_click(std::size_t /*option*/) {}
void Opt_event_click(std::size_t /*option*/) {}
void th_a_click() {}
void TvmV_click() {}
void th_eff_click() {}
void th_eff_AC_click() {}
void frmSetup_cmd_OK_click() {}
void cmd_Refresh_click() {}
void frmSetup_cmd_cancel_click() {}

} // namespace tyxo
