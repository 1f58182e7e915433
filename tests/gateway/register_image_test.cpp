// Which register holds what, and how a block is shown.

#include "gateway/gateway_world.h"

#include "basics/failure.h"

#include <limits>
#include <set>

namespace tyxo::gateway_testing {
namespace {

class RegisterImage : public gateway_world {
  protected:
    RegisterImage() {
        connect();
        fill(sensor::state.channels[2]);
    }

    static void fill(channel_rec& rec) {
        rec.tsignal = 51;
        rec.speed = 1480;
        rec.tvoltage = 1234;
        rec.teff_dc = 48;
        rec.teff_ac = 7;
        rec.status_alarm = 0xE1EF;
        rec.status_error = 0xF03C;
        rec.numzyl = 6;
        for (std::size_t slot = 0; slot < cylinder_max; ++slot) {
            const auto number = static_cast<i32>(slot);
            rec.mb_angacc_val[slot] = 1000 + number;
            rec.mb_angacc_diff[slot] = -12.5 - number;
            rec.mb_thermo_val[slot] = 100 + number;
            rec.mb_thermo_diff[slot] = 20.25 + number;
        }
    }

    static std::vector<int> sent_words() {
        std::vector<int> words;
        for (std::size_t index = 13; index < last_frame().size(); index += 2)
            words.push_back(word(last_frame(), index));
        return words;
    }
    static std::vector<std::string> boxes(std::size_t count) {
        return {FrmSetupTCP::state.Text4.begin(),
                FrmSetupTCP::state.Text4.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

TEST_F(RegisterImage, Block1HoldsTheMeasuredValues) {
    TCP_send(2, 1);
    EXPECT_EQ(target(last_frame()), "1220x6");
    EXPECT_EQ(sent_words(), (std::vector<int>{3, 51, 1480, 1234, 48, 7}));
    EXPECT_EQ(boxes(6), (std::vector<std::string>{"3", "51", "1480", "1234", "48", "7"}));
}

TEST_F(RegisterImage, Block8HoldsTheStatusWordsUnchanged) {
    TCP_send(2, 8);
    EXPECT_EQ(target(last_frame()), "1226x3");
    EXPECT_EQ(sent_words(), (std::vector<int>{3, 0xE1EF, 0xF03C}));
    EXPECT_EQ(boxes(3), (std::vector<std::string>{"3", "57839", "61500"}));
}

TEST_F(RegisterImage, Block3HoldsTheSpeedsAndTheirDifferences) {
    TCP_send(2, 3);
    EXPECT_EQ(target(last_frame()), "1230x50");
    const std::vector<int> words = sent_words();
    ASSERT_EQ(words.size(), 50U);
    EXPECT_EQ(words[0], 3);
    EXPECT_EQ(words[1], 6);
    for (int slot = 0; slot < cylinder_max; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        EXPECT_EQ(words[2 + index], 1000 + slot);
        const int rounded = slot % 2 == 0 ? 12 + slot : 13 + slot; // a half goes to the even neighbour
        EXPECT_EQ(words[26 + index], 65536 - rounded) << slot;
        EXPECT_EQ(box(26 + index), "-" + std::to_string(12 + slot) + ".5");
    }
}

TEST_F(RegisterImage, Block4HoldsTheThermosignalsAndTheirDifferences) {
    TCP_send(2, 4);
    EXPECT_EQ(target(last_frame()), "1280x50");
    const std::vector<int> words = sent_words();
    ASSERT_EQ(words.size(), 50U);
    EXPECT_EQ(words[0], 3);
    EXPECT_EQ(words[1], 6);
    for (int slot = 0; slot < cylinder_max; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        EXPECT_EQ(words[2 + index], 100 + slot);
        EXPECT_EQ(words[26 + index], 20 + slot);
        EXPECT_EQ(box(26 + index), std::to_string(20 + slot) + ".25");
    }
}

TEST_F(RegisterImage, AHalfGoesToTheEvenNeighbour) {
    sensor::state.channels[0].mb_angacc_diff = {-12.5, -13.5, 12.5, 13.5, .5, -.5, -.25, 1.0 / 3};
    sensor::state.channels[0].tvoltage = 2.5;
    TCP_send(0, 3);
    const std::vector<int> words = sent_words();
    EXPECT_EQ(std::vector<int>(words.begin() + 26, words.begin() + 34),
              (std::vector<int>{65536 - 12, 65536 - 14, 12, 14, 0, 0, 0, 0}));
    EXPECT_EQ(std::vector<std::string>(FrmSetupTCP::state.Text4.begin() + 26,
                                       FrmSetupTCP::state.Text4.begin() + 34),
              (std::vector<std::string>{"-12.5", "-13.5", "12.5", "13.5", "0.5", "-0.5", "-0.25",
                                        "0.333333333333333"}));
    TCP_send(0, 1);
    EXPECT_EQ(sent_words()[3], 2);
    EXPECT_EQ(box(3), "2.5");
}

TEST_F(RegisterImage, NoFrameAddressesOffset9OrLeavesItsChannel) {
    std::set<int> addressed;
    for (i16 channel = 0; channel < channel_count; ++channel) {
        for (const i16 block : {i16{1}, i16{8}, i16{3}, i16{4}}) {
            TCP_send(channel, block);
            for (int index = 0; index < word(last_frame(), 10); ++index)
                EXPECT_TRUE(addressed.insert(word(last_frame(), 8) + index).second) << "addressed twice";
        }
    }
    std::set<int> wanted;
    for (int offset = 0; offset < 440; ++offset) {
        if (offset % 110 != 9) wanted.insert(1000 + offset);
    }
    EXPECT_EQ(addressed, wanted);
}

TEST_F(RegisterImage, OtherCodesDoNothing) {
    const FrmSetupTCP::window before = FrmSetupTCP::state;
    for (const i16 code : std::initializer_list<i16>{0, 2, 5, 6, 7, 9, -1, 256})
        TCP_send(2, code);
    TCP_send(77, 2);
    EXPECT_EQ(frames(), 0U);
    EXPECT_EQ(FrmSetupTCP::state, before);
    EXPECT_EQ(settings.REGNumber, 0);
}

TEST_F(RegisterImage, AChannelThatNeverRanIsSentAsZeros) {
    TCP_send(3, 1);
    EXPECT_EQ(sent_words(), (std::vector<int>{4, 0, 0, 0, 0, 0}));
    TCP_send(3, 4);
    std::vector<int> zeros(50, 0);
    zeros[0] = 4;
    EXPECT_EQ(sent_words(), zeros);
}

TEST_F(RegisterImage, ShowsTheBlockSentLastAndLeavesTheOtherBoxes) {
    box(6) = "mine";
    settings.REGNumber = 77;
    TCP_send(2, 3);
    EXPECT_EQ(FrmSetupTCP::state.Txt_sendbase, "1230");
    EXPECT_EQ(FrmSetupTCP::state.Txt_regnumber, "50");
    EXPECT_EQ(settings.REGNumber, 50);
    box(6) = "mine";
    TCP_send(1, 1);
    EXPECT_EQ(FrmSetupTCP::state.Txt_sendbase, "1110");
    EXPECT_EQ(FrmSetupTCP::state.Txt_regnumber, "6");
    EXPECT_EQ(settings.REGNumber, 6);
    EXPECT_EQ(box(6), "mine");
}

TEST_F(RegisterImage, AChangedBaseCountsFromTheNextBlock) {
    TCP_send(0, 8);
    EXPECT_EQ(target(last_frame()), "1006x3");
    settings.REGBase = 62300;
    TCP_send(3, 4);
    EXPECT_EQ(target(last_frame()), "62690x50");
    settings.REGBase = 0;
    TCP_send(0, 1);
    EXPECT_EQ(target(last_frame()), "0x6");
}

TEST_F(RegisterImage, ABaseThatNoFrameCanSayIsAFailure) {
    for (const i32 base : {65536, -1000, std::numeric_limits<i32>::max(), std::numeric_limits<i32>::min()}) {
        settings.REGBase = base;
        EXPECT_THROW(TCP_send(3, 1), failure) << base;
    }
    EXPECT_EQ(frames(), 0U);
}

TEST_F(RegisterImage, IsShownThoughTheWriteIsRefused) {
    TCP_disconnect();
    TCP_send(2, 1);
    EXPECT_EQ(box(2), "1480");
    EXPECT_EQ(FrmSetupTCP::state.Txt_sendbase, "1220");
    EXPECT_EQ(status(), refused);
}

TEST_F(RegisterImage, AValueOutsideItsRegisterSendsNothing) {
    sensor::state.channels[2].speed = 65536;
    EXPECT_THROW(TCP_send(2, 1), failure);
    sensor::state.channels[2].mb_thermo_diff[3] = 1e10;
    EXPECT_THROW(TCP_send(2, 4), failure);
    sensor::state.channels[2].mb_angacc_diff[0] = std::numeric_limits<double>::infinity();
    EXPECT_THROW(TCP_send(2, 3), failure);
    EXPECT_THROW(TCP_send(4, 1), failure);
    EXPECT_THROW(TCP_send(-1, 1), failure);
    EXPECT_EQ(frames(), 0U);
    sensor::state.channels[2].speed = -32769;
    TCP_send(2, 1);
    EXPECT_EQ(sent_words()[2], 0xFFFF) << "only the low 15 bits survive";
}

} // namespace
} // namespace tyxo::gateway_testing
