// Which block of which channel goes out with which tick.

#include "gateway/gateway_world.h"
#include "link/main_timers.h"

#include <algorithm>

namespace tyxo::gateway_testing {
namespace {

/// What a tick sends: "1000x6", or nothing.
using ticks = std::vector<std::string>;

class SendCycle : public gateway_world {
  protected:
    static std::string one_tick() {
        const std::size_t before = frames();
        advance(mainfrm::timers.Timer_TCP.Interval());
        EXPECT_LE(frames(), before + 1) << "one block a tick";
        return frames() == before ? "" : target(last_frame());
    }
    static ticks some_ticks(int count) {
        ticks result;
        for (int tick = 0; tick < count; ++tick)
            result.push_back(one_tick());
        return result;
    }

    /// A cycle as a list, made without the program's table: the blocks in their order, each for all channels,
    /// an empty tick for what is off. The two differential blocks count as one where they are off.
    static ticks model(bool linear, bool state, bool differential, int channels) {
        ticks cycle;
        const auto block = [&](int offset, int length) {
            for (int channel = 0; channel < channels; ++channel)
                cycle.push_back(std::to_string(1000 + 110 * channel + offset) + "x" + std::to_string(length));
        };
        if (linear) block(0, 6);
        if (!linear) cycle.emplace_back();
        if (state) block(6, 3);
        if (!state) cycle.emplace_back();
        if (differential) {
            block(10, 50);
            block(60, 50);
        } else {
            cycle.emplace_back();
        }
        return cycle;
    }
};

TEST_F(SendCycle, IsThatOfTheModelForAllOptionsAndChannels) {
    connect();
    for (int options = 0; options < 8; ++options) {
        for (i16 channels = 1; channels <= channel_count; ++channels) {
            tcp = {.tcp_connected = true};
            sensor::state.max_sensors = channels;
            automatic(options & 1, (options >> 1) & 1, (options >> 2) & 1);
            const ticks one = model(options & 1, options & 2, options & 4, channels);
            ticks wanted = one;
            wanted.insert(wanted.end(), one.begin(), one.end());
            EXPECT_EQ(some_ticks(static_cast<int>(wanted.size())), wanted) << options << ' ' << channels;
            EXPECT_EQ(tcp.tcp_step, 0);
            EXPECT_EQ(tcp.tcp_channel, 0);
        }
    }
}

TEST_F(SendCycle, WithTheStatusAloneHasItsSteps) {
    connect();
    automatic(0, 1, 0);
    std::vector<int> steps{tcp.tcp_step};
    for (int tick = 0; tick < 6; ++tick) {
        one_tick();
        steps.push_back(tcp.tcp_step);
    }
    EXPECT_EQ(steps, (std::vector<int>{0, 1, 1, 1, 1, 2, 0}));
}

TEST_F(SendCycle, WithoutDifferentialDataNeverEntersTheLastStep) {
    connect();
    automatic(1, 1, 0);
    for (int tick = 0; tick < 40; ++tick) {
        one_tick();
        EXPECT_LT(tcp.tcp_step, 3);
        EXPECT_NE(tcp.tcp_block, 4);
    }
}

TEST_F(SendCycle, SwitchedOffInTheLastStepGoesToTheFirst) {
    connect();
    automatic(1, 1, 1);
    tcp.tcp_step = 3;
    settings.IPpolar = 0;
    EXPECT_EQ(one_tick(), "");
    EXPECT_EQ(tcp.tcp_step, 0);
    EXPECT_EQ(tcp.tcp_block, 4);
}

TEST_F(SendCycle, KeepsTheCodeOfItsBlock) {
    connect();
    sensor::state.max_sensors = 1;
    automatic(1, 1, 1);
    std::vector<int> blocks;
    for (int tick = 0; tick < 4; ++tick) {
        one_tick();
        blocks.push_back(tcp.tcp_block);
    }
    EXPECT_EQ(blocks, (std::vector<int>{1, 8, 3, 4}));
}

TEST_F(SendCycle, OptionsOtherThan1AreOff) {
    connect();
    automatic(2, 2, -1);
    EXPECT_EQ(some_ticks(6), ticks(6));
}

TEST_F(SendCycle, TakesItsTimeByTheRefreshSetting) {
    const struct {
        u8 refresh;
        int interval;
        std::int64_t cycle;
    } rows[] = {{0, 600, 9600}, {1, 450, 7200}, {2, 300, 4800}, {3, 300, 4800}, {7, 300, 4800}};
    for (const auto& row : rows) {
        settings.IPRefresh = row.refresh;
        settings.IPAutoC = 1;
        tcp = {};
        start_gateway();
        EXPECT_EQ(mainfrm::timers.Timer_TCP.Interval(), row.interval);
        automatic(1, 1, 1);
        plant().frames.clear();
        advance(row.interval + row.cycle);
        ASSERT_EQ(frames(), 17U) << int(row.refresh);
        EXPECT_EQ(plant().frames[16].ms - plant().frames[0].ms, row.cycle);
        EXPECT_EQ(target(plant().frames[0].bytes), target(plant().frames[16].bytes));
        TCP_disconnect();
    }
}

TEST_F(SendCycle, ChangesNothingWhileNotConnectedAndGoesOnWhereItStands) {
    connect();
    automatic(1, 1, 1);
    some_ticks(6);
    TCP_disconnect();
    const connection_state before = tcp;
    EXPECT_EQ(some_ticks(5), ticks(5));
    EXPECT_EQ(tcp, before);
    connect();
    EXPECT_EQ(one_tick(), "1226x3");
}

TEST_F(SendCycle, DoesNothingWhileTheAutomaticIsOff) {
    connect();
    automatic(1, 1, 1);
    settings.IPAutoC = 0;
    const int yields = world().do_events_calls;
    EXPECT_EQ(some_ticks(5), ticks(5));
    settings.IPAutoC = 2;
    EXPECT_EQ(some_ticks(5), ticks(5));
    EXPECT_EQ(world().do_events_calls, yields);
    EXPECT_EQ(tcp.tcp_step, 0);
}

TEST_F(SendCycle, YieldsOnceWithEveryTick) {
    connect();
    automatic(1, 0, 0);
    const int before = world().do_events_calls;
    some_ticks(7);
    EXPECT_EQ(world().do_events_calls, before + 7);
}

TEST_F(SendCycle, StartsNothingWhileATransactionIsOpen) {
    connect();
    automatic(1, 1, 1);
    be_silent();
    advance(550);
    FC3MB_read(0, 1);
    const connection_state before = tcp;
    advance(60); // the cycle's tick comes inside the read
    EXPECT_EQ(frames(), 1U);
    EXPECT_EQ(tcp, before);
    EXPECT_TRUE(transaction_open());
}

TEST_F(SendCycle, ATickInsideAWriteByHandStartsNothing) {
    connect();
    automatic(1, 1, 1);
    plant().answers = [](const std::string& frame) { return simulation::answered(frame, 90); };
    advance(550);
    FC16MB_write(5000, 1); // until 640, the tick is due at 600
    EXPECT_EQ(frames(), 1U);
    EXPECT_EQ(tcp.tcp_channel, 0);
    EXPECT_EQ(status(), written);
    advance(600);
    EXPECT_EQ(target(last_frame()), "1000x6");
}

TEST_F(SendCycle, WithFewerChannelsThanItsOwnBeginsTheNextStep) {
    connect();
    automatic(1, 1, 0);
    some_ticks(3);
    sensor::state.max_sensors = 2;
    EXPECT_EQ(one_tick(), "1330x6") << "the tick at work";
    EXPECT_EQ(one_tick(), "1006x3");
}

TEST_F(SendCycle, LeavesOutTheBlockWithAValueOutsideItsRegisterAndSendsAllOthers) {
    connect();
    automatic(1, 1, 0);
    sensor::state.channels[1].speed = 70000;
    const ticks without_it{"1000x6", "", "1220x6", "1330x6", "1006x3", "1116x3", "1226x3", "1336x3", ""};
    EXPECT_EQ(some_ticks(9), without_it);
    EXPECT_EQ(some_ticks(9), without_it) << "in each pass";
    EXPECT_EQ(world().debug, std::vector<std::string>(2, "error: Modbus channel 2 block 1 Overflow"));
    sensor::state.channels[1].speed = 1500;
    EXPECT_EQ(some_ticks(2), (ticks{"1000x6", "1110x6"}));
}

TEST_F(SendCycle, GoesOnBehindALastChannelThatIsLeftOut) {
    connect();
    automatic(1, 1, 1);
    for (channel_rec& rec : sensor::state.channels)
        rec.numzyl = 70000; // in the blocks of the cylinders alone
    ticks cycle = model(true, true, true, 4);
    std::fill(cycle.begin() + 8, cycle.end(), "");
    EXPECT_EQ(some_ticks(16), cycle);
    EXPECT_EQ(some_ticks(1), ticks{"1000x6"});
    EXPECT_EQ(world().debug.size(), 8U);
}

TEST_F(SendCycle, YieldsBehindABlockThatIsLeftOutToo) {
    connect();
    automatic(1, 0, 0);
    sensor::state.channels[0].speed = 70000;
    const int before = world().do_events_calls;
    some_ticks(1);
    EXPECT_EQ(world().do_events_calls, before + 1);
}

TEST_F(SendCycle, GoesOnBehindASocketThatBreaksUnderAFrame) {
    connect();
    automatic(1, 1, 0);
    plant().refuses_data = true;
    EXPECT_EQ(some_ticks(1), ticks{""});
    EXPECT_EQ(tcp.tcp_channel, 1);
    EXPECT_EQ(some_ticks(1), ticks{""});
    EXPECT_EQ(status(), refused);
    EXPECT_TRUE(gateway.Timer_reconnect.Enabled());
}

} // namespace
} // namespace tyxo::gateway_testing
