#include "dialogs/setup/frmsetup.h"

#include "basics/number_text.h"
#include "link/engine_texts.h"

namespace tyxo::frmSetup {

namespace {

constexpr std::string_view not_reported = "NA";

bool always(const channel_rec& /*rec*/) {
    return true;
}
bool if_ext1(const channel_rec& rec) {
    return rec.ext1_valid;
}
bool if_ext2(const channel_rec& rec) {
    return rec.ext2_valid;
}

struct number_field {
    std::string sensor_tab::*text;
    i32 channel_rec::*value;
    bool (*reported)(const channel_rec& rec) = always;
};

constexpr std::array<number_field, 16> number_fields{{
    {&sensor_tab::txt_num_cyl, &channel_rec::numzyl},
    {&sensor_tab::txt_nendehzahl, &channel_rec::ratedspeed},
    {&sensor_tab::txt_overspeed, &channel_rec::overspeed},
    {&sensor_tab::txt_alarmlevel, &channel_rec::alarmlevel},
    {&sensor_tab::txt_prealarmlevel, &channel_rec::prealarmlevel},
    {&sensor_tab::txt_impoffset, &channel_rec::impoffset},
    {&sensor_tab::Txt_ialmlevel1, &channel_rec::ialarmlevel1, if_ext1},
    {&sensor_tab::Txt_ialmlevel2, &channel_rec::ialarmlevel2, if_ext1},
    {&sensor_tab::txt_ialmrpm, &channel_rec::ialmrpm, if_ext1},
    {&sensor_tab::txt_aimp_del, &channel_rec::ialarmdelay, if_ext2},
    {&sensor_tab::txt_aimp_len, &channel_rec::ialarmlen, if_ext2},
    {&sensor_tab::txt_aimp_level, &channel_rec::ialarmlevel, if_ext2},
    {&sensor_tab::Txt_theff_alm, &channel_rec::theff_alm,
     [](const channel_rec& rec) { return rec.theff_alm != unknown::theff; }},
    {&sensor_tab::Txt_theff_cnt, &channel_rec::theff_cnt,
     [](const channel_rec& rec) { return rec.theff_cnt != unknown::theff; }},
    {&sensor_tab::txt_alminhibit, &channel_rec::alminhibit_time,
     [](const channel_rec& rec) { return rec.alminhibit_time != unknown::alminhibit_time; }},
    {&sensor_tab::Txt_dc_percent, &channel_rec::dcalarmpercent,
     [](const channel_rec& rec) { return rec.dcpercent_valid; }},
}};

void show_engine(sensor_tab& tab, const channel_rec& rec) {
    if (rec.enginetype == 4) tab.txt_engine_typ = "4 stroke";
    if (rec.enginetype == 2) tab.txt_engine_typ = "2 stroke";
    if (rec.cylconf == arrangement::in_line) tab.txt_engine_anord = "in-line";
    if (rec.cylconf == arrangement::v_type) tab.txt_engine_anord = "V-cylinder";
}

} // namespace

void show_parameters(sensor_tab& tab, const channel_rec& rec) {
    tab.txt_Eva_ver = rec.ext1_valid ? rec.fwvers_ext : rec.fwvers;
    tab.Txt_eva_snr = rec.evasnr;
    show_engine(tab, rec);
    for (const number_field& field : number_fields)
        tab.*field.text = field.reported(rec) ? plain(rec.*field.value) : std::string(not_reported);
    for (std::size_t place = 0; place < cylinder_max; ++place) {
        if (const auto text = bank_and_cylinder(rec.firingorder[place])) tab.Text_zundfolge[place] = *text;
        tab.Text_zuendw[place] = plain(rec.firingangle[place]);
    }
}

} // namespace tyxo::frmSetup
