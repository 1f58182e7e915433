#include "link/frame_dispatch.h"

#include "basics/number.h"
#include "link/calls.h"
#include "link/frame_fields.h"
#include "link/indicators.h"
#include "link/status_update.h"
#include "platform/debug_output.h"

#include <array>
#include <cstdlib>

namespace tyxo::sensor {

namespace {

constexpr i32 signal_zero = 32768; // raw value of a signal of 0

constexpr std::array<text_field, 4> identification_fields{{
    {4, 7, &channel_rec::id_text1},
    {11, 7, &channel_rec::id_text2},
    {18, 6, &channel_rec::id_text3},
    {24, 10, &channel_rec::id_text4},
}};

void decode_identification(const frame_fields& frame, i16 channel) {
    store(frame, state.channels[channel], identification_fields);
}

i32 tsignal_field(const frame_fields& frame) {
    return divide_even(std::abs(frame.hex(4, 4) - signal_zero), 10);
}

void announce_test_signal(i16 channel) {
    constexpr std::array<std::string_view, 3> texts{"Testsignal OFF", "Testsignal1 ON", "Testsignal2 ON"};
    channel_rec& rec = state.channels[channel];
    if (rec.tstsig_state == rec.tstsig_prev || rec.tstsig_state > 2) return;
    calls.log_note(channel, texts[static_cast<std::size_t>(rec.tstsig_state)]);
    rec.tstsig_prev = rec.tstsig_state;
}

void decode_measured_values(const frame_fields& frame, i16 channel) {
    channel_rec& rec = state.channels[channel];
    if (frame.length() < 17) {
        rec.tsignal = tsignal_field(frame);
        rec.speed = divide_even(frame.hex(8, 4), 10);
    } else {
        rec.tstsig_state = frame.hex(12, 4);
        announce_test_signal(channel);
        // Values measured while a test signal runs are no values of the engine.
        const bool real = rec.tstsig_visible != 0 || rec.tstsig_state == 0;
        if (real) rec.tsignal = tsignal_field(frame);
        rec.speed = divide_even(frame.hex(8, 4), 10);
        if (frame.length() > 20 && real) rec.tvoltage = std::abs(frame.hex(16, 4) - signal_zero);
        if (frame.length() > 24) rec.teff_dc = divide_even(frame.hex(20, 4), 10);
        if (frame.length() > 28) rec.teff_ac = divide_even(frame.hex(24, 4), 10);
    }
    calls.log_record(channel, "1");
}

/// What tells the two kinds of curve apart.
struct curve_kind {
    std::array<i32, curve_samples + 1> channel_rec::*data;
    per_channel<i16>& block_last;
    std::function<void(i16)> link_calls::*process;
    std::string_view record_kind;
    std::string_view index_error;
};

const curve_kind thermo_curve{&channel_rec::thermo_data, state.thermo_block_last, &link_calls::process_thermo,
                              "3", "Indexerror thermospannung"};
const curve_kind angacc_curve{&channel_rec::angacc_data, state.angacc_block_last, &link_calls::process_angacc,
                              "4", "Indexerror winkelbeschleunigung"};

void decode_curve_block(const frame_fields& frame, i16 channel, const curve_kind& kind) {
    constexpr i16 last_block = 4;
    constexpr i32 block_samples = curve_samples / last_block;

    if (frame.length() < 11) return;
    const i32 block = frame.hex(4, 2);
    if (block < 1 || block > last_block) return;
    i16& counter = kind.block_last[channel];
    if (block != counter + 1) {
        // Looks like a mistake and stays: the same words for both kinds
        // (CurveBlocks.FirstBlockMustBeNumber1).
        debug_output("blocknummerfehler thermospannung");
        counter = 0;
        return;
    }
    auto& data = state.channels[channel].*kind.data;
    for (i32 sample = 0; sample < block_samples; ++sample) {
        const i32 value = frame.hex(6 + 4 * static_cast<std::size_t>(sample), 4);
        const i32 index = block_samples * (block - 1) + sample;
        if (index >= curve_samples) {
            debug_output(kind.index_error);
            continue;
        }
        data[static_cast<std::size_t>(index)] = value;
    }
    if (block < last_block) {
        counter = static_cast<i16>(block);
        return;
    }
    // Looks like a mistake and stays: a failure in there leaves the counter at 3, and the next curve is
    // refused (CurveBlocks.AFailingProcessLeavesTheCounterAt3AndCostsTheNextCurve).
    (calls.*kind.process)(channel);
    counter = 0;
    calls.log_record(channel, kind.record_kind);
}

void decode_thermo(const frame_fields& frame, i16 channel) {
    decode_curve_block(frame, channel, thermo_curve);
}

void decode_angacc(const frame_fields& frame, i16 channel) {
    decode_curve_block(frame, channel, angacc_curve);
}

void decode_write_answer(const frame_fields& frame, i16 /*channel*/) {
    debug_output(frame.hex(4, 2) == 1 ? "write parameter OK" : "write parameter Not OK");
}

constexpr std::array<text_field, 1> status_texts{{{4, 5, &channel_rec::fwvers}}};
constexpr std::array<hex_field, 2> status_words{{
    {9, 4, &channel_rec::status_alarm},
    {13, 4, &channel_rec::status_error},
}};
constexpr std::array<hex_field, 4> status_long_form{{
    {21, 2, &channel_rec::eva_mode},
    {23, 4, &channel_rec::alminhibit_on},
    {27, 4, &channel_rec::alminhibit_left},
    {31, 2, &channel_rec::status_ext},
}};

void decode_status(const frame_fields& frame, i16 channel) {
    channel_rec& rec = state.channels[channel];
    store(frame, rec, status_texts);
    store(frame, rec, status_words);
    rec.status_valid = true;
    if (frame.length() < 31) {
        rec.eva_mode = evaluator_mode::standard;
        rec.alminhibit_on = 0;
    } else {
        store(frame, rec, status_long_form);
    }
    status_update(channel);
}

struct frame_type {
    i32 code;
    void (*decode)(const frame_fields&, i16 channel);
};

/// Frames of other codes are left alone.
constexpr auto frame_types = std::to_array<frame_type>({
    {0, decode_identification},
    {1, decode_measured_values},
    {3, decode_thermo},
    {4, decode_angacc},
    {6, decode_parameters},
    {7, decode_write_answer},
    {8, decode_status},
});

/// The two characters of the code as a decimal number; digits count until the first other character.
i32 function_code(const frame_fields& frame) {
    i32 code = 0;
    for (const char letter : frame.text(2, 2)) {
        if (letter < '0' || letter > '9') break;
        code = 10 * code + (letter - '0');
    }
    return code;
}

} // namespace

void frame_dispatch(std::string_view received, i16 channel) {
    if (channel < 0 || channel >= channel_count) failures::subscript();
    const std::string_view trimmed = funct::frame_trim(received);
    if (!trimmed.starts_with(':')) return;
    if (!funct::frame_lrc_ok(trimmed)) {
        debug_output("LRC Error");
        return;
    }
    // Looks like a mistake and stays: takes away a "not connected" of any channel
    // (Supervision.AGoodFrameOfAnotherChannelEmptiesTheStatusBar).
    indicators.StatusBar.clear();

    const frame_fields frame(trimmed);
    const i32 code = function_code(frame);
    for (const frame_type& type : frame_types)
        if (type.code == code) return type.decode(frame, channel);
}

} // namespace tyxo::sensor
