#pragma once
// What a frame with a right check does to a record, told a second time: one plain walk per code, from left to
// right, until a field cannot be read.

#include "link/channel_rec.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tyxo::link_testing {

class frame_model {
  public:
    struct cannot_read {};

    frame_model(channel_rec& rec, i16& thermo_block, i16& angacc_block)
        : rec_(rec), thermo_block_(thermo_block), angacc_block_(angacc_block) {}

    /// True if the whole frame could be read.
    bool take(std::string_view frame) {
        frame_ = frame;
        try {
            decode();
        } catch (const cannot_read&) {
            return false;
        }
        return true;
    }

  private:
    [[nodiscard]] std::string characters(std::size_t position, std::size_t length) const {
        if (position + length > frame_.size() + 1) throw cannot_read{};
        return std::string(frame_.substr(position - 1, length));
    }
    [[nodiscard]] i32 number(std::size_t position, std::size_t length = 4) const {
        const std::string digits = characters(position, length);
        if (digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) throw cannot_read{};
        return static_cast<i32>(std::strtol(digits.c_str(), nullptr, 16));
    }
    [[nodiscard]] static i32 tenth(i32 value) { return static_cast<i32>(std::lrint(value / 10.0)); }
    [[nodiscard]] bool reaches(std::size_t length) const { return frame_.size() >= length; }

    void decode() {
        switch (std::atoi(leading_digits(characters(2, 2)).c_str())) {
        case 0:
            return identification();
        case 1:
            return values();
        case 3:
            return curve(rec_.thermo_data, thermo_block_);
        case 4:
            return curve(rec_.angacc_data, angacc_block_);
        case 6:
            return parameters();
        case 7:
            return static_cast<void>(number(4, 2));
        case 8:
            return status();
        default:
            return;
        }
    }

    [[nodiscard]] static std::string leading_digits(const std::string& code) {
        return code.substr(0, code.find_first_not_of("0123456789"));
    }

    void identification() {
        rec_.id_text1 = characters(4, 7);
        rec_.id_text2 = characters(11, 7);
        rec_.id_text3 = characters(18, 6);
        rec_.id_text4 = characters(24, 10);
    }

    void values() {
        if (!reaches(17)) {
            rec_.tsignal = tenth(std::abs(number(4) - 32768));
            rec_.speed = tenth(number(8));
            return;
        }
        rec_.tstsig_state = number(12);
        if (rec_.tstsig_state < 3) rec_.tstsig_prev = rec_.tstsig_state;
        const bool shown = rec_.tstsig_visible != 0 || rec_.tstsig_state == 0;
        if (shown) rec_.tsignal = tenth(std::abs(number(4) - 32768));
        rec_.speed = tenth(number(8));
        if (reaches(21) && shown) rec_.tvoltage = std::fabs(number(16) - 32768.0);
        if (reaches(25)) rec_.teff_dc = tenth(number(20));
        if (reaches(29)) rec_.teff_ac = tenth(number(24));
    }

    void curve(std::array<i32, curve_samples + 1>& data, i16& block_last) {
        if (!reaches(11)) return;
        const i32 block = number(4, 2);
        if (block == 0 || block > 4) return;
        if (block != block_last + 1) {
            block_last = 0;
            return;
        }
        for (std::size_t sample = 0; sample < 64; ++sample)
            data[64 * static_cast<std::size_t>(block - 1) + sample] = number(6 + 4 * sample);
        block_last = static_cast<i16>(block % 4);
    }

    void parameters() {
        rec_.alarmlevel = number(4);
        rec_.prealarmlevel = number(8);
        rec_.ratedspeed = number(12);
        rec_.overspeed = number(16);
        rec_.enginetype = number(20);
        rec_.numzyl = number(24);
        rec_.cylconf = number(28);
        for (std::size_t index = 0; index < 24; ++index)
            rec_.firingorder[index] = number(32 + 2 * index, 2);
        for (std::size_t index = 0; index < 24; ++index)
            rec_.firingangle[index] = number(80 + 4 * index);
        rec_.impoffset = number(176);
        long_parameters();
        chart_scale();
        if (rec_.log_state == 1) rec_.log_state = 2;
        rec_.param_valid = true;
    }

    void long_parameters() {
        if (reaches(186)) {
            rec_.tsttime = number(180);
            rec_.tstlen = number(184);
        }
        rec_.tst_valid = reaches(186);
        if (reaches(192)) {
            rec_.aimp_level_cur = number(188, 2);
            rec_.ialarmlevel1 = number(190);
            rec_.ialarmlevel2 = number(194);
            rec_.ialmrpm = number(198);
            rec_.fwvers_ext = characters(202, 10);
        }
        rec_.ext1_valid = reaches(192);
        if (reaches(221)) {
            rec_.ialarmdelay = number(212);
            rec_.ialarmlen = number(216);
            rec_.ialarmlevel = number(220);
        }
        rec_.ext2_valid = reaches(221);
        rec_.theff_alm = reaches(231) ? number(224) : 9999;
        rec_.theff_cnt = reaches(231) ? number(228) : 9999;
        rec_.alminhibit_time = reaches(237) ? number(232) : 99999;
        rec_.evasnr = reaches(237) ? characters(236, 8) : "inactive";
        if (reaches(248)) rec_.dcalarmpercent = number(244);
        rec_.dcpercent_valid = reaches(248);
    }

    void chart_scale() {
        const i32 limit = rec_.overspeed;
        rec_.speed_scale = limit < 120    ? 1.0
                           : limit < 400  ? .2
                           : limit < 1400 ? .1
                           : limit < 2900 ? .05
                                          : .04;
        rec_.speed_unit = limit < 120    ? "RPM"
                          : limit < 400  ? "RPM /5"
                          : limit < 1400 ? "RPM /10"
                          : limit < 2900 ? "RPM /20"
                                         : "RPM /25";
    }

    void status() {
        rec_.fwvers = characters(4, 5);
        rec_.status_alarm = number(9);
        rec_.status_error = number(13);
        rec_.status_valid = true;
        rec_.eva_mode = reaches(31) ? number(21, 2) : 1;
        rec_.alminhibit_on = reaches(31) ? number(23) : 0;
        if (!reaches(31)) return;
        rec_.alminhibit_left = number(27);
        rec_.status_ext = number(31, 2);
    }

    channel_rec& rec_;
    i16& thermo_block_;
    i16& angacc_block_;
    std::string_view frame_;
};

} // namespace tyxo::link_testing
