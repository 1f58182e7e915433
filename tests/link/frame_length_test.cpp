// Frames of every code and length, whole and damaged, store what a second telling of the rules says.

#include "link/frame_model.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/record_text.h"

#include <algorithm>
#include <random>

namespace tyxo::link_testing {
namespace {

class FrameLengths : public link_world {
  protected:
    FrameLengths() {
        open_port(0);
        start_anew();
    }

    /// The same record for the program and for the model, every field filled with what no frame carries.
    void start_anew() {
        channel_rec rec;
        rec.connected = true;
        for (const auto& row : details::numbers)
            rec.*row.member = -1;
        for (const auto& row : details::texts)
            rec.*row.member = "before";
        rec.tvoltage = rec.speed_scale = -1;
        rec.tstsig_prev = 0;
        rec.firingorder.fill(-1);
        rec.firingangle.fill(-1);
        record(0) = expected_ = rec;
        sensor::state.thermo_block_last[0] = sensor::state.angacc_block_last[0] = thermo_block_ =
            angacc_block_ = 0;
    }

    /// Sends the frame over the line and holds the record against the model.
    void expect_as_told(const std::string& frame) {
        simulation::world().debug.clear();
        const bool readable = frame_model(expected_, thermo_block_, angacc_block_).take(frame);
        receive(frame);
        ASSERT_EQ(record_text(record(0)), record_text(expected_));
        ASSERT_TRUE(same_curves(record(0), expected_));
        ASSERT_EQ(sensor::state.thermo_block_last[0], thermo_block_);
        ASSERT_EQ(sensor::state.angacc_block_last[0], angacc_block_);
        const auto failures = std::ranges::count_if(
            debug(), [](const std::string& line) { return line.starts_with("mscomm: "); });
        ASSERT_EQ(failures, readable ? 0 : 1);
    }

    /// 300 digits from anywhere in a long random row of them.
    static std::string any_digits(std::mt19937& random) {
        static const std::string row = [] {
            constexpr std::string_view digits = "0123456789ABCDEFabcdef";
            std::mt19937 fill(814);
            std::string text;
            while (text.size() < 5000)
                text += digits[fill() % digits.size()];
            return text;
        }();
        return row.substr(random() % 4700, 300);
    }

    /// A frame of any length from 5 on: what is too long for the code or the data is missing.
    static std::string cut_frame(const std::string& code, const std::string& data, std::size_t length) {
        return closed((":" + code + data).substr(0, length - 4));
    }

    channel_rec expected_;
    i16 thermo_block_ = 0;
    i16 angacc_block_ = 0;
};

TEST_F(FrameLengths, EveryCodeAndLengthStoresOnlyWhatTheLengthAllows) {
    std::mt19937 random(815);
    for (i32 number = 0; number < 100; ++number) {
        const std::string code = padded(number, 2);
        for (std::size_t length = 5; length <= 300; ++length) {
            if (length % 50 == 0) start_anew();
            const std::string frame = cut_frame(code, any_digits(random), length);
            ASSERT_NO_FATAL_FAILURE(expect_as_told(frame)) << "code " << code << " length " << length;
        }
    }
}

TEST_F(FrameLengths, EveryLengthOfACurveBlock) {
    std::mt19937 random(816);
    for (const std::string code : {"03", "04"}) {
        for (std::size_t length = 5; length <= 300; ++length) {
            const i32 last = code == "03" ? thermo_block_ : angacc_block_;
            const std::string frame = cut_frame(code, hex_digits(last + 1, 2) + any_digits(random), length);
            ASSERT_NO_FATAL_FAILURE(expect_as_told(frame)) << "code " << code << " length " << length;
        }
    }
}

TEST_F(FrameLengths, AFrameTooShortForACheckIsRefused) {
    for (const char* frame : {":\r\n", ":0\r\n"})
        receive(frame);
    EXPECT_EQ(record_text(record(0)), record_text(expected_));
    EXPECT_TRUE(said.empty());
}

TEST_F(FrameLengths, AFrameOfACheckOnlyLacksItsFields) {
    receive(":00\r\n");
    EXPECT_EQ(debug(), lines{"mscomm: Type mismatch"});
    EXPECT_EQ(record(0).id_text1, "before");
}

struct damaged_frame {
    const char* name;
    std::string frame;
};

class Damaged : public FrameLengths, public testing::WithParamInterface<damaged_frame> {};

TEST_P(Damaged, AtAnyPositionItIsOneFailureAndKeepsWhatCameBefore) {
    const std::string whole = GetParam().frame;
    for (const char wrong : {'G', ' ', '-', '\0', '\xFF', '/', '@', '`', 'g'}) {
        for (std::size_t position = 4; position + 4 <= whole.size(); ++position) {
            start_anew();
            std::string body = whole.substr(0, whole.size() - 4);
            body[position - 1] = wrong;
            ASSERT_NO_FATAL_FAILURE(expect_as_told(closed(body))) << position << " '" << wrong << '\'';
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    frames, Damaged,
    testing::Values(damaged_frame{"identification", frame_text("00", 37).str()},
                    damaged_frame{"short_values", measured({.tsignal = 33000, .speed = 9000}, 15)},
                    damaged_frame{"long_values",
                                  measured({.tsignal = 33000, .speed = 9000, .tvoltage = 40000})},
                    damaged_frame{"thermo_block", curve_block("03", 1, 0x1000)},
                    damaged_frame{"angacc_block", curve_block("04", 1, 0x2000)},
                    damaged_frame{"short_parameters", parameters(1500, 183)},
                    damaged_frame{"long_parameters", parameters(1500)},
                    damaged_frame{"write_answer", frame_text("07", 9).hex(4, 2, 1).str()},
                    damaged_frame{"short_status", status({.alarm = 0x20}, short_status_length)},
                    damaged_frame{"long_status", status({.alarm = 0x20, .error = 0x10, .inhibit_on = 1})}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace tyxo::link_testing
