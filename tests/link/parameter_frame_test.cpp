// The parameter write frame: its layout to the character, and the texts that keep it from the line.

#include "link/parameter_frame.h"

#include "basics/failure.h"
#include "link/frames.h"
#include "link/hex.h"
#include "link/link_world.h"

#include <functional>

namespace tyxo::funct {
namespace {

constexpr std::string_view mismatch = "Type mismatch";
constexpr std::string_view overflow = "Overflow";

class ParameterFrame : public link_testing::link_world {
  protected:
    ParameterFrame() {
        texts = {.alarmlevel = "255",
                 .ratedspeed = "1500",
                 .overspeed = "1650",
                 .num_cyl = "6",
                 .firingorder = {},
                 .prealarmlevel = "75"};
        for (std::size_t index = 0; index < texts.firingorder.size(); ++index)
            texts.firingorder[index] = std::to_string(index + 1);
    }

    /// What goes out on the line of channel 2.
    std::string frame() {
        simulation::sent(1).clear();
        parameter_frame_send(1, texts);
        return simulation::sent(1);
    }

    /// Nothing goes out, and the failure has this description.
    void expect_failure(std::string_view description) {
        simulation::sent(1).clear();
        const auto why = attempt([this] { parameter_frame_send(1, texts); });
        EXPECT_EQ(why, description);
        EXPECT_EQ(simulation::sent(1), "");
        EXPECT_EQ(simulation::port(1).opened, 0);
    }

    /// Every text of the set, one after the other.
    void for_every_text(const std::function<void(std::string&)>& visit) {
        for (std::string* text :
             {&texts.alarmlevel, &texts.ratedspeed, &texts.overspeed, &texts.num_cyl, &texts.prealarmlevel})
            visit(*text);
        for (std::string& text : texts.firingorder)
            visit(text);
    }

    parameter_texts texts;
};

TEST_F(ParameterFrame, HoldsTheSetInTheOrderOfTheWriteFrame) {
    const std::string body = ":07"
                             "00FF05DC06720006"
                             "0102030405060708090A0B0C0D0E0F101112131415161718"
                             "004B";
    EXPECT_EQ(frame(), body + frame_lrc(body) + "\r\n");
}

TEST_F(ParameterFrame, IsSeventyFiveCharactersLongWithAFullSet) {
    EXPECT_EQ(frame().size(), 75U);
    EXPECT_TRUE(frame_lrc_ok(frame()));
}

TEST_F(ParameterFrame, AnAlarmLevelOf255Is00FF) {
    EXPECT_EQ(frame().substr(3, 4), "00FF");
}

TEST_F(ParameterFrame, AFiringOrderEntryOf5Is05) {
    texts.firingorder[0] = "5";
    EXPECT_EQ(frame().substr(19, 2), "05");
}

TEST_F(ParameterFrame, TakesAllFiringOrderEntriesWhateverTheNumberOfCylinders) {
    texts.num_cyl = "3";
    texts.firingorder[23] = "77";
    EXPECT_EQ(frame().substr(19 + 2 * 23, 2), "4D");
    EXPECT_EQ(frame().size(), 75U);
}

TEST_F(ParameterFrame, AValueBeyondFourDigitsShiftsTheRest) {
    texts.alarmlevel = "65535";
    EXPECT_EQ(frame().substr(3, 8), "FFFF05DC");
    texts.alarmlevel = "65536";
    EXPECT_EQ(frame().substr(3, 9), "1000005DC");
    EXPECT_EQ(frame().size(), 76U);
    EXPECT_TRUE(frame_lrc_ok(frame()));
}

TEST_F(ParameterFrame, ANegativeValueGoesOutAsItsBits) {
    texts.prealarmlevel = "-1";
    EXPECT_EQ(frame().substr(67, 8), "FFFFFFFF");
    texts.firingorder[0] = "-1";
    EXPECT_EQ(frame().substr(19, 4), "FFFF");
}

TEST_F(ParameterFrame, BlanksAroundANumberDoNotCount) {
    texts.alarmlevel = "  255 ";
    texts.firingorder[0] = " 1";
    texts.prealarmlevel = "\t75\t";
    EXPECT_EQ(frame().substr(0, 21), ":0700FF05DC0672000601");
    EXPECT_EQ(frame().size(), 75U);
}

TEST_F(ParameterFrame, AFractionIsRoundedToTheEvenNeighbour) {
    const std::vector<std::pair<std::string, std::string>> rounded{
        {"2.5", "0002"}, {"3.5", "0004"}, {"2.51", "0003"}, {"+7", "0007"}, {".6", "0001"}, {"12.", "000C"},
    };
    for (const auto& [text, digits] : rounded) {
        texts.alarmlevel = text;
        EXPECT_EQ(frame().substr(3, 4), digits) << text;
    }
    texts.firingorder[0] = "4.5";
    EXPECT_EQ(frame().substr(19, 2), "04");
}

TEST_F(ParameterFrame, ATextThatIsNoNumberFailsAndNothingGoesOut) {
    for_every_text([this](std::string& text) {
        const std::string before = text;
        for (const char* none : {"", " ", "A3", "3A", "5 6", "-", "+", ".", "--5", "+-5", "1,5", "inf", "nan",
                                 "-inf", "0x10", "1e", "12..5"}) {
            text = none;
            SCOPED_TRACE(none);
            expect_failure(mismatch);
        }
        text = before;
    });
}

TEST_F(ParameterFrame, ANumberThatDoesNotFitFailsAndNothingGoesOut) {
    texts.ratedspeed = "2147483647";
    EXPECT_EQ(frame().substr(7, 8), "7FFFFFFF");
    simulation::fresh_world();
    for (const char* large : {"2147483648", "-2147483649", "1e400", "99999999999999999999"}) {
        texts.ratedspeed = large;
        expect_failure(overflow);
    }
    texts.ratedspeed = "1500";
    texts.firingorder[23] = "32768";
    expect_failure(overflow);
}

TEST_F(ParameterFrame, TheLargestFiringOrderEntryIsOfSixteenBits) {
    texts.firingorder[23] = "32767";
    EXPECT_EQ(frame().substr(65, 4), "7FFF");
}

TEST_F(ParameterFrame, AClosedPortIsOpenedAndClosedAroundTheWrite) {
    EXPECT_EQ(frame().size(), 75U);
    EXPECT_EQ(simulation::port(1).opened, 1);
    EXPECT_FALSE(simulation::port(1).open);
    EXPECT_EQ(simulation::port(1).number, 12);
}

TEST_F(ParameterFrame, AnOpenPortStaysOpen) {
    open_port(1);
    EXPECT_EQ(frame().size(), 75U);
    EXPECT_EQ(simulation::port(1).opened, 1);
    EXPECT_TRUE(simulation::port(1).open);
}

TEST_F(ParameterFrame, GoesToItsOwnChannelOnly) {
    EXPECT_EQ(frame().size(), 75U);
    for (const i16 channel : {i16{0}, i16{2}, i16{3}})
        EXPECT_EQ(simulation::sent(channel), "");
}

TEST_F(ParameterFrame, APortThatCannotBeOpenedIsAFailureOfTheCaller) {
    simulation::world().ports[12].refuses_to_open = true;
    EXPECT_THROW(parameter_frame_send(1, texts), failure);
    EXPECT_EQ(simulation::sent(1), "");
}

TEST_F(ParameterFrame, AChannelThatDoesNotExistFails) {
    EXPECT_THROW(parameter_frame_send(4, texts), failure);
    EXPECT_THROW(parameter_frame_send(-1, texts), failure);
}

TEST_F(ParameterFrame, TheAnswerChangesNothingOfTheRecord) {
    record(1).alarmlevel = 320;
    record(1).ratedspeed = 750;
    record(1).numzyl = 8;
    EXPECT_EQ(frame().size(), 75U);
    for (const char* answer : {":0700", ":0701"}) {
        receive(link_testing::closed(answer), 1);
        EXPECT_EQ(record(1).alarmlevel, 320);
        EXPECT_EQ(record(1).ratedspeed, 750);
        EXPECT_EQ(record(1).numzyl, 8);
        EXPECT_FALSE(record(1).param_valid);
    }
}

} // namespace
} // namespace tyxo::funct
