// The frames of the simulated Evaluator: check digits, lengths and fields.

#include "frames.h"
#include "parameters.h"

#include <gtest/gtest.h>

using namespace tyxo::evaluator_sim;

TEST(EvaluatorFrames, CheckDigitsHaveTheKnownValues) {
    EXPECT_EQ(check_digits(":00"), "a0");
    EXPECT_EQ(check_digits(":03"), "9d");
    EXPECT_EQ(check_digits(":04"), "9c");
    EXPECT_EQ(check_digits(":06"), "9a");
    EXPECT_EQ(check_digits(":08"), "98");
    EXPECT_EQ(check_digits(":8009"), "2f");
}

TEST(EvaluatorFrames, ClosedFrameEndsWithCheckAndLineEnd) {
    EXPECT_EQ(close_frame(":00"), ":00a0\r\n");
}

TEST(EvaluatorFrames, UpperCaseCheckDigitsFail) {
    EXPECT_TRUE(check_passes(":00a0"));
    EXPECT_FALSE(check_passes(":00A0"));
    EXPECT_FALSE(check_passes(":00a1"));
    EXPECT_FALSE(check_passes("a0"));
}

TEST(EvaluatorFrames, FieldsAreUpperCaseOfFixedWidth) {
    EXPECT_EQ(hex_field(255, 4), "00FF");
    EXPECT_EQ(hex_field(5, 2), "05");
    EXPECT_EQ(hex_field(300, 2), "FF");
    EXPECT_EQ(hex_field(-1, 4), "0000");
    EXPECT_EQ(text_field("V4", 5), "V4   ");
    EXPECT_EQ(text_field("V4.31.7", 5), "V4.31");
}

TEST(EvaluatorFrames, IdentificationHas37Characters) {
    EXPECT_EQ(close_frame(identification_body({"1234567", "ABCDEFG", "654321", "0123456789"})).size(), 37U);
}

TEST(EvaluatorFrames, ValuesGrowByOneFieldPerForm) {
    constexpr std::pair<ValuesForm, size_t> lengths[] = {{ValuesForm::brief, 15},
                                                         {ValuesForm::state, 19},
                                                         {ValuesForm::voltage, 23},
                                                         {ValuesForm::effective_dc, 27},
                                                         {ValuesForm::effective_ac, 31}};
    for (const auto& [form, length] : lengths)
        EXPECT_EQ(close_frame(values_body({}, form)).size(), length);
}

TEST(EvaluatorFrames, ValuesHaveTheirScales) {
    EXPECT_EQ(values_body({55.5, 748.9, 2, 1.25, 40, 12.3}, ValuesForm::effective_ac), ":01822B1D4100"
                                                                                       "02807D0190007B");
}

TEST(EvaluatorFrames, NegativeSignalLiesBelowTheMiddle) {
    EXPECT_EQ(values_body({-1, 0, 0, 0, 0, 0}, ValuesForm::brief), ":017FF60000");
}

TEST(EvaluatorFrames, CurveBlockHas265CharactersAndItsOwnSamples) {
    Curve curve{};
    for (size_t i = 0; i < curve.size(); ++i)
        curve[i] = static_cast<std::uint16_t>(i);
    const std::string body = curve_body(3, 2, curve);
    EXPECT_EQ(close_frame(body).size(), 265U);
    EXPECT_EQ(body.substr(0, 13), ":030200400041");
    EXPECT_EQ(curve_body(4, 4, curve).substr(body.size() - 4), "00FF");
}

TEST(EvaluatorFrames, ParametersGrowByOneGroupPerForm) {
    constexpr std::pair<ParameterForm, size_t> lengths[] = {
        {ParameterForm::base, 183},   {ParameterForm::test, 191},      {ParameterForm::impulse, 215},
        {ParameterForm::delay, 227},  {ParameterForm::effective, 235}, {ParameterForm::inhibit, 247},
        {ParameterForm::percent, 251}};
    for (const auto& [form, length] : lengths)
        EXPECT_EQ(close_frame(parameters_body({}, form)).size(), length);
}

TEST(EvaluatorFrames, ParametersStandAtTheirPlaces) {
    Parameters p = *engine_preset("v16-4");
    p.alarmlevel = 4;
    p.prealarmlevel = 80;
    p.impoffset = 0x1234;
    p.evasnr = "EV000042";
    const std::string body = parameters_body(p, ParameterForm::percent);
    EXPECT_EQ(body.substr(3, 8), "00040050");
    EXPECT_EQ(body.substr(11, 8), "03E8047E");
    EXPECT_EQ(body.substr(19, 12), "000400100002");
    EXPECT_EQ(body.substr(31, 4), "65C9"); // cylinders 1A and 1B
    EXPECT_EQ(body.substr(79, 12), "0000003C001E");
    EXPECT_EQ(body.substr(175, 4), "1234");
    EXPECT_EQ(body.substr(201, 10), "V4.31-0117");
    EXPECT_EQ(body.substr(235, 8), "EV000042");
    EXPECT_EQ(body.substr(243, 4), "0064");
}

TEST(EvaluatorFrames, StatusHas20Or36Characters) {
    Status status;
    status.firmware = "V4.31";
    status.alarm = 0x80A2;
    status.error = 0x63;
    status.mode = 99;
    status.inhibit_on = true;
    status.inhibit_left = 120;
    status.extension = 7;
    EXPECT_EQ(status_body(status, StatusForm::brief), ":08V4.3180A20063");
    EXPECT_EQ(status_body(status, StatusForm::full), ":08V4.3180A2006300006300010078"
                                                     "07");
    EXPECT_EQ(close_frame(status_body(status, StatusForm::brief)).size(), 20U);
    EXPECT_EQ(close_frame(status_body(status, StatusForm::full)).size(), 36U);
}

namespace {

/// Alarm level 2, rated speed 500, overspeed 575, then the cylinders, their order and prealarm level 85.
std::string write_body(int cylinders) {
    std::string body = ":07000201F4023F" + hex_field(cylinders, 4);
    for (int i = 1; i <= max_cylinders; ++i)
        body += hex_field(i, 2);
    return body + "0055";
}

} // namespace

TEST(EvaluatorParameterWrite, TakesOverAllItsFields) {
    Parameters p;
    ASSERT_TRUE(apply_parameter_write(p, write_body(9)));
    EXPECT_EQ(p.alarmlevel, 2);
    EXPECT_EQ(p.ratedspeed, 500);
    EXPECT_EQ(p.overspeed, 575);
    EXPECT_EQ(p.numzyl, 9);
    EXPECT_EQ(p.firingorder[23], 24);
    EXPECT_EQ(p.prealarmlevel, 85);
}

TEST(EvaluatorParameterWrite, ChangesNothingWhenRefused) {
    for (const std::string& body : {write_body(25), write_body(0), write_body(9).substr(0, 70),
                                    write_body(9) + "0", std::string(":07000G") + write_body(9).substr(7)}) {
        Parameters p;
        EXPECT_FALSE(apply_parameter_write(p, body)) << body;
        EXPECT_EQ(p.ratedspeed, Parameters().ratedspeed);
    }
}
