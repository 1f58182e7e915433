// Frames that leave, the encoding of a register, and the way of a transaction from open to its end.

#include "gateway/gateway_world.h"

#include "basics/failure.h"

namespace tyxo::gateway_testing {
namespace {

class ModbusWrite : public gateway_world {
  protected:
    ModbusWrite() { connect(); }

    static std::vector<int> sent_register(i32 value) {
        modbus.mb_reg[0] = value;
        write_one();
        return numbers(last_frame().substr(13));
    }
};

TEST_F(ModbusWrite, Of123RegistersAtTheHighestStartIs259BytesLong) {
    FC16MB_write(65410, 123);
    ASSERT_EQ(frames(), 1U);
    const std::vector<int> frame = numbers(last_frame());
    ASSERT_EQ(frame.size(), 259U);
    EXPECT_EQ(std::vector<int>(frame.begin(), frame.begin() + 13),
              (std::vector<int>{0, 0, 0, 0, 0, 253, 1, 16, 255, 130, 0, 123, 246}));
    EXPECT_EQ(status(), written);
}

TEST_F(ModbusWrite, OfNoRegistersIsSentAllTheSame) {
    FC16MB_write(258, 0);
    EXPECT_EQ(numbers(last_frame()), (std::vector<int>{0, 0, 0, 0, 0, 7, 1, 16, 1, 2, 0, 0, 0}));
    EXPECT_EQ(status(), written);
}

TEST_F(ModbusWrite, CarriesTheRegistersInOrderTheHighByteFirst) {
    modbus.mb_reg[0] = 1;
    modbus.mb_reg[1] = 515;
    modbus.mb_reg[2] = 9999;
    FC16MB_write(7, 2);
    EXPECT_EQ(numbers(last_frame()), (std::vector<int>{0, 0, 0, 0, 0, 11, 1, 16, 0, 7, 0, 2, 4, 0, 1, 2, 3}));
}

TEST_F(ModbusWrite, EncodesARegisterAsItsTable) {
    const struct {
        i32 value;
        int high;
        int low;
    } rows[] = {
        {0, 0x00, 0x00},      {1, 0x00, 0x01},      {255, 0x00, 0xFF},     {256, 0x01, 0x00},
        {32767, 0x7F, 0xFF},  {32768, 0x80, 0x00},  {65535, 0xFF, 0xFF},   {-1, 0xFF, 0xFF},
        {-12, 0xFF, 0xF4},    {-256, 0xFF, 0x00},   {-32768, 0x80, 0x00},  {-32769, 0xFF, 0xFF},
        {-65536, 0x80, 0x00}, {-65537, 0xFF, 0xFF}, {-100000, 0xF9, 0x60}, {-2147483647 - 1, 0x80, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(sent_register(row.value), (std::vector<int>{row.high, row.low})) << row.value;
}

TEST_F(ModbusWrite, OfAValueAbove65535IsAFailureThatSendsAndChangesNothing) {
    for (const i32 value : {65536, 70000, 2147483647}) {
        modbus.mb_reg[0] = value;
        const modbus_state before = modbus;
        EXPECT_THROW(write_one(), failure) << value;
        EXPECT_EQ(modbus, before);
    }
    EXPECT_EQ(frames(), 0U);
    EXPECT_FALSE(transaction_open());
}

TEST_F(ModbusWrite, OfWhatNoFrameCanSayIsAFailure) {
    EXPECT_THROW(FC16MB_write(65536, 1), failure);
    EXPECT_THROW(FC16MB_write(-1, 1), failure);
    EXPECT_THROW(FC16MB_write(0, -1), failure);
    EXPECT_THROW(FC16MB_write(0, 125), failure) << "the length has one byte";
    EXPECT_THROW(FC16MB_write(0, 257), failure);
    FC16MB_write(65535, 124);
    EXPECT_EQ(frames(), 1U);
}

TEST_F(ModbusWrite, BlocksUntilTheAnswerAndStopsTheClock) {
    EXPECT_EQ(lasting(write_one), 5);
    EXPECT_EQ(status(), written);
    EXPECT_FALSE(transaction_open());
    EXPECT_FALSE(gateway.Timer1.Enabled());
    EXPECT_FALSE(gateway.Timer_reconnect.Enabled());
    EXPECT_FALSE(modbus.mb_write_pending);
    EXPECT_EQ(modbus.mb_tick_count, 0);
}

TEST_F(ModbusWrite, IsOpenWhileItWaits) {
    bool open = false;
    after(3, [&] { open = transaction_open() && modbus.mb_write_pending && modbus.mb_write_active; });
    write_one();
    EXPECT_TRUE(open);
}

TEST_F(ModbusWrite, TimesOutAtThe101stTick) {
    be_silent();
    after(100, [] { EXPECT_NE(status(), timed_out); });
    EXPECT_EQ(lasting(write_one), 101);
    EXPECT_EQ(status(), timed_out);
    EXPECT_TRUE(modbus.mb_timed_out);
    EXPECT_FALSE(modbus.mb_write_pending);
    EXPECT_FALSE(transaction_open());
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
    EXPECT_EQ(modbus.mb_tick_count, 0);
}

TEST_F(ModbusWrite, AnsweredBehind100TicksIsInTime) {
    plant().answers = [](const std::string& frame) { return simulation::answered(frame, 100); };
    write_one();
    EXPECT_EQ(status(), written);
    write_one();
    EXPECT_EQ(status(), written) << "the count begins anew";
}

TEST_F(ModbusWrite, IsRefusedWhileTheLastOneIsGivenUp) {
    be_silent();
    write_one();
    be_right();
    const modbus_state before = modbus;
    EXPECT_EQ(lasting(write_one), 0);
    EXPECT_EQ(status(), refused);
    EXPECT_EQ(frames(), 0U);
    EXPECT_EQ(modbus, before);
}

TEST_F(ModbusWrite, IsRefusedWithoutAConnectionAndStartsTheReconnection) {
    TCP_disconnect();
    const modbus_state before = modbus;
    write_one();
    EXPECT_EQ(status(), refused);
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
    EXPECT_EQ(modbus, before);
    EXPECT_EQ(frames(), 0U);
}

TEST_F(ModbusWrite, ASecondRefusalDoesNotStartThe40SecondsAnew) {
    TCP_disconnect();
    write_one();
    advance(30'000);
    write_one();
    advance(9'999);
    EXPECT_EQ(status(), refused);
    advance(1);
    EXPECT_EQ(status(), connected);
}

TEST_F(ModbusWrite, ATimeOutDoesNotStartThe40SecondsAnew) {
    be_silent();
    write_one();
    ASSERT_EQ(status(), timed_out);
    for (int read = 0; read < 3; ++read) {
        advance(10'000);
        FC3MB_read(0, 1); // goes out although writes are refused
        advance(200);
        ASSERT_EQ(status(), timed_out);
    }
    advance(9'399);
    EXPECT_EQ(status(), timed_out);
    advance(1);
    EXPECT_EQ(status(), auto_reset);
}

TEST_F(ModbusWrite, WhoseSocketBreaksUnderItFailsAndTheNextIsRefused) {
    plant().refuses_data = true;
    modbus.mb_send_done = modbus.mb_read_active = true; // as a read by hand leaves it
    const modbus_state before = modbus;
    EXPECT_THROW(write_one(), failure);
    EXPECT_EQ(modbus, before) << "nothing was sent";
    EXPECT_FALSE(transaction_open());
    EXPECT_FALSE(gateway.Timer1.Enabled());
    write_one();
    EXPECT_EQ(status(), refused);
}

TEST_F(ModbusWrite, WithoutAWordOfTheSocketEndsByItsClockThoughItIsAnswered) {
    plant().handover_ms.reset();
    EXPECT_LE(lasting(write_one), 200);
    EXPECT_EQ(status(), timed_out);
    EXPECT_FALSE(transaction_open());
}

TEST_F(ModbusWrite, IsOpenUntilTheSocketHasHandedItOver) {
    write_one();
    plant().handover_ms = 20;
    bool open = false;
    after(10, [&] {
        simulation::controller_sends(simulation::right_answer(last_frame()));
        open = transaction_open();
    });
    EXPECT_EQ(lasting(write_one), 20);
    EXPECT_TRUE(open) << "though an answer has just stopped the clock";
    EXPECT_EQ(status(), written);
    EXPECT_FALSE(transaction_open());
    EXPECT_EQ(modbus.mb_tick_count, 0);
    advance(1000);
    EXPECT_EQ(status(), written) << "no clock runs on";
}

TEST_F(ModbusWrite, WhoseConnectionBreaksMeanwhileTimesOut) {
    for (const auto event : {simulation::controller_closes, simulation::connection_breaks}) {
        TCP_disconnect();
        connect();
        be_silent();
        after(10, event);
        EXPECT_EQ(lasting(write_one), 101);
        EXPECT_EQ(status(), timed_out);
        be_right();
    }
    EXPECT_TRUE(modbus.tcp_sock_error);
}

TEST_F(ModbusWrite, TheErrorEventIsOnlyRecorded) {
    const status_box before = status();
    simulation::connection_breaks();
    EXPECT_TRUE(modbus.tcp_sock_error);
    EXPECT_EQ(status(), before);
    EXPECT_TRUE(tcp.tcp_connected);
    TCP_connect(1);
    EXPECT_TRUE(modbus.tcp_sock_error) << "never cleared";
}

TEST_F(ModbusWrite, DisconnectedByHandMeanwhileEnds) {
    be_silent();
    after(10, TCP_disconnect);
    EXPECT_EQ(lasting(write_one), 101);
    EXPECT_EQ(gateway.Winsock_A.State(), socket_state::closed);
}

TEST_F(ModbusWrite, ReadsAreTwelveBytesWithTheStartAsItIs) {
    FC3MB_read(65410, 123);
    EXPECT_EQ(numbers(last_frame()), (std::vector<int>{0, 0, 0, 0, 0, 6, 1, 3, 255, 130, 0, 123}));
    EXPECT_TRUE(transaction_open());
    EXPECT_TRUE(modbus.mb_read_active);
    EXPECT_FALSE(modbus.mb_write_active);
    EXPECT_TRUE(modbus.mb_read_pending);
    EXPECT_EQ(numbers({reinterpret_cast<const char*>(modbus.mb_tx.data()), 12}), numbers(last_frame()));
}

TEST_F(ModbusWrite, AReadReturnsAtOnceAndIsSentThoughWritesAreGivenUp) {
    be_silent();
    write_one();
    be_right();
    EXPECT_EQ(lasting([] { FC3MB_read(0, 2); }), 0);
    advance(10);
    EXPECT_EQ(status(), registers_read);
    EXPECT_TRUE(modbus.mb_timed_out);
}

TEST_F(ModbusWrite, AReadWithoutAnswerTimesOutAtThe101stTick) {
    be_silent();
    modbus.mb_tick_count = 50;
    FC3MB_read(0, 2);
    advance(100);
    EXPECT_TRUE(transaction_open());
    advance(1);
    EXPECT_EQ(status(), timed_out);
    EXPECT_FALSE(modbus.mb_read_pending);
    EXPECT_FALSE(transaction_open());
    EXPECT_TRUE(modbus.mb_timed_out);
}

TEST_F(ModbusWrite, AReadOfWhatNoFrameCanSayIsAFailure) {
    EXPECT_THROW(FC3MB_read(-1, 1), failure);
    EXPECT_THROW(FC3MB_read(65536, 1), failure);
    EXPECT_THROW(FC3MB_read(0, -1), failure);
    EXPECT_FALSE(transaction_open());
    TCP_disconnect();
    EXPECT_THROW(FC3MB_read(0, 1), failure) << "its caller tests the state";
    EXPECT_FALSE(transaction_open());
}

} // namespace
} // namespace tyxo::gateway_testing
