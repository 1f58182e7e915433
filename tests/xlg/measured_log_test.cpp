// A log as a history: its times, rows, curves and marks, also while it is written.

#include "xlg/history/measured_log.h"

#include "basics/failure.h"
#include "xlg/history/time_line.h"
#include "xlg/log_texts.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace tyxo::xlg {
namespace {

constexpr log_seconds midnight = 1'782'950'400; // 2026-07-02

constexpr log_seconds at(int hour, int minute, int second) {
    return midnight + 3600 * hour + 60 * minute + second;
}

/// A folder for logs that goes with the test.
class MeasuredLog : public testing::Test {
  protected:
    MeasuredLog() { std::filesystem::create_directories(folder_); }
    ~MeasuredLog() override { std::filesystem::remove_all(folder_); }

    std::string write(const std::string& text, const std::string& name = "20260702Qu_Engine 1.xlg") {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return (folder_ / name).string();
    }
    static void append(const std::string& file, const std::string& text) {
        std::ofstream(file, std::ios::binary | std::ios::app) << text;
    }
    [[nodiscard]] std::filesystem::path folder() const { return folder_; }

  private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() / ("measured_log." + std::to_string(getpid()));
};

std::string record(const std::string& time, int tsig = 51) {
    return "<REC1> " + time + " " + std::to_string(tsig) + " 1480 1234 48 7 </REC1>";
}

std::string curve(const std::string& tag, const std::string& time, int first) {
    return changed(curve_line(tag, first), "13:05:09", time);
}

TEST_F(MeasuredLog, RecordsOfOneSecondAreSpreadOverIt) {
    measured_log log(write(log_of({record("13:05:09", 1), record("13:05:09", 2), record("13:05:10", 3)})));
    EXPECT_TRUE(log.read_on());
    const auto rows = log.rows(at(13, 5, 0), at(13, 5, 59));
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0], (measured_row{at(13, 5, 9) * 1000, {1, 1480, 1234, 48, 7}}));
    EXPECT_EQ(rows[1].ms, at(13, 5, 9) * 1000 + 500);
    EXPECT_EQ(rows[2].ms, at(13, 5, 10) * 1000);
    EXPECT_EQ(log.rows(at(13, 5, 10), at(13, 5, 10)).size(), 1U);
    EXPECT_EQ(log.first(), at(13, 5, 9));
    EXPECT_EQ(log.last(), at(13, 5, 10));
}

TEST_F(MeasuredLog, EachMinuteIsFoundAgain) {
    std::vector<std::string> lines;
    for (int minute = 0; minute < 60; ++minute)
        for (const char* second : {":00", ":59"})
            lines.push_back(record(
                "13:" + std::string(minute < 10 ? "0" : "") + std::to_string(minute) + second, minute));
    measured_log log(write(log_of(lines)));
    log.read_on();
    const auto rows = log.rows(at(13, 20, 30), at(13, 22, 0));
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].ms, at(13, 20, 59) * 1000);
    EXPECT_EQ(rows[0].values[0], 20);
    EXPECT_EQ(rows[3].ms, at(13, 22, 0) * 1000);
    EXPECT_EQ(rows[3].values[0], 22);
}

TEST_F(MeasuredLog, TheCycleOfATimeIsTheLastOneOfEachKind) {
    measured_log log(
        write(log_of({record("13:00:00"), curve("REC2", "13:00:05", 100), curve("REC3", "13:00:07", 200),
                      record("13:30:00"), curve("REC2", "13:30:05", 300), record("13:31:00")})));
    log.read_on();
    const logged_cycle none = log.cycle_at(at(13, 0, 4));
    EXPECT_FALSE(none.thermo || none.angacc);
    const logged_cycle later = log.cycle_at(at(13, 31, 0));
    ASSERT_TRUE(later.thermo && later.angacc);
    EXPECT_EQ(later.thermo->time, at(13, 30, 5));
    EXPECT_EQ(later.thermo->samples[255], 555);
    EXPECT_EQ(later.angacc->time, at(13, 0, 7));
    EXPECT_EQ(later.angacc->samples[0], 200);
    EXPECT_EQ(log.cycle_at(at(13, 30, 4)).thermo->samples[0], 100);
    EXPECT_EQ(log.next_curve(at(13, 0, 0)), at(13, 0, 5));
    EXPECT_EQ(log.next_curve(at(13, 0, 7)), at(13, 30, 5));
    EXPECT_EQ(log.previous_curve(at(13, 30, 5)), at(13, 0, 7));
    EXPECT_FALSE(log.next_curve(at(13, 30, 5)));
    EXPECT_FALSE(log.previous_curve(at(13, 0, 5)));
}

TEST_F(MeasuredLog, CommentsAreMarksAndAlarmsAreTold) {
    measured_log log(
        write(log_of({"<!-- 13:05:10 KVD Main ALARM DC ON -->", "<#-- 13:05:12 Testsignal1 ON -->"})));
    log.read_on();
    ASSERT_EQ(log.marks().size(), 2U);
    EXPECT_EQ(log.marks()[0], (log_mark{at(13, 5, 10), "KVD Main ALARM DC ON", true}));
    EXPECT_EQ(log.marks()[1], (log_mark{at(13, 5, 12), "Testsignal1 ON", false}));
}

TEST_F(MeasuredLog, ALineThatIsBeingWrittenWaitsUntilItIsWhole) {
    const std::string file = write(log_of({record("13:05:09", 1)}) + "<REC1> 13:05:10 2 14");
    measured_log log(file);
    EXPECT_TRUE(log.read_on());
    EXPECT_FALSE(log.read_on());
    EXPECT_EQ(log.rows(0, at(23, 0, 0)).size(), 1U);
    append(file, "80 1234 48 7 </REC1>\r\n" + record("13:06:11", 3) + "\r");
    EXPECT_TRUE(log.read_on());
    EXPECT_EQ(log.rows(0, at(23, 0, 0)).size(), 2U);
    append(file, "\n");
    EXPECT_TRUE(log.read_on());
    const auto rows = log.rows(0, at(23, 0, 0));
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1].values[0], 2);
    EXPECT_EQ(rows[2].ms, at(13, 6, 11) * 1000);
    EXPECT_EQ(log.left_out(), 0);
}

TEST_F(MeasuredLog, ALogThatBecameShorterIsReadAnew) {
    const std::string file = write(log_of({record("13:05:09", 1), record("13:05:10", 2)}));
    measured_log log(file);
    log.read_on();
    write(log_of({record("14:00:00", 9)}));
    EXPECT_TRUE(log.read_on());
    const auto rows = log.rows(0, at(23, 0, 0));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].values[0], 9);
    EXPECT_EQ(log.first(), at(14, 0, 0));
}

TEST_F(MeasuredLog, GoesOnBehindMidnightAndBackWithTheClock) {
    measured_log log(write(log_of({record("23:59:58", 1), record("00:00:03", 2), record("00:00:01", 3)})));
    log.read_on();
    const auto rows = log.rows(0, at(48, 0, 0));
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1], (measured_row{at(24, 0, 1) * 1000, {3, 1480, 1234, 48, 7}}));
    EXPECT_EQ(rows[2].ms, at(24, 0, 3) * 1000);
}

TEST_F(MeasuredLog, DamagedLinesAreLeftOut) {
    measured_log log(write(log_of({record("13:05:09"), "<REC1> 13:05:10 99999 1 1 1 1 </REC1>", "rubbish",
                                   "<REC1> 13:05:1", record("13:05:11")})));
    log.read_on();
    EXPECT_EQ(log.rows(0, at(23, 0, 0)).size(), 2U);
    EXPECT_EQ(log.left_out(), 3);
}

/// Each pair of these lines would be a day more.
TEST_F(MeasuredLog, TimesThatNoLogHasAreLeftOutAndCostNoMemory) {
    std::vector<std::string> lines;
    for (int day = 0; day < 1000; ++day) {
        lines.push_back(record("23:00:00"));
        lines.push_back(record("01:00:00"));
    }
    measured_log log(write(log_of(lines)));
    log.read_on();
    EXPECT_LE(log.last() - log.first(), measured_log::longest);
    EXPECT_GT(log.left_out(), 1900);
    EXPECT_EQ(log.rows(0, at(1000, 0, 0)).size(), 2000U - static_cast<std::size_t>(log.left_out()));
}

/// Logs with damage anywhere, written in pieces of any length: what is read piece by piece is what is read at
/// once, and no sound record is missing.
TEST_F(MeasuredLog, PieceByPieceIsTheSameAsAtOnce) {
    std::mt19937 chance(7);
    const auto below = [&chance](std::size_t limit) { return static_cast<std::size_t>(chance() % limit); };
    for (int round = 0; round < 60; ++round) {
        std::vector<std::string> lines;
        for (int second = 0; second < 300; ++second) {
            const std::string time = std::string("13:0") + std::to_string(second / 60) + ":" +
                                     std::to_string(second % 60 / 10) + std::to_string(second % 10);
            lines.push_back(record(time, second));
            if (second % 50 == 0) lines.push_back("<!-- " + time + " KVD Prealarm ON -->");
        }
        std::string text = log_of(lines);
        for (int damage = 0; damage < round; ++damage) {
            if (below(2) == 0)
                text.erase(below(text.size()), below(60));
            else
                text[below(text.size())] = static_cast<char>(chance());
        }
        text += "\n";
        measured_log at_once(write(text, "20260702Qu_Engine 1.xlg"));
        at_once.read_on();
        const std::string growing = write("", "20260702Qu_Engine 2.xlg");
        measured_log piece_by_piece(growing);
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t length = 1 + below(3000);
            append(growing, text.substr(begin, length));
            piece_by_piece.read_on();
            begin += length;
        }
        const auto rows = at_once.rows(0, at(300, 0, 0));
        EXPECT_EQ(piece_by_piece.rows(0, at(300, 0, 0)), rows);
        EXPECT_TRUE(std::ranges::equal(piece_by_piece.marks(), at_once.marks()));
        std::size_t sound = 0;
        log_reader reader(source_of(text));
        for (entry one; reader.next(one);)
            if (one.form == &record_forms()[0] && one.sound() && one.seconds >= 0) ++sound;
        EXPECT_LE(rows.size(), sound);
        EXPECT_GE(rows.size() + static_cast<std::size_t>(at_once.left_out()), sound);
        EXPECT_GT(rows.size(), 100U) << "round " << round;
    }
}

TEST_F(MeasuredLog, WhatCannotBeReadIsAFailure) {
    measured_log nowhere((folder() / "gone.xlg").string());
    EXPECT_THROW(nowhere.read_on(), failure);
    measured_log a_folder(folder().string());
    EXPECT_THROW(a_folder.read_on(), failure);
    const std::string file = write(log_of({record("13:05:09", 1)}));
    measured_log log(file);
    log.read_on();
    std::filesystem::remove(file);
    EXPECT_THROW(static_cast<void>(log.rows(0, at(23, 0, 0))), failure);
    EXPECT_TRUE(log.any()) << "what was read stays";
}

TEST_F(MeasuredLog, LogsOfAnEngineAreOneLineOfTime) {
    time_line line("Engine 1");
    const auto add = [&](const std::string& name, const std::vector<std::string>& lines) {
        auto log = std::make_shared<measured_log>(write(log_of(lines), name));
        log->read_on();
        line.add(std::move(log));
    };
    EXPECT_FALSE(line.any());
    EXPECT_EQ(line.log_at(0), nullptr);
    add("20260703Qu_Engine 1.xlg",
        {"<!-- 00:00:01 Log Started -->", record("00:00:05", 3), curve("REC3", "00:10:00", 200)});
    add("20260702Qu_Engine 1.xlg",
        {record("23:00:00", 1), curve("REC2", "23:10:00", 100), "<!-- 23:59:00 KVD Prealarm ON -->",
         "<!-- 00:00:02 Measure Stopped -->"});
    EXPECT_EQ(line.first(), at(23, 0, 0));
    EXPECT_EQ(line.last(), at(24, 10, 0));
    EXPECT_EQ(line.rows(at(22, 0, 0), at(25, 0, 0)).size(), 2U);
    const logged_cycle cycle = line.cycle_at(at(25, 0, 0));
    EXPECT_EQ(cycle.thermo->time, at(23, 10, 0));
    EXPECT_EQ(cycle.angacc->time, at(24, 10, 0));
    EXPECT_EQ(line.next_curve(at(23, 10, 0)), at(24, 10, 0));
    EXPECT_EQ(line.previous_curve(at(24, 10, 0)), at(23, 10, 0));
    ASSERT_EQ(line.marks().size(), 3U);
    EXPECT_EQ(line.marks()[1].time, at(24, 0, 1));
    EXPECT_EQ(line.marks()[2].time, at(24, 0, 2));
    EXPECT_TRUE(line.log_at(at(23, 30, 0))->name().ends_with("20260702Qu_Engine 1.xlg"));
    EXPECT_TRUE(line.log_at(at(24, 30, 0))->name().ends_with("20260703Qu_Engine 1.xlg"));
    append(line.logs()[0]->name(), "<!-- 00:00:03 The End -->\r\n");
    EXPECT_TRUE(line.read_on()) << "a log gets its last line when the next one has begun";
    EXPECT_EQ(line.marks().size(), 4U);
    EXPECT_FALSE(line.read_on());
    int steps = 0;
    line.each_step(16, at(22, 0, 0), at(25, 0, 0), [&](log_seconds, log_seconds length, const extremes&) {
        EXPECT_EQ(length, 16);
        ++steps;
    });
    EXPECT_EQ(steps, 2);
}

} // namespace
} // namespace tyxo::xlg
