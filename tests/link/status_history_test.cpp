// Long random histories of the status words, against a plain account of what each run must say.

#include "link/frames.h"
#include "link/link_world.h"

#include <algorithm>
#include <array>
#include <random>

namespace tyxo::link_testing {
namespace {

enum class word { error, alarm, inhibit };

/// A row in the order of the messages: its word and bits, and the comments of its two directions.
struct watched {
    word source;
    i32 mask;
    const char* on;
    const char* off = "";
};

constexpr std::array rows{
    watched{word::error, 0x8000, "Evaluator Memory Overflow"},
    watched{word::error, 0x4000, "Evaluator CRC Error"},
    watched{word::error, 0x2000, "Evaluator Memory Timeout"},
    watched{word::error, 0x1000, "Evaluator Memory Error"},
    watched{word::error, 0x0004, "KVD INCA Error"},
    watched{word::error, 0x0008, "KVD INCB Error"},
    watched{word::error, 0x0010, "KVD SYNC Error"},
    watched{word::error, 0x0020, "KVD TESTSIGNAL Error"},
    watched{word::alarm, 0x2000, "KVD Overspeed Alarm ON", "KVD Overspeed Alarm OFF"},
    watched{word::alarm, 0x0100, "KVD Main error"},
    watched{word::alarm, 0x0002, "KVD Main ALARM DC ON", "KVD Main ALARM DC OFF"},
    watched{word::alarm, 0x0001, "KVD Prealarm DC ON", "KVD Prealarm DC OFF"},
    watched{word::alarm, 0x0008, "KVD Main ALARM AC ON", "KVD Main ALARM AC OFF"},
    watched{word::alarm, 0x0004, "KVD Prealarm AC ON", "KVD Prealarm AC OFF"},
    watched{word::alarm, 0x8000, "KVD Main ALARM ON", "KVD Main ALARM OFF"},
    watched{word::alarm, 0x4000, "KVD Prealarm ON", "KVD Prealarm OFF"},
    watched{word::inhibit, 1, "KVD Alarm Inhibit ON", "KVD Alarm Inhibit OFF"},
};

bool holds(const watched& row, const raw_status& raw) {
    if (row.source == word::inhibit) return raw.inhibit_on == row.mask;
    return ((row.source == word::error ? raw.error : raw.alarm) & row.mask) != 0;
}

class StatusHistory : public link_world {
  protected:
    /// The comments that the step from one status to the next must write.
    static lines comments_between(const raw_status& before, const raw_status& now) {
        lines comments;
        for (const watched& row : rows) {
            if (holds(row, before) == holds(row, now)) continue;
            const std::string text = holds(row, now) ? row.on : row.off;
            if (!text.empty()) comments.push_back("1 " + text);
        }
        return comments;
    }
};

TEST_F(StatusHistory, EveryRunSaysWhatChangedAndNothingElse) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        std::mt19937 random(seed);
        raw_status before;
        dispatch(status(before));
        for (int step = 0; step < 300; ++step) {
            // Words that change a few bits at a time, and sometimes all of them.
            raw_status now = before;
            now.alarm ^= static_cast<i32>(random() & random() & random() & 0xFFFF);
            now.error ^= static_cast<i32>(random() & random() & random() & 0xFFFF);
            now.inhibit_on = static_cast<i32>(random() % 4);
            if (random() % 20 == 0) now = {};
            said.clear();
            dispatch(status(now));
            ASSERT_EQ(told("log_comment"), comments_between(before, now))
                << "seed " << seed << " step " << step;
            ASSERT_EQ(indicators.LED_Alarm[0].Active, (now.alarm & 0x0080) != 0);
            ASSERT_EQ(sensor::state.alert_latched[0], (now.alarm & 0x0080) != 0);
            const bool closes = (now.alarm & ~before.alarm & 0x0080) != 0;
            ASSERT_EQ(told("show_alert_line").size(), closes ? 1U : 0U)
                << "seed " << seed << " step " << step;
            before = now;
        }
    }
}

TEST_F(StatusHistory, TheBoxKeepsEveryLineUntilItIsFullAndItsLastOnesThen) {
    std::string all;
    for (int count = 0; count < 2000; ++count) {
        const bool on = count % 2 == 0;
        dispatch(status({.alarm = on ? 0x8000 : 0}));
        all += std::string(box_clock) + " KVD Engine 1 ## Main Alarm " + (on ? "ON" : "OFF") + "\r\n";
        ASSERT_LE(indicators.Text_status.size(), 60100U);
        ASSERT_TRUE(all.ends_with(box()));
        ASSERT_GE(indicators.Text_status.size(), std::min<std::size_t>(all.size(), 60000));
    }
    EXPECT_EQ(indicators.Text_status.appended(), all.size());
    EXPECT_GT(indicators.Text_status.dropped(), 0U);
}

} // namespace
} // namespace tyxo::link_testing
