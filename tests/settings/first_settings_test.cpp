// The settings before the start has read them, and the borders of reading.

#include "settings/settings.h"

#include "app/mainfrm.h"
#include "settings/ini_text.h"
#include "settings/serial_ports.h"
#include "settings/settings_lines.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class FirstSettings : public testing::Test {
  protected:
    FirstSettings() { fresh_world(); }
};

TEST_F(FirstSettings, NothingIsSwitchedOn) {
    for (const auto number :
         {&settings_rec::log_mode, &settings_rec::xy_tmv, &settings_rec::xy_theff, &settings_rec::xy_theff_AC,
          &settings_rec::xy_tha, &settings_rec::speedbar_mode, &settings_rec::eventfile_ena,
          &settings_rec::eventfile_ena_edit, &settings_rec::IPport, &settings_rec::IPsend,
          &settings_rec::REGNumber, &settings_rec::IPpolar, &settings_rec::IPsysstat})
        EXPECT_EQ(settings.*number, 0);
    for (const auto number :
         {&settings_rec::IPAutoC, &settings_rec::IPenaTRS, &settings_rec::REGView, &settings_rec::IPRefresh})
        EXPECT_EQ(settings.*number, 0);
    EXPECT_EQ(settings.REGBase, 0);
    EXPECT_EQ(settings.Sendbase, 0);
    EXPECT_FALSE(settings.autostart);
}

TEST_F(FirstSettings, ARepairableNumberAtItsLeastStaysAsItIsSpelled) {
    put_settings("zyl_speed_range= 1\nadc_offset= 460\n");
    for (const Ini::global_key& key : Ini::first_keys())
        if (key.repaired != nullptr) Ini::load(key);
    EXPECT_EQ(file(settings_file), "[tyxo]\r\nzyl_speed_range= 1\r\nadc_offset= 460\r\n");
}

TEST(IniBorders, ASectionWithoutItsClosingBracketIsNone) {
    EXPECT_EQ(Ini::get_key("[tyxo\r\nalpha=1\r\n", "tyxo", "alpha"), "");
}

TEST(IniBorders, ASectionLineIsNoKey) {
    EXPECT_EQ(Ini::get_key("[a=b]\r\n", "a=b", "[a"), "");
    EXPECT_EQ(Ini::get_key("[a=b]\r\n[a=c\r\n", "a=b", "[a"), "");
}

TEST(IniBorders, ACarriageReturnAtTheEndOfTheFileBelongsToTheLine) {
    EXPECT_EQ(Ini::set_key("[tyxo]\r\nalpha=1\r", "tyxo", "alpha", "2"), "[tyxo]\r\nalpha=2");
}

TEST_F(FirstSettings, EachPortIsToldWithItsSource) {
    world().port_names = {{"the bus", "COM7"}};
    serial::get_serial_port();
    EXPECT_EQ(world().debug, std::vector<std::string>{"the bus COM7"});
}

TEST_F(FirstSettings, AnErrorTextIsCutBehind256Characters) {
    world().error_texts[5] = std::string(300, 'x');
    EXPECT_EQ(Registry::win_error_text(5), std::string(256, 'x'));
}

} // namespace
} // namespace tyxo
