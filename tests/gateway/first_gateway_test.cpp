// The gateway before its first command, and the borders of its boxes.

#include "gateway/connection.h"
#include "gateway/modbus.h"
#include "gateway/setup_tcp.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo {
namespace {

class FirstGateway : public SetupTcp {};

TEST_F(FirstGateway, NoTransactionIsOpenAndNoneHasFailed) {
    EXPECT_FALSE(modbus.mb_read_active || modbus.mb_write_active || modbus.mb_send_done);
    EXPECT_FALSE(modbus.mb_read_pending || modbus.mb_write_pending || modbus.mb_waiting);
    EXPECT_FALSE(modbus.mb_timed_out || modbus.tcp_sock_error);
    EXPECT_EQ(modbus.mb_tick_count, 0);
    EXPECT_FALSE(tcp.tcp_connected || tcp.tcp_locked);
    EXPECT_EQ(tcp.tcp_fail_count + tcp.tcp_step + tcp.tcp_block + tcp.tcp_channel, 0);
}

TEST_F(FirstGateway, TheWindowShowsNothingChosen) {
    for (const i16 box : {form().Check1, form().Check2, form().Check3, form().Check4})
        EXPECT_EQ(box, 0);
    EXPECT_EQ(form().summoned, 0);
    EXPECT_EQ(checked_items(), "");
    EXPECT_FALSE(form().Image_TCP_visible || form().Reg_content);
    EXPECT_EQ(status_box{}.BackColor, 0);
}

TEST_F(FirstGateway, ANumberAtItsLimitStaysAsItWasTyped) {
    mainfrm::setup_tcp_click();
    FrmSetupTCP::Txt_regnumber_change("0123");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(form().Txt_regnumber, "0123");
    FrmSetupTCP::Txt_regnumber_change("0124");
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(form().Txt_regnumber, "123");
}

} // namespace
} // namespace tyxo
