// Registers read and written by hand, and the window's commands on a connection, with a controller.

#include "gateway/gateway_world.h"

#include "basics/failure.h"

namespace tyxo::gateway_testing {
namespace {

const status_box not_connected{"Device not connected via TCP/IP", 255};

class ManualAccess : public gateway_world {
  protected:
    ManualAccess() {
        mainfrm::setup_tcp_click();
        connect();
    }

    static FrmSetupTCP::window& form() { return FrmSetupTCP::state; }
    static void type(std::string_view start, std::string_view count) {
        FrmSetupTCP::Txt_sendbase_change(start);
        FrmSetupTCP::Txt_regnumber_change(count);
    }
};

TEST_F(ManualAccess, ReadsTheRegistersOfTheBoxes) {
    type("40", "10");
    FrmSetupTCP::Cmd_read_R_click();
    EXPECT_TRUE(transaction_open()) << "the command returns at once";
    EXPECT_EQ(numbers(last_frame()), (std::vector<int>{0, 0, 0, 0, 0, 6, 1, 3, 0, 40, 0, 10}));
    advance(20);
    EXPECT_EQ(status(), registers_read);
    EXPECT_EQ(box(9), "9");
    for (std::size_t index = 10; index < 123; ++index)
        EXPECT_EQ(box(index), "*****");
}

TEST_F(ManualAccess, AReadWhoseSocketBreaksLeavesTheFlags) {
    plant().refuses_data = true;
    modbus.mb_write_active = true; // as the last write left it
    EXPECT_THROW(FC3MB_read(0, 1), failure);
    EXPECT_FALSE(modbus.mb_read_active);
    EXPECT_TRUE(modbus.mb_write_active);
    EXPECT_FALSE(transaction_open());
}

TEST_F(ManualAccess, ReadsWithinItsLimits) {
    type("65411", "200");
    FrmSetupTCP::Cmd_read_R_click();
    EXPECT_EQ(form().Txt_sendbase, "65410");
    EXPECT_EQ(form().Txt_regnumber, "123");
    EXPECT_EQ(target(last_frame()), "65410x123");
    advance(50);
    type("65410", "123");
    FrmSetupTCP::Cmd_read_R_click();
    EXPECT_EQ(form().Txt_sendbase, "65410");
    EXPECT_EQ(target(last_frame()), "65410x123");
}

TEST_F(ManualAccess, WritesWithinItsLimits) {
    type("65411", "200");
    FrmSetupTCP::Cmd_write_R_click();
    EXPECT_EQ(form().Txt_sendbase, "65410");
    EXPECT_EQ(form().Txt_regnumber, "123");
    EXPECT_EQ(target(last_frame()), "65410x123");
    EXPECT_EQ(last_frame().size(), 259U);
    EXPECT_EQ(status(), written);
}

TEST_F(ManualAccess, SendsValuesOutOfRangeAs65535AndShowsThemSo) {
    const std::vector<std::pair<std::string, int>> rows{{"70000", 65535}, {"-5", 65535},     {"65535", 65535},
                                                        {"65536", 65535}, {"0", 0},          {"-0.4", 65535},
                                                        {"2.5", 2},       {"3.5", 4},        {"abc", 0},
                                                        {"", 0},          {" 17 pumps", 17}, {"*****", 0}};
    type("0", std::to_string(rows.size()));
    for (std::size_t index = 0; index < rows.size(); ++index)
        FrmSetupTCP::Text4_change(index, rows[index].first);
    FrmSetupTCP::Text4_change(rows.size(), "70000");
    FrmSetupTCP::Cmd_write_R_click();
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(word(last_frame(), 13 + 2 * index), rows[index].second) << rows[index].first;
        EXPECT_EQ(box(index), std::to_string(rows[index].second)) << rows[index].first;
    }
    EXPECT_EQ(box(rows.size()), "70000") << "not among the written ones";
}

TEST_F(ManualAccess, ATextThatIsNoNumberIsRegister0AndNoRegisters) {
    type("abc", "");
    FrmSetupTCP::Cmd_write_R_click();
    EXPECT_EQ(target(last_frame()), "0x0");
    EXPECT_EQ(form().Txt_sendbase, "abc");
    EXPECT_EQ(form().Txt_regnumber, "");
}

TEST_F(ManualAccess, DoesNothingWhileATransactionIsOpen) {
    be_silent();
    type("40", "10");
    FrmSetupTCP::Cmd_read_R_click();
    const std::size_t sent = frames();
    type("70000", "200");
    FrmSetupTCP::Text4_change(0, "70000");
    const FrmSetupTCP::window before = form();
    FrmSetupTCP::Cmd_read_R_click();
    FrmSetupTCP::Cmd_write_R_click();
    EXPECT_EQ(form(), before);
    EXPECT_EQ(frames(), sent);
}

TEST_F(ManualAccess, ReadsThoughWritesAreRefused) {
    modbus.mb_timed_out = true;
    type("40", "2");
    FrmSetupTCP::Cmd_read_R_click();
    advance(20);
    EXPECT_EQ(status(), registers_read);
    FrmSetupTCP::Cmd_write_R_click();
    EXPECT_EQ(status(), refused);
}

TEST_F(ManualAccess, IsRefusedWithoutAConnectionBeforeTheLimits) {
    FrmSetupTCP::cmd_discon_click();
    type("70000", "200");
    FrmSetupTCP::Text4_change(0, "70000");
    const std::size_t sent = frames();
    for (const auto& click : {FrmSetupTCP::Cmd_read_R_click, FrmSetupTCP::Cmd_write_R_click}) {
        FrmSetupTCP::show_tcp_status("", 0);
        click();
        EXPECT_EQ(status(), not_connected);
        EXPECT_EQ(form().Txt_sendbase, "70000");
        EXPECT_EQ(form().Txt_regnumber, "200");
        EXPECT_EQ(box(0), "70000");
    }
    EXPECT_EQ(frames(), sent);
}

TEST_F(ManualAccess, ConnectsAndDisconnects) {
    FrmSetupTCP::cmd_discon_click();
    EXPECT_EQ(status(), disconnected);
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
    FrmSetupTCP::Txt_IPadr_change("10.9.9.9");
    FrmSetupTCP::Txt_IPport_change("503");
    FrmSetupTCP::Connect_click();
    EXPECT_EQ(status(), connected);
    EXPECT_EQ(plant().attempts.back().host, "10.9.9.9");
    EXPECT_EQ(plant().attempts.back().port, 503);
}

TEST_F(ManualAccess, ConnectingDoesNotUnlockAndDisconnectingAndResettingDo) {
    FrmSetupTCP::cmd_discon_click();
    tcp.tcp_locked = true;
    FrmSetupTCP::Connect_click();
    EXPECT_EQ(status(), locked);
    FrmSetupTCP::cmd_discon_click();
    EXPECT_FALSE(tcp.tcp_locked);
    tcp.tcp_locked = true;
    FrmSetupTCP::res_con_click();
    EXPECT_FALSE(tcp.tcp_locked);
    EXPECT_EQ(status(), connected);
}

TEST_F(ManualAccess, ResettingALivingConnectionOnlySaysSo) {
    const std::size_t attempts = plant().attempts.size();
    FrmSetupTCP::res_con_click();
    EXPECT_EQ(status(), (status_box{"TCP IP connection reset!", 65280}));
    EXPECT_EQ(plant().attempts.size(), attempts);
}

TEST_F(ManualAccess, SavingClosesTheSocketAndSaysNothing) {
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
    EXPECT_TRUE(tcp.tcp_connected);
    EXPECT_EQ(status(), connected);
}

TEST_F(ManualAccess, SavingConnectsAnewWhenTheConnectionIsAutomatic) {
    FrmSetupTCP::Check1_click();
    FrmSetupTCP::Txt_IPadr_change("10.9.9.9");
    const std::size_t attempts = plant().attempts.size();
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(plant().attempts.size(), attempts + 1);
    EXPECT_EQ(plant().attempts.back().host, "10.9.9.9");
    EXPECT_EQ(status(), connected);
    tcp.tcp_locked = true;
    FrmSetupTCP::Cmd_save_click();
    EXPECT_EQ(status(), locked) << "saving does not unlock";
}

TEST_F(ManualAccess, APortThatOverflowsEndsTheSaveWithTheSocketClosed) {
    FrmSetupTCP::Check1_click();
    FrmSetupTCP::Txt_IPport_change("40000");
    EXPECT_THROW(FrmSetupTCP::Cmd_save_click(), failure);
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed) << "no connection behind the failure";
}

TEST_F(ManualAccess, UsesTheBlockThatWasSentLast) {
    TCP_send(2, 8);
    FrmSetupTCP::Cmd_read_R_click();
    EXPECT_EQ(target(last_frame()), "1226x3");
}

} // namespace
} // namespace tyxo::gateway_testing
