// Panel and chart, the frames to the controller, the debug output.

#include "told_plant.h"

namespace months::check {
namespace {

class CheckerScreen : public told_plant {
  protected:
    void tick() {
        at(500);
        check.chart_tick();
        shows_tick();
    }
};

TEST_F(CheckerScreen, ATickShowsTheRecord) {
    logging();
    measured();
    tick();
    done();
    fine();
}

TEST_F(CheckerScreen, AChartWithAnotherValueIsWrong) {
    logging();
    measured();
    tick();
    now.channel[0].chart_last[3] = 1234;
    done();
    wrong("curve 3 of its chart's last row should be 617, is 1234");
}

TEST_F(CheckerScreen, ARowThatIsMissingIsWrong) {
    logging();
    measured();
    tick();
    now.channel[0].chart_rows = 0;
    done();
    wrong("the number of rows of its chart should be 1, is 0");
}

TEST_F(CheckerScreen, ARowOfAStoppedChannelIsWrong) {
    logging();
    measured();
    tick();
    now.channel[1].chart_rows = 1;
    done();
    wrong("channel 2: the number of rows");
}

TEST_F(CheckerScreen, ANeedleThatStandsStillIsWrong) {
    logging();
    measured();
    tick();
    now.channel[0].panel_speed = 1470;
    done();
    wrong("its speed gauge should be 1480, is 1470");
}

TEST_F(CheckerScreen, AGaugeOfTheOtherValueIsWrong) {
    logging();
    measured();
    check.setting("th_dig_val 1", "1");
    tick();
    done();
    wrong("its thermo gauge should be 48, is 51");
}

TEST_F(CheckerScreen, AWrongRecordIsWrong) {
    logging();
    check.arrives(0, framed(measured_body));
    told_log(measured_line);
    shows_measured();
    now.channel[0].values[4] = 70;
    done();
    wrong("teff_ac should be 7, is 70");
}

TEST_F(CheckerScreen, ADisplayThatDoesNotTickIsWrong) {
    logging();
    for (int second = 1; second <= 12; ++second) {
        at(1000 * second);
        check.arrives(0, framed(":01\x3f")); // no values, but the line lives
        check.debug_output("mscomm: ");
        done();
    }
    wrong("the display timer has not ticked");
}

TEST_F(CheckerScreen, ATickWithoutAMeasurementIsWrong) {
    begin();
    check.chart_tick();
    wrong("though nothing measures");
}

class CheckerRegisters : public told_plant {
  protected:
    static std::string block(int address, const std::vector<int>& values) {
        const int count = static_cast<int>(values.size());
        std::string frame(13, '\0');
        frame[5] = static_cast<char>(7 + 2 * count);
        frame[6] = 1;
        frame[7] = 16;
        frame[8] = static_cast<char>(address / 256);
        frame[9] = static_cast<char>(address % 256);
        frame[11] = static_cast<char>(count);
        frame[12] = static_cast<char>(2 * count);
        for (const int value : values) {
            frame += static_cast<char>((value >> 8) & 0xff);
            frame += static_cast<char>(value & 0xff);
        }
        return frame;
    }
    /// Of the speeds or thermosignals of six cylinders that are all alike.
    static std::vector<int> cylinders(int channel, int value, int difference) {
        std::vector<int> values(50);
        values[0] = channel;
        values[1] = 6;
        std::fill_n(values.begin() + 2, 6, value);
        std::fill_n(values.begin() + 26, 6, difference);
        return values;
    }
    void sends(std::int64_t ms, const std::string& frame) {
        at(ms);
        check.sent_to_controller(frame);
        done();
    }
    /// Two channels of which the first has been heard completely. The signal of a sample of 579 is 117.6 %.
    void heard() {
        logging();
        measured();
        check.arrives(0, parameters("0003"));
        done();
        check.arrives(0, curve("04", 1000));
        told_log(curve_line("REC3", 1000));
        done();
        check.arrives(0, curve("03", 579));
        told_log(curve_line("REC2", 579));
        done();
    }
    const std::string first = block(1000, {1, 51, 1480, 1234, 48, 7});
};

TEST_F(CheckerRegisters, ACycleOfTwoChannels) {
    heard();
    sends(300, first);
    sends(600, block(1110, {2, 0, 0, 0, 0, 0}));
    sends(900, block(1006, {1, 0, 0}));
    sends(1200, block(1116, {2, 0, 0}));
    sends(1500, block(1010, cylinders(1, 704, 0))); // 60 / (1000 * 256 * 0.000000333)
    sends(1800, block(1120, {2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                             0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    sends(2100, block(1060, cylinders(1, 118, 0)));
    fine();
}

TEST_F(CheckerRegisters, AnOldValueIsWrong) {
    heard();
    sends(300, block(1000, {1, 51, 1479, 1234, 48, 7}));
    wrong("the register at offset 2 should be 1480, is 1479");
}

TEST_F(CheckerRegisters, ACylinderWithAnotherSpeedIsWrong) {
    heard();
    auto values = cylinders(1, 704, 0);
    values[4] = 703;
    sends(300, block(1010, values));
    wrong("the register at offset 14 should be 704, is 703");
}

TEST_F(CheckerRegisters, ASpeedThatDoesNotHeedTheVersionIsWrong) {
    heard();
    status_arrives(0, 0); // of version 2
    done();
    check.arrives(0, curve("04", 1000));
    told_log(curve_line("REC3", 1000));
    done();
    sends(300, block(1010, cylinders(1, 704, 0)));
    wrong("should be 586, is 704"); // 60 / (1000 * 256 * 0.0000004)
}

TEST_F(CheckerRegisters, ADifferenceWithTheWrongSignIsWrong) {
    heard();
    auto values = cylinders(1, 118, 0);
    values[26] = -1;
    sends(300, block(1060, values));
    wrong("should be 0, is 65535");
}

TEST_F(CheckerRegisters, AnotherOrderIsWrong) {
    heard();
    sends(300, first);
    sends(600, block(1006, {1, 0, 0}));
    wrong("should be block 1 of channel 2");
}

TEST_F(CheckerRegisters, ABlockTooSoonIsWrong) {
    heard();
    sends(300, first);
    sends(500, block(1110, {2, 0, 0, 0, 0, 0}));
    wrong("sent 200 ms behind the last one");
}

TEST_F(CheckerRegisters, ABlockMayBeMissingBehindADisturbance) {
    heard();
    sends(300, first);
    check.controller_disturbed();
    sends(600, block(1006, {1, 0, 0}));
    fine();
}

TEST_F(CheckerRegisters, ARegisterThatBelongsToNoBlockIsWrong) {
    heard();
    sends(300, block(1009, {1}));
    wrong("no block begins at the register 1009");
}

TEST_F(CheckerRegisters, AnotherFunctionIsWrong) {
    heard();
    std::string frame = first;
    frame[7] = 6;
    sends(300, frame);
    wrong("not a frame that writes registers");
}

TEST_F(CheckerRegisters, AWrongLengthIsWrong) {
    heard();
    std::string frame = first;
    frame[5] = 18;
    sends(300, frame);
    wrong("its lengths");
}

TEST_F(CheckerRegisters, ABlockThatIsSwitchedOffIsWrong) {
    heard();
    check.setting("IPsysstat", "0");
    sends(300, block(1006, {1, 0, 0}));
    wrong("sent though it is switched off");
}

TEST_F(CheckerRegisters, AChannelThatIsNotConfiguredIsWrong) {
    heard();
    sends(300, block(1220, {3, 0, 0, 0, 0, 0}));
    wrong("a channel that is not configured");
}

using CheckerDebug = told_plant;

TEST_F(CheckerDebug, AMissingLineIsWrong) {
    logging();
    check.arrives(0, ":0100\r\n");
    done();
    wrong("the debug output lacks \"LRC Error\"");
}

TEST_F(CheckerDebug, AnUnknownLineIsWrong) {
    logging();
    check.debug_output("Overflow");
    wrong("should say nothing, says \"Overflow\"");
}

TEST_F(CheckerDebug, AFailureOfADecodingIsToldOnce) {
    logging();
    check.arrives(0, framed(":01") + framed(":01xy"));
    check.debug_output("mscomm: Type mismatch");
    done();
    fine();
}

TEST_F(CheckerDebug, AnAnswerToAWriteIsTold) {
    logging();
    check.arrives(0, framed(":0701") + framed(":0700"));
    check.debug_output("write parameter OK");
    check.debug_output("write parameter Not OK");
    done();
    fine();
}

TEST_F(CheckerDebug, NoMoreThanTwentyComplaintsAreKept) {
    logging();
    for (int i = 0; i < 30; ++i)
        check.debug_output("Overflow");
    EXPECT_EQ(check.complaints().size(), 20U);
}

} // namespace
} // namespace months::check
