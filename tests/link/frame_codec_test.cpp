// Received characters become frames.

#include "link/frames.h"
#include "link/link_world.h"

#include <algorithm>
#include <random>

namespace tyxo::link_testing {
namespace {

class FrameCodec : public link_world {
  protected:
    FrameCodec() { open_port(0); }

    static void speed_is(i32 rpm) { EXPECT_EQ(record(0).speed, rpm); }
    static std::string speed_frame(i32 rpm) { return measured({.speed = 10 * rpm}); }
};

TEST_F(FrameCodec, AFrameInOneEvent) {
    receive(speed_frame(1500));
    speed_is(1500);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, AFrameSplitOverEventsAtAnyPlaceIsOneFrame) {
    const std::string frame = speed_frame(1500);
    for (std::size_t cut = 1; cut < frame.size(); ++cut) {
        record(0).speed = 0;
        said.clear();
        receive(frame.substr(0, cut));
        speed_is(0);
        receive(frame.substr(cut));
        speed_is(1500);
        EXPECT_EQ(told("log_record"), lines{"1 1"}) << cut;
    }
}

TEST_F(FrameCodec, AFrameByteByByte) {
    for (const char letter : speed_frame(900))
        receive(std::string(1, letter));
    speed_is(900);
    EXPECT_EQ(told("log_record"), lines{"1 1"});
}

TEST_F(FrameCodec, SeveralFramesInOneEventAreHandledInOrder) {
    receive(speed_frame(1) + speed_frame(2) + status({.alarm = 0x20}) + speed_frame(3));
    speed_is(3);
    EXPECT_EQ(told("log_record").size(), 3U);
    EXPECT_TRUE(record(0).status_valid);
}

TEST_F(FrameCodec, AColonInsideAFrameStartsAnewWithoutAMessage) {
    receive(speed_frame(7).substr(0, 20) + speed_frame(8));
    speed_is(8);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, AFrameWithoutItsLineFeedIsLostToTheNext) {
    const std::string lost = speed_frame(7);
    receive(lost.substr(0, lost.size() - 1) + speed_frame(8));
    speed_is(8);
    EXPECT_EQ(told("log_record").size(), 1U);
}

TEST_F(FrameCodec, AColonDisarmsTheLineFeed) {
    receive(":01\r:");
    receive("\n");
    EXPECT_TRUE(serial::state.rx_start_seen[0]);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, ALineFeedWithoutCarriageReturnIsDropped) {
    std::string frame = speed_frame(1200);
    frame.insert(10, "\n");
    receive(frame);
    speed_is(1200);
}

TEST_F(FrameCodec, ACarriageReturnInTheMiddleIsNotStored) {
    std::string frame = speed_frame(1200);
    frame.insert(10, "\r");
    receive(frame);
    speed_is(1200);
}

TEST_F(FrameCodec, CharactersBetweenCarriageReturnAndLineFeedAreStored) {
    const std::string frame = speed_frame(1200);
    receive(frame.substr(0, frame.size() - 4) + '\r' + frame.substr(frame.size() - 4, 2) + '\n');
    speed_is(1200);
}

TEST_F(FrameCodec, GarbageBeforeTheColonIsDropped) {
    receive("01abc\r\n\xFF\x01" + speed_frame(1100));
    speed_is(1100);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, WithoutAColonTheFrameStaysEmpty) {
    receive("no frame\r\nat all\r\n");
    EXPECT_EQ(serial::state.rx_frame[0], "");
    EXPECT_FALSE(serial::state.rx_start_seen[0]);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, ACompletedFrameIsKeptWithItsLineEnd) {
    receive(":00a0\r\nxx");
    EXPECT_EQ(serial::state.rx_frame[0], ":00a0\r\n");
    EXPECT_EQ(serial::state.rx_chunk[0], ":00a0\r\nxx");
    EXPECT_FALSE(serial::state.rx_start_seen[0]);
    EXPECT_FALSE(serial::state.rx_cr_seen[0]);
}

TEST_F(FrameCodec, AWrongCheckLeavesOneLineAndChangesNothing) {
    indicators.StatusBar = "Sensor 2 not connected";
    std::string frame = speed_frame(1200);
    frame[frame.size() - 3] ^= 1;
    receive(frame);
    speed_is(0);
    EXPECT_EQ(debug(), lines{"LRC Error"});
    EXPECT_EQ(indicators.StatusBar, "Sensor 2 not connected");
    EXPECT_TRUE(said.empty());
}

TEST_F(FrameCodec, AnUpperCaseCheckIsWrong) {
    receive(":02A0\r\n");
    receive(":00A0\r\n");
    EXPECT_EQ(debug(), (lines{"LRC Error", "LRC Error"}));
}

TEST_F(FrameCodec, ACodeThatNobodyHandlesPassesTheCheckAndIsIgnored) {
    indicators.StatusBar = "Sensor 2 not connected";
    receive(closed(":5512345678"));
    EXPECT_TRUE(debug().empty());
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(indicators.StatusBar, "");
}

TEST_F(FrameCodec, ChannelsDoNotMixTheirCharacters) {
    const std::string frame = speed_frame(1500);
    receive(frame.substr(0, 11), 0);
    receive(frame.substr(0, 15), 3);
    receive(frame.substr(11), 0);
    EXPECT_EQ(record(0).speed, 1500);
    EXPECT_EQ(record(3).speed, 0);
    receive(frame.substr(15), 3);
    EXPECT_EQ(record(3).speed, 1500);
}

TEST_F(FrameCodec, TenMegabytesWithoutALineEndAreGivenUpByTheNextColon) {
    receive(":01");
    const std::string piece(std::size_t{1} << 20, '7');
    for (int count = 0; count < 10; ++count)
        receive(piece);
    EXPECT_EQ(serial::state.rx_frame[0].size(), 10 * piece.size() + 3);
    receive(speed_frame(1000));
    speed_is(1000);
    EXPECT_TRUE(debug().empty());
}

TEST_F(FrameCodec, AFailingFrameDoesNotTakeTheRestOfTheEvent) {
    receive(closed(":01XXXX") + speed_frame(600));
    speed_is(600);
    EXPECT_EQ(debug(), lines{"mscomm: Type mismatch"});
}

TEST_F(FrameCodec, SeveralFailuresOfOneEventLeaveOneLine) {
    receive(closed(":01XXXX") + closed(":01YYYY") + closed(":0612"));
    EXPECT_EQ(debug(), lines{"mscomm: Type mismatch"});
}

/// The codec by another rule: everything since the last ":", looked at anew after each character.
class codec_model {
  public:
    void take(char letter) {
        if (letter == ':') {
            since_colon_ = ":";
            open_ = true;
            frame_ = ":";
            return;
        }
        if (!open_) return;
        since_colon_ += letter;
        frame_.clear();
        for (const char one : since_colon_) {
            if (one != '\r' && one != '\n') frame_ += one;
        }
        const bool armed = since_colon_.find('\r') != std::string::npos;
        if (letter != '\n' || !armed) return;
        open_ = false;
        since_colon_.clear();
        if (frame_.size() < 3 || !frame_.ends_with(check_of(frame_.substr(0, frame_.size() - 2))))
            ++wrong_checks_;
        frame_ += "\r\n";
    }
    void expect_same() const {
        ASSERT_EQ(serial::state.rx_frame[0], frame_);
        ASSERT_EQ(serial::state.rx_start_seen[0], open_);
        ASSERT_EQ(serial::state.rx_cr_seen[0], open_ && since_colon_.find('\r') != std::string::npos);
        ASSERT_EQ(std::ranges::count(simulation::world().debug, "LRC Error"), wrong_checks_);
    }

  private:
    std::string since_colon_;
    std::string frame_;
    bool open_ = false;
    std::ptrdiff_t wrong_checks_ = 0;
};

TEST_F(FrameCodec, EveryByteInEveryStateGoesAsTheRulesSay) {
    codec_model model;
    const auto take = [&](std::string_view bytes) {
        for (const char letter : bytes)
            model.take(letter);
        receive(bytes);
        model.expect_same();
    };
    const std::vector<std::string> ways_into_a_state{"\r\n:\r\n", ":",     ":x",       ":x\r",
                                                     ":\r",       ":x\ry", ":00a0\r\n"};
    for (const std::string& way : ways_into_a_state) {
        for (int byte = 0; byte < 256; ++byte) {
            ASSERT_NO_FATAL_FAILURE(take(way)) << testing::PrintToString(way) << ' ' << byte;
            ASSERT_NO_FATAL_FAILURE(take(std::string(1, static_cast<char>(byte)))) << way << ' ' << byte;
            ASSERT_NO_FATAL_FAILURE(take("\n")) << way << ' ' << byte;
        }
    }
}

TEST_F(FrameCodec, RandomStreamsGoAsTheRulesSay) {
    const std::string frequent = ":\r\n0a";
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        codec_model model;
        simulation::world().debug.clear();
        serial::state.rx_frame[0].clear();
        serial::state.rx_start_seen[0] = serial::state.rx_cr_seen[0] = false;
        for (int step = 0; step < 1500; ++step) {
            const auto draw = random();
            const char letter = draw % 3 != 0 ? frequent[(draw >> 8) % frequent.size()]
                                              : static_cast<char>((draw >> 8) % 256);
            model.take(letter);
            receive(std::string(1, letter));
            ASSERT_NO_FATAL_FAILURE(model.expect_same()) << "seed " << seed << " step " << step;
        }
    }
}

} // namespace
} // namespace tyxo::link_testing
