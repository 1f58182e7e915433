// Frames and ports at the borders of what the link takes.

#include "basics/failure.h"
#include "link/frames.h"
#include "link/hex.h"
#include "link/link_world.h"
#include "link/parameter_frame.h"

namespace tyxo::link_testing {
namespace {

class FrameBorders : public link_world {};

TEST_F(FrameBorders, AChannelThatDoesNotExistFailsWhateverArrives) {
    for (const std::string& frame : {std::string(), std::string("no frame"), std::string(":08zz\r\n")}) {
        EXPECT_THROW(dispatch(frame, channel_count), failure) << frame;
        EXPECT_THROW(dispatch(frame, -1), failure) << frame;
    }
    EXPECT_EQ(debug(), lines{});
}

TEST_F(FrameBorders, ACheckWithoutAFrameIsNone) {
    EXPECT_FALSE(funct::frame_lrc_ok("00\r\n"));
    EXPECT_FALSE(funct::frame_lrc_ok(""));
}

TEST_F(FrameBorders, TheCodeEndsAtTheCharactersBesideTheDigits) {
    for (const std::string code : {"0:", "0/"}) {
        record(0).id_text1.clear();
        dispatch(frame_text(code, 40).text(4, "abcdefg").str());
        EXPECT_EQ(record(0).id_text1, "abcdefg") << code;
    }
}

TEST_F(FrameBorders, AReadThatFailsBringsNothingOfWhatCameBefore) {
    receive(closed(measured({.speed = 100}).substr(0, measured_length - 4)));
    ASSERT_EQ(told("log_record").size(), 1U);
    simulation::world().ports[11].refuses_input = true;
    receive("x");
    EXPECT_EQ(told("log_record").size(), 1U);
}

TEST_F(FrameBorders, APortThatOpensBeginsWithoutWhatCameBeforeAndWithoutHandshake) {
    open_port(0);
    EXPECT_EQ(simulation::port(0).handshaking, 0);
    EXPECT_EQ(simulation::port(0).r_threshold, 1);
}

TEST_F(FrameBorders, ANameOfANumberIsNoNumber) {
    funct::parameter_texts texts;
    texts.alarmlevel = "inf";
    EXPECT_EQ(attempt([&] { funct::parameter_frame_send(0, texts); }), "Type mismatch");
}

TEST_F(FrameBorders, TheMenuEntryThatEndsTheProgramHasItsName) {
    EXPECT_EQ(indicators.Quit.Caption, "E&xit");
}

} // namespace
} // namespace tyxo::link_testing
