// Which key lands in which value.

#include "app/mainfrm.h"
#include "displays/chart.h"
#include "link/channel_rec.h"
#include "settings/settings.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

#include <vector>

namespace tyxo {
namespace {

using namespace simulation;

class SettingsKeys : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
};

std::string text(double value) {
    std::string digits = std::to_string(value);
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.ends_with('.')) digits.pop_back();
    return digits;
}

struct global_row {
    std::string_view key;
    std::string_view in_file;
    std::string (*value)();
    std::string_view expected;
};

// Every value differs from every other and from the value of a missing key.
const std::vector<global_row> global_rows{
    {"upd_periode", " 250", [] { return text(sensor::state.upd_periode); }, "250"},
    {"cmd_periode", " 70001", [] { return text(sensor::state.cmd_periode); }, "70001"},
    {"max_sensors", " 3", [] { return text(sensor::state.max_sensors); }, "3"},
    {"scale_polar_a", " 1.25", [] { return text(sensor::state.scale_polar_a); }, "1.25"},
    {"scale_polar_t", "-.75", [] { return text(sensor::state.scale_polar_t); }, "-0.75"},
    {"adc_offset", "481", [] { return text(sensor::state.adc_offset); }, "481"},
    {"zyl_speed_range", "19", [] { return text(sensor::state.zyl_speed_range); }, "19"},
    {"log_mode", "21", [] { return text(settings.log_mode); }, "21"},
    {"xy_tmv", "22", [] { return text(settings.xy_tmv); }, "22"},
    {"xy_theff", "23", [] { return text(settings.xy_theff); }, "23"},
    {"xy_theff_AC", "24", [] { return text(settings.xy_theff_AC); }, "24"},
    {"xy_tha", "-25", [] { return text(settings.xy_tha); }, "-25"},
    {"passwd", "se;cr=et", [] { return settings.passwd; }, "se;cr=et"},
    {"autostart", "1", [] { return text(settings.autostart); }, "1"},
    {"speedbar_mode", "26", [] { return text(settings.speedbar_mode); }, "26"},
    {"eventfile_ena", "27", [] { return text(settings.eventfile_ena); }, "27"},
    {"evtpath", "C:\\events\\", [] { return settings.evtpath; }, "C:\\events\\"},
    {"IPAdr", "192.168.0.10", [] { return settings.IPAdr; }, "192.168.0.10"},
    {"IPport", "502", [] { return text(settings.IPport); }, "502"},
    {"IPsend", "28", [] { return text(settings.IPsend); }, "28"},
    {"REGBase", "40001", [] { return text(settings.REGBase); }, "40001"},
    {"REGNumber", "29", [] { return text(settings.REGNumber); }, "29"},
    {"IPAutoC", "30", [] { return text(settings.IPAutoC); }, "30"},
    {"IPenaTRS", "31", [] { return text(settings.IPenaTRS); }, "31"},
    {"IPpolar", "32", [] { return text(settings.IPpolar); }, "32"},
    {"IPsysstat", "33", [] { return text(settings.IPsysstat); }, "33"},
    {"Sendbase", "40034", [] { return text(settings.Sendbase); }, "40034"},
    {"REGView", "255", [] { return text(settings.REGView); }, "255"},
    {"IPRefresh", "35", [] { return text(settings.IPRefresh); }, "35"},
};

TEST_F(SettingsKeys, EachGlobalKeyLandsInItsValue) {
    std::string lines;
    for (const global_row& row : global_rows)
        lines.append(row.key).append("=").append(row.in_file).append("\n");
    put_settings(lines);
    mainfrm::load_settings();
    for (const global_row& row : global_rows) {
        EXPECT_EQ(row.value(), row.expected) << row.key;
    }
}

TEST_F(SettingsKeys, EachGlobalKeyIsFoundInUpperCaseToo) {
    std::string lines;
    for (const global_row& row : global_rows) {
        for (const char letter : row.key)
            lines += letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
        lines.append("=").append(row.in_file).append("\n");
    }
    put_settings(lines);
    mainfrm::load_settings();
    for (const global_row& row : global_rows) {
        EXPECT_EQ(row.value(), row.expected) << row.key;
    }
}

TEST_F(SettingsKeys, EachGlobalKeyChangesNoOtherValue) {
    for (const global_row& set : global_rows) {
        fresh_world();
        put_settings("adc_offset=500\nzyl_speed_range=2\n");
        mainfrm::load_settings();
        std::vector<std::string> before;
        for (const global_row& row : global_rows)
            before.push_back(row.value());
        fresh_world();
        put_settings(std::string(set.key) + "=" + std::string(set.in_file) +
                     "\nadc_offset=500\nzyl_speed_range=2\n");
        mainfrm::load_settings();
        for (std::size_t index = 0; index < global_rows.size(); ++index) {
            const global_row& row = global_rows[index];
            EXPECT_EQ(row.value(), row.key == set.key ? row.expected : before[index])
                << set.key << " and " << row.key;
        }
    }
}

TEST_F(SettingsKeys, MissingKeysAreZeroAndEmpty) {
    mainfrm::load_settings();
    for (const global_row& row : global_rows) {
        const std::string value = row.value();
        if (row.key == "adc_offset") {
            EXPECT_EQ(value, "479");
        } else if (row.key == "zyl_speed_range") {
            EXPECT_EQ(value, "1");
        } else {
            EXPECT_TRUE(value.empty() || value == "0") << row.key << " is " << value;
        }
    }
}

struct channel_row {
    std::string_view stem;
    std::string (*value)(i16 channel);
    std::string_view when_empty;
    bool number;
};

const std::vector<channel_row> channel_rows{
    {"comport ", [](i16 c) { return text(sensor::state.comport[c]); }, "0", true},
    {"location ", [](i16 c) { return sensor::state.channels[c].location; }, "", false},
    {"typecode ", [](i16 c) { return sensor::state.channels[c].typecode; }, "unknown", false},
    {"logpath ", [](i16 c) { return sensor::state.channels[c].logpath; }, "", false},
    {"text_almrel1 ", [](i16 c) { return sensor::state.channels[c].text_almrel1; }, "Alarmrel 1", false},
    {"text_almrel2 ", [](i16 c) { return sensor::state.channels[c].text_almrel2; }, "Alarmrel 2", false},
    {"tstsig_visible ", [](i16 c) { return text(sensor::state.channels[c].tstsig_visible); }, "0", true},
    {"th_dig_val ", [](i16 c) { return text(sensor::state.channels[c].th_dig_val); }, "0", true},
};

std::string channel_value(const channel_row& row, std::size_t index, i16 channel) {
    const std::string number = std::to_string(100 * (channel + 1) + static_cast<int>(index));
    return row.number ? number : std::string(row.stem) + number;
}

std::string channel_lines() {
    std::string lines;
    for (i16 channel = 0; channel < 5; ++channel) {
        for (std::size_t index = 0; index < channel_rows.size(); ++index) {
            const channel_row& row = channel_rows[index];
            lines += std::string(row.stem) + std::to_string(channel + 1) + "=" +
                     channel_value(row, index, channel) + "\n";
        }
    }
    return lines;
}

TEST_F(SettingsKeys, EachChannelKeyLandsInItsChannelUpToMaxSensors) {
    for (i16 used = 0; used <= channel_count; ++used) {
        fresh_world();
        put_settings("max_sensors= " + std::to_string(used) + "\n" + channel_lines());
        mainfrm::load_settings();
        for (i16 channel = 0; channel < channel_count; ++channel) {
            for (std::size_t index = 0; index < channel_rows.size(); ++index) {
                const channel_row& row = channel_rows[index];
                const std::string unread = row.number ? "0" : "";
                EXPECT_EQ(row.value(channel), channel < used ? channel_value(row, index, channel) : unread)
                    << row.stem << channel + 1 << " of " << used;
            }
        }
    }
}

TEST_F(SettingsKeys, AnEmptyChannelKeyHasItsDefault) {
    for (const std::string_view written : {"missing", "empty", "blank"}) {
        fresh_world();
        std::string lines = "max_sensors=2\n";
        for (const channel_row& row : channel_rows) {
            if (written == "missing") break;
            lines += std::string(row.stem) + "2=" + (written == "blank" ? "   \n" : "\n");
        }
        put_settings(lines);
        mainfrm::load_settings();
        for (const channel_row& row : channel_rows) {
            EXPECT_EQ(row.value(1), row.when_empty) << row.stem << written;
        }
    }
}

TEST_F(SettingsKeys, ALogFolderBeyond69CharactersIsCut) {
    const std::string folder = "C:\\" + std::string(80, 'f') + "\\";
    put_settings("max_sensors=1\nlogpath 1=" + folder + "\n");
    mainfrm::load_settings();
    EXPECT_EQ(sensor::state.channels[0].logpath, folder.substr(0, 69));
}

TEST_F(SettingsKeys, OfDuplicateKeysTheFirstCounts) {
    put_settings("max_sensors=1\nMAX_SENSORS=4\nlocation 1=first\nlocation 1=second\n");
    mainfrm::load_settings();
    EXPECT_EQ(sensor::state.max_sensors, 1);
    EXPECT_EQ(sensor::state.channels[0].location, "first");
}

TEST_F(SettingsKeys, AnotherSectionsKeysDoNotCount) {
    put_file("tyxo.ini", "[old]\r\nmax_sensors=4\r\n[tyxo]\r\nlog_mode=1\r\n[new]\r\nxy_tmv=1\r\n");
    mainfrm::load_settings();
    EXPECT_EQ(sensor::state.max_sensors, 0);
    EXPECT_EQ(settings.log_mode, 1);
    EXPECT_EQ(settings.xy_tmv, 0);
}

TEST_F(SettingsKeys, LoadingGivesTheTimeResolutionsTheirCaptionsAndSelectsTheFirst) {
    charts.opt_res = 3;
    for (iStripChartX& chart : charts.chart)
        chart.XAxisSpan = 7;
    mainfrm::load_settings();
    EXPECT_EQ(charts.Lbl_opt_res[0].Caption, "2 min");
    EXPECT_EQ(charts.Lbl_opt_res[1].Caption, "15 min");
    EXPECT_EQ(charts.Lbl_opt_res[2].Caption, "1 h");
    EXPECT_EQ(charts.Lbl_opt_res[3].Caption, "24 h");
    EXPECT_EQ(charts.opt_res, 0U);
    for (const iStripChartX& chart : charts.chart)
        EXPECT_DOUBLE_EQ(chart.XAxisSpan, 1.0 / 720);
}

TEST_F(SettingsKeys, AutostartIsOnForTheNumberOneOnly) {
    struct autostart_row {
        std::string_view in_file;
        bool on;
    };
    for (const autostart_row& row : {autostart_row{"1", true},
                                     {" 1", true},
                                     {"1.0", true},
                                     {"1.000000", true},
                                     {"01", true},
                                     {"1 channel", true},
                                     {"\" 1\"", true},
                                     {"yes", false},
                                     {"True", false},
                                     {"", false},
                                     {"0", false},
                                     {"2", false},
                                     {"-1", false},
                                     {"10", false},
                                     {"1.4", false},
                                     {"0.9999", false},
                                     {"x1", false}}) {
        fresh_world();
        put_settings("autostart=" + std::string(row.in_file) + "\n");
        mainfrm::load_settings();
        EXPECT_EQ(settings.autostart, row.on) << row.in_file;
    }
}

} // namespace
} // namespace tyxo
