// The serial port's events, sending, opening and closing.

#include "link/main_timers.h"
#include "link/serial.h"

#include "basics/failure.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/start_stop.h"
#include "link/supervision.h"

namespace tyxo::link_testing {
namespace {

class SerialPort : public link_world {};

struct event_case {
    i32 event;
    const char* text; ///< empty: no line in the debug output
};

class PortEventOf : public SerialPort, public testing::WithParamInterface<event_case> {};

TEST_P(PortEventOf, GoesToTheDebugOutputAndNowhereElse) {
    open_port(0);
    receive(":01");
    record(0).connected = false;
    simulation::port_event(0, GetParam().event);
    EXPECT_EQ(debug(), *GetParam().text != '\0' ? lines{GetParam().text} : lines{});
    EXPECT_EQ(serial::state.rx_frame[0], ":01"); // the open frame is kept
    EXPECT_TRUE(serial::state.rx_start_seen[0]);
    EXPECT_FALSE(record(0).connected);
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(box(), "");
}

constexpr const char* unknown = "Fehler oder Ereignis unbekannt";

INSTANTIATE_TEST_SUITE_P(
    events, PortEventOf,
    testing::Values(event_case{1, ""}, event_case{3, ""}, event_case{4, ""}, event_case{5, ""},
                    event_case{6, ""}, event_case{7, ""}, event_case{1001, "Break empfangen"},
                    event_case{1007, "CD-Zeit\xFC"
                                     "berschreitung"},
                    event_case{1002, "CTS-Zeit\xFC"
                                     "berschreitung"},
                    event_case{1011, "Fehler bei DCB-Abfrage"},
                    event_case{0, "DSR-Zeit\xFC"
                                  "berschreitung"},
                    event_case{1004, "Frame-Fehler"},
                    event_case{1006, "\xDC"
                                     "berlauffehler"},
                    event_case{1008, "Empfangspuffer\xFC"
                                     "berlauf"},
                    event_case{1009, "Parit\xE4tsfehler"}, event_case{1010, "Sendepuffer voll"},
                    event_case{1003, unknown}, event_case{1005, unknown}, event_case{1012, unknown},
                    event_case{1000, unknown}, event_case{8, unknown}, event_case{-1, unknown},
                    event_case{65536, unknown}),
    [](const auto& info) { return "event_" + std::to_string(static_cast<std::uint32_t>(info.param.event)); });

TEST_F(SerialPort, AnEmptiedSendBufferSwitchesRtsOff) {
    open_port(2);
    serial::state.comm[2].RTSEnable(true);
    simulation::port_event(2, comm_event::send_buffer_low);
    EXPECT_FALSE(simulation::port(2).rts);
}

TEST_F(SerialPort, OtherEventsLeaveRtsAndWaitingBytesAlone) {
    open_port(2);
    serial::state.comm[2].RTSEnable(true);
    for (const i32 event : {0, 3, 4, 5, 6, 7, 1001, 1003})
        simulation::port_event(2, event);
    EXPECT_TRUE(simulation::port(2).rts);
    EXPECT_EQ(serial::state.rx_chunk[2], "");
}

TEST_F(SerialPort, AReadThatFailsIsReportedAndTheNextOneGoesOn) {
    open_port(0);
    simulation::world().ports[11].refuses_input = true;
    receive(":01");
    EXPECT_EQ(debug(), lines{"mscomm: Device unavailable"});
    simulation::world().ports[11].refuses_input = false;
    receive(measured({.speed = 5000}));
    EXPECT_EQ(record(0).speed, 500);
    EXPECT_EQ(debug().size(), 1U);
}

TEST_F(SerialPort, SendsAFrameWithItsCheckAndLineEnd) {
    open_port(1);
    serial::frame_send(":00", 1);
    EXPECT_EQ(simulation::sent(1), ":00a0\r\n");
    EXPECT_EQ(debug(), lines{"TX: :00a0"});
    serial::frame_send(":8009", 1);
    EXPECT_EQ(simulation::sent(1), ":00a0\r\n:80092f\r\n");
    EXPECT_EQ(simulation::sent(0), "");
}

TEST_F(SerialPort, SendsOneBytePerCharacter) {
    open_port(0);
    std::string body = ":";
    for (int byte = 1; byte < 256; ++byte)
        body += static_cast<char>(byte);
    serial::frame_send(body, 0);
    EXPECT_EQ(simulation::sent(0), closed(body));
}

TEST_F(SerialPort, AnOpenPortStaysOpenAfterSending) {
    open_port(0);
    serial::frame_send(":00", 0);
    EXPECT_TRUE(simulation::port(0).open);
    EXPECT_EQ(simulation::port(0).opened, 1);
}

TEST_F(SerialPort, AClosedPortIsOpenForTheTimeOfTheFrame) {
    serial::frame_send(":8009", 3);
    EXPECT_EQ(simulation::sent(3), ":80092f\r\n");
    EXPECT_FALSE(simulation::port(3).open);
    EXPECT_EQ(simulation::port(3).opened, 1);
    EXPECT_EQ(simulation::port(3).number, 14);
    EXPECT_EQ(simulation::port(3).settings, "38400,n,8,1");
    sensor::state.comport[3] = 7; // changed in the setup dialog
    serial::frame_send(":8009", 3);
    EXPECT_EQ(simulation::port(3).number, 7);
}

/// A busy line: the Evaluator's frames come in while the port closes.
void send_while_closing(i16 channel) {
    simulation::world().ports[static_cast<i16>(11 + channel)].arrives_while_closing =
        measured({.speed = 5000}) + status({.alarm = 0x2020});
}

TEST_F(SerialPort, AFrameSentToAStoppedChannelDoesNotBringItBackToLife) {
    start_log_ch(2);
    stop_log_ch(2);
    said.clear();
    send_while_closing(2);
    serial::frame_send(":8009", 2);
    EXPECT_EQ(simulation::sent(2), ":80092f\r\n");
    simulation::advance(10'000);
    EXPECT_EQ(record(2).speed, 0);
    EXPECT_TRUE(record(2).connected);
    EXPECT_FALSE(mainfrm::timers.Timer_timeout[2].Enabled());
    EXPECT_EQ(indicators.StatusBar, "");
    EXPECT_EQ(said, lines{});
}

TEST_F(SerialPort, NothingIsDecodedWhileAPortCloses) {
    for (const bool reopened : {false, true}) {
        open_port(1);
        send_while_closing(1);
        if (reopened) {
            EXPECT_FALSE(serial::port_open(1, 12));
        } else {
            serial::port_close(1);
        }
        EXPECT_EQ(record(1).speed, 0) << reopened;
        EXPECT_FALSE(mainfrm::timers.Timer_timeout[1].Enabled()) << reopened;
    }
    receive(measured({.speed = 6000}), 1); // open again, it hears everything
    EXPECT_EQ(record(1).speed, 600);
}

TEST_F(SerialPort, AnOutputThatFailsIsRaisedToTheCaller) {
    open_port(0);
    simulation::world().ports[11].refuses_output = true;
    EXPECT_THROW(serial::frame_send(":00", 0), failure);
    EXPECT_EQ(debug(), lines{"TX: :00a0"});
    EXPECT_TRUE(simulation::port(0).open);
    EXPECT_EQ(simulation::sent(0), "");
}

TEST_F(SerialPort, APortOpenedForAnOutputThatFailsIsClosedAgain) {
    simulation::world().ports[11].refuses_output = true;
    EXPECT_THROW(serial::frame_send(":00", 0), failure);
    EXPECT_EQ(simulation::port(0).opened, 1);
    EXPECT_FALSE(simulation::port(0).open);
    simulation::world().ports[11].refuses_output = false;
    serial::frame_send(":00", 0);
    EXPECT_EQ(simulation::port(0).opened, 2);
    EXPECT_FALSE(simulation::port(0).open);
}

TEST_F(SerialPort, APortThatDoesNotOpenForSendingIsRaisedToTheCaller) {
    simulation::world().ports[11].refuses_to_open = true;
    EXPECT_THROW(serial::frame_send(":00", 0), failure);
    EXPECT_EQ(debug(), lines{"TX: :00a0"});
    EXPECT_FALSE(simulation::port(0).open);
}

TEST_F(SerialPort, SendingOnAChannelThatDoesNotExistIsAFailure) {
    EXPECT_THROW(serial::frame_send(":00", -1), failure);
    EXPECT_THROW(serial::frame_send(":00", channel_count), failure);
}

TEST_F(SerialPort, OpensWithTheSettingsOfAnEvaluatorLine) {
    EXPECT_FALSE(serial::port_open(2, 5));
    const simulation::port_settings& port = simulation::port(2);
    EXPECT_TRUE(port.open);
    EXPECT_EQ(port.number, 5);
    EXPECT_EQ(port.settings, "38400,n,8,1");
    EXPECT_EQ(port.input_mode, 1);
    EXPECT_FALSE(port.rts);
    EXPECT_EQ(port.r_threshold, 1);
    EXPECT_EQ(port.s_threshold, 1);
    EXPECT_EQ(port.handshaking, 0);
}

TEST_F(SerialPort, AnOpenPortIsClosedAndOpenedAnew) {
    open_port(0);
    EXPECT_FALSE(serial::port_open(0, 9));
    EXPECT_EQ(simulation::port(0).opened, 2);
    EXPECT_EQ(simulation::port(0).number, 9);
}

TEST_F(SerialPort, APortThatIsBusySaysSo) {
    simulation::world().ports[5].refuses_to_open = true;
    EXPECT_TRUE(serial::port_open(0, 5));
    EXPECT_FALSE(simulation::port(0).open);
    EXPECT_EQ(simulation::port(0).handshaking, 0); // the steps behind were tried all the same
    EXPECT_EQ(simulation::port(0).r_threshold, 1);
}

TEST_F(SerialPort, AStepThatFailsBeforeTheOpeningCountsAsFailure) {
    EXPECT_TRUE(serial::port_open(0, 0));
    EXPECT_TRUE(simulation::port(0).open);
}

TEST_F(SerialPort, ClosesWhatIsOpenOnly) {
    open_port(0);
    serial::port_close(0);
    EXPECT_FALSE(simulation::port(0).open);
    serial::port_close(0);
    EXPECT_FALSE(simulation::port(0).open);
    EXPECT_FALSE(simulation::receive(0, ":"));
}

} // namespace
} // namespace tyxo::link_testing
