#include "dialogs/setup/frmsetup.h"

#include "displays/panel.h"
#include "link/parameter_frame.h"
#include "settings/settings.h"

namespace tyxo::frmSetup {

void save_parameter() {
    sensor::state.max_sensors = state.num_sensors_edit;
    sensor::state.comport = state.comport_edit;
    // Looks like a mistake and stays: all four rows count, also one that is not in use and may hold nothing
    // but its empty boxes (SetupSave.RaisingTheNumberAgainWithOkStoresWhatTheRowsShow).
    for (i16 row = 0; row < channel_count; ++row) {
        channel_rec& rec = sensor::state.channels[row];
        rec.location = state.Text_sensor_loc[row].Text;
        rec.typecode = state.Text_type_code[row].Text;
        rec.logpath = state.Text_logfile_path[row].Text;
        rec.text_almrel1 = state.Text_alm1[row].Text;
        rec.text_almrel2 = state.Text_alm2[row].Text;
    }
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const bool used = channel < sensor::state.max_sensors;
        indicators.start_channel[channel].Enabled = used;
        if (used) setup_relay_captions(channel);
    }
    settings.evtpath = state.Text_evtlogfile_path.Text;
    Ini::var_save();
    // The file keeps an empty code; the logs call it at once what they call it after the next start.
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        std::string& code = sensor::channel_at(channel).typecode;
        if (code.empty()) code = unknown::typecode;
    }
}

void write_parameter(i16 channel) {
    const sensor_tab& tab = state.sensors[channel];
    funct::parameter_frame_send(channel, {.alarmlevel = tab.txt_alarmlevel,
                                          .ratedspeed = tab.txt_nendehzahl,
                                          .overspeed = tab.txt_overspeed,
                                          .num_cyl = tab.txt_num_cyl,
                                          .firingorder = tab.Text_zundfolge,
                                          .prealarmlevel = tab.txt_prealarmlevel});
    save_parameter();
}

} // namespace tyxo::frmSetup
