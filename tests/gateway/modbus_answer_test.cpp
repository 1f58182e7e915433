// Answers, right and wrong ones, and what comes unasked.

#include "gateway/gateway_world.h"

#include <algorithm>

namespace tyxo::gateway_testing {
namespace {

class ModbusAnswer : public gateway_world {
  protected:
    ModbusAnswer() { connect(); }

    static const std::string right;

    /// Writes a register, then tells what the box shows.
    static status_box after_writing() {
        write_one();
        return status();
    }
    static void read(int count, const std::string& answer) {
        answer_with(answer);
        FC3MB_read(0, static_cast<i16>(count));
        advance(10);
    }
    static std::size_t stars() {
        return static_cast<std::size_t>(
            std::count(FrmSetupTCP::state.Text4.begin(), FrmSetupTCP::state.Text4.end(), "*****"));
    }
};

const std::string ModbusAnswer::right = bytes_of({0, 0, 0, 0, 0, 6, 1, 16, 7, 208, 0, 1});

TEST_F(ModbusAnswer, AReadOfTenRegistersFillsTenBoxesAndStarsTheOthers) {
    read(10, read_answer(20, bytes_of({0,   1,   0,   255, 1, 0, 127, 255, 128, 0,
                                       255, 255, 255, 254, 0, 0, 39,  16,  0,   9})));
    const std::vector<std::string> shown(FrmSetupTCP::state.Text4.begin(),
                                         FrmSetupTCP::state.Text4.begin() + 11);
    EXPECT_EQ(shown, (std::vector<std::string>{"1", "255", "256", "32767", "32768", "65535", "65534", "0",
                                               "10000", "9", "*****"}));
    EXPECT_EQ(stars(), 113U);
    EXPECT_EQ(box(122), "*****");
    EXPECT_EQ(status(), registers_read);
    EXPECT_FALSE(transaction_open());
    EXPECT_FALSE(modbus.mb_read_pending);
    EXPECT_EQ(modbus.mb_tick_count, 0);
}

TEST_F(ModbusAnswer, AReadOf123RegistersIs255BytesAndFillsAllBoxes) {
    const std::string answer = read_answer(246, std::string(246, '\1'));
    ASSERT_EQ(answer.size(), 255U);
    read(123, answer);
    EXPECT_EQ(status(), registers_read);
    EXPECT_EQ(stars(), 0U);
    EXPECT_EQ(box(122), "257");
}

TEST_F(ModbusAnswer, AnExceptionToAReadIsTakenByItsCode) {
    read(10, bytes_of({0, 0, 0, 0, 0, 3, 1, 131, 2}));
    EXPECT_EQ(status(), registers_read);
    EXPECT_EQ(box(0), "0") << "bytes that no answer has brought yet";
    EXPECT_EQ(stars(), 122U);
    EXPECT_FALSE(transaction_open());
}

TEST_F(ModbusAnswer, OfNoRegistersStarsAllBoxes) {
    read(10, read_answer(0, ""));
    EXPECT_EQ(stars(), 123U);
    EXPECT_EQ(status(), registers_read);
}

TEST_F(ModbusAnswer, ThatIsShorterThanItsCountShowsWhatEarlierOnesLeft) {
    read(3, read_answer(6, bytes_of({1, 1, 2, 2, 3, 3})));
    read(3, read_answer(6, bytes_of({9, 9})));
    EXPECT_EQ(box(0), "2313");
    EXPECT_EQ(box(1), "514");
    EXPECT_EQ(box(2), "771");
}

TEST_F(ModbusAnswer, WhoseCountRunsPastTheArrayFailsAndTimesOut) {
    for (const int count : {247, 248, 255}) {
        TCP_disconnect();
        connect();
        world().debug.clear();
        read(123, read_answer(count, bytes_of({4, 4})));
        EXPECT_EQ(world().debug, std::vector<std::string>{"Subscript out of range"}) << count;
        EXPECT_EQ(box(0), "1028");
        EXPECT_TRUE(transaction_open());
        advance(101);
        EXPECT_EQ(status(), timed_out);
    }
}

TEST_F(ModbusAnswer, WithAnotherFunctionToAWriteIsReportedAndTimesOut) {
    for (const int function : {144, 3, 0, 17, 255}) {
        TCP_disconnect();
        connect();
        std::string answer = right;
        answer[7] = static_cast<char>(function);
        answer_with(answer);
        after(20, [] {
            EXPECT_EQ(status(), wrong_answer);
            EXPECT_TRUE(transaction_open());
        });
        EXPECT_EQ(lasting(write_one), 101) << function;
        EXPECT_EQ(status(), timed_out) << function;
        EXPECT_TRUE(modbus.mb_timed_out);
    }
}

TEST_F(ModbusAnswer, OnlyItsFunctionIsLookedAt) {
    const std::size_t other_bytes[] = {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11};
    for (const std::size_t index : other_bytes) {
        std::string answer = right;
        answer[index] = '\x5A';
        answer_with(answer);
        EXPECT_EQ(after_writing(), written) << index;
    }
}

TEST_F(ModbusAnswer, InPiecesOf5And7BytesTimesOutAtFirstAndIsTakenBehindAGoodOne) {
    const reply pieces{{{2, right.substr(0, 5)}, {2, right.substr(5)}}, false};
    answer_with(pieces);
    EXPECT_EQ(after_writing(), timed_out);
    TCP_disconnect();
    connect();
    be_right();
    EXPECT_EQ(after_writing(), written);
    answer_with(pieces);
    EXPECT_EQ(lasting(write_one), 2) << "the first piece finds the function of the good answer";
    EXPECT_EQ(status(), written);
}

TEST_F(ModbusAnswer, ByteByByteTimesOutAtFirst) {
    reply bytes;
    for (const char byte : right)
        bytes.pieces.push_back({1, std::string(1, byte)});
    answer_with(bytes);
    EXPECT_EQ(after_writing(), timed_out);
}

TEST_F(ModbusAnswer, ThatIsEmptyIsNone) {
    answer_with(std::string());
    EXPECT_EQ(lasting(write_one), 101);
    EXPECT_EQ(status(), timed_out);
    modbus.mb_timed_out = false;
    FrmSetupTCP::Winsock_A_DataArrival(0);
    EXPECT_EQ(status(), wrong_answer) << "an event without bytes looks at the ones before";
}

TEST_F(ModbusAnswer, Of255BytesIsTakenAndOf256IsAFailureBehindTheFilling) {
    answer_with(right + std::string(243, 'x'));
    EXPECT_EQ(after_writing(), written);
    EXPECT_EQ(modbus.mb_rx[255], 'x');
    answer_with(right + std::string(244, 'y'));
    EXPECT_EQ(lasting(write_one), 101);
    EXPECT_EQ(status(), timed_out);
    EXPECT_EQ(modbus.mb_rx[255], 'y');
    EXPECT_EQ(modbus.mb_rx[0], 0) << "never used";
    EXPECT_EQ(world().debug.back(), "Subscript out of range");
}

TEST_F(ModbusAnswer, Of64KilobytesTimesOutAndTheNextConnectionIsAsGoodAsNew) {
    answer_with(right + std::string(65'524, 'z'));
    EXPECT_EQ(after_writing(), timed_out);
    TCP_disconnect();
    connect();
    be_right();
    EXPECT_EQ(after_writing(), written);
}

TEST_F(ModbusAnswer, OfGarbageChangesNothingButTheBoxAndTheClocks) {
    answer_with("HTTP/1.1 400 Bad Request\r\n\r\n");
    EXPECT_EQ(after_writing(), timed_out);
}

TEST_F(ModbusAnswer, ThatClosesTheConnectionBehindItIsTaken) {
    answer_with(reply{{{5, right}}, true});
    EXPECT_EQ(after_writing(), written);
    advance(1);
    EXPECT_EQ(after_writing(), refused);
}

TEST_F(ModbusAnswer, UnaskedBeforeAnyTransactionIsDropped) {
    const FrmSetupTCP::window before = FrmSetupTCP::state;
    simulation::controller_sends(right);
    EXPECT_EQ(FrmSetupTCP::state, before);
    EXPECT_EQ(modbus.mb_rx[8], 16);
}

TEST_F(ModbusAnswer, UnaskedBehindAWriteIsTakenForOne) {
    write_one();
    FrmSetupTCP::show_tcp_status("", 0);
    simulation::controller_sends(right);
    EXPECT_EQ(status(), written);
    EXPECT_FALSE(transaction_open());
}

TEST_F(ModbusAnswer, TooLateForItsWriteIsTakenForTheNext) {
    be_silent();
    after(50, [] { simulation::controller_sends(right); });
    EXPECT_EQ(lasting(write_one), 50);
    EXPECT_EQ(status(), written);
}

TEST_F(ModbusAnswer, TooLateLeavesTheWritesRefused) {
    answer_with(reply{{{150, right}}, false});
    EXPECT_EQ(after_writing(), timed_out);
    advance(100);
    EXPECT_EQ(status(), written);
    EXPECT_TRUE(modbus.mb_timed_out);
    EXPECT_EQ(after_writing(), refused);
}

TEST_F(ModbusAnswer, ToAReadDoesNotEndAWriteAndTheOtherWayRound) {
    read(1, read_answer(2, bytes_of({0, 5})));
    EXPECT_EQ(box(0), "5");
    answer_with(read_answer(2, bytes_of({0, 6})));
    EXPECT_EQ(after_writing(), timed_out);
    EXPECT_EQ(box(0), "5");
}

} // namespace
} // namespace tyxo::gateway_testing
