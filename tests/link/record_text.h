#pragma once
// What frames fill of a channel record, as text: two records are compared, and their difference is read.

#include "link/channel_rec.h"

#include <array>
#include <string>

namespace tyxo::link_testing {

namespace details {

struct number_name {
    const char* name;
    i32 channel_rec::*member;
};
struct text_name {
    const char* name;
    std::string channel_rec::*member;
};
struct flag_name {
    const char* name;
    bool channel_rec::*member;
};

inline constexpr std::array numbers{
    number_name{"tsignal", &channel_rec::tsignal},
    number_name{"speed", &channel_rec::speed},
    number_name{"teff_dc", &channel_rec::teff_dc},
    number_name{"teff_ac", &channel_rec::teff_ac},
    number_name{"tstsig_state", &channel_rec::tstsig_state},
    number_name{"tstsig_prev", &channel_rec::tstsig_prev},
    number_name{"alarmlevel", &channel_rec::alarmlevel},
    number_name{"prealarmlevel", &channel_rec::prealarmlevel},
    number_name{"ratedspeed", &channel_rec::ratedspeed},
    number_name{"overspeed", &channel_rec::overspeed},
    number_name{"enginetype", &channel_rec::enginetype},
    number_name{"numzyl", &channel_rec::numzyl},
    number_name{"cylconf", &channel_rec::cylconf},
    number_name{"impoffset", &channel_rec::impoffset},
    number_name{"tsttime", &channel_rec::tsttime},
    number_name{"tstlen", &channel_rec::tstlen},
    number_name{"aimp_level_cur", &channel_rec::aimp_level_cur},
    number_name{"ialarmlevel1", &channel_rec::ialarmlevel1},
    number_name{"ialarmlevel2", &channel_rec::ialarmlevel2},
    number_name{"ialmrpm", &channel_rec::ialmrpm},
    number_name{"ialarmdelay", &channel_rec::ialarmdelay},
    number_name{"ialarmlen", &channel_rec::ialarmlen},
    number_name{"ialarmlevel", &channel_rec::ialarmlevel},
    number_name{"theff_cnt", &channel_rec::theff_cnt},
    number_name{"theff_alm", &channel_rec::theff_alm},
    number_name{"alminhibit_time", &channel_rec::alminhibit_time},
    number_name{"dcalarmpercent", &channel_rec::dcalarmpercent},
    number_name{"status_alarm", &channel_rec::status_alarm},
    number_name{"status_error", &channel_rec::status_error},
    number_name{"status_ext", &channel_rec::status_ext},
    number_name{"alminhibit_left", &channel_rec::alminhibit_left},
    number_name{"alminhibit_on", &channel_rec::alminhibit_on},
    number_name{"eva_mode", &channel_rec::eva_mode},
};

inline constexpr std::array texts{
    text_name{"id_text1", &channel_rec::id_text1}, text_name{"id_text2", &channel_rec::id_text2},
    text_name{"id_text3", &channel_rec::id_text3}, text_name{"id_text4", &channel_rec::id_text4},
    text_name{"fwvers", &channel_rec::fwvers},     text_name{"fwvers_ext", &channel_rec::fwvers_ext},
    text_name{"evasnr", &channel_rec::evasnr},     text_name{"speed_unit", &channel_rec::speed_unit},
};

inline constexpr std::array flags{
    flag_name{"param_valid", &channel_rec::param_valid},
    flag_name{"status_valid", &channel_rec::status_valid},
    flag_name{"tst_valid", &channel_rec::tst_valid},
    flag_name{"ext1_valid", &channel_rec::ext1_valid},
    flag_name{"ext2_valid", &channel_rec::ext2_valid},
    flag_name{"dcpercent_valid", &channel_rec::dcpercent_valid},
    flag_name{"connected", &channel_rec::connected},
};

template <class Items> std::string items_text(const char* name, const Items& items) {
    std::string text = name;
    for (const i32 value : items)
        text += ' ' + std::to_string(value);
    return text + '\n';
}

} // namespace details

/// A line per field.
inline std::string record_text(const channel_rec& rec) {
    std::string text;
    for (const auto& row : details::numbers)
        text.append(row.name).append(" ").append(std::to_string(rec.*row.member)).append("\n");
    for (const auto& row : details::texts)
        text.append(row.name).append(" [").append(rec.*row.member).append("]\n");
    for (const auto& row : details::flags)
        text.append(row.name).append(rec.*row.member ? " yes\n" : " no\n");
    text += "tvoltage " + std::to_string(rec.tvoltage) + "\nspeed_scale " + std::to_string(rec.speed_scale) +
            '\n';
    text += "log_state " + std::to_string(rec.log_state) + '\n';
    text += details::items_text("firingorder", rec.firingorder) +
            details::items_text("firingangle", rec.firingangle);
    return text;
}

/// The curves, separately: they are long.
inline bool same_curves(const channel_rec& one, const channel_rec& other) {
    return one.thermo_data == other.thermo_data && one.angacc_data == other.angacc_data;
}

} // namespace tyxo::link_testing
