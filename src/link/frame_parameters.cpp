#include "link/calls.h"
#include "link/frame_fields.h"
#include "link/indicators.h"
#include "link/speed_bands.h"

namespace tyxo::sensor {

namespace {

constexpr std::array<hex_field, 4> level_fields{{
    {4, 4, &channel_rec::alarmlevel},
    {8, 4, &channel_rec::prealarmlevel},
    {12, 4, &channel_rec::ratedspeed},
    {16, 4, &channel_rec::overspeed},
}};
constexpr std::array<hex_field, 3> engine_fields{{
    {20, 4, &channel_rec::enginetype},
    {24, 4, &channel_rec::numzyl},
    {28, 4, &channel_rec::cylconf},
}};
constexpr std::size_t firingorder_position = 32; // 24 entries of 2 digits
constexpr std::size_t firingangle_position = 80; // 24 entries of 4 digits
constexpr std::array<hex_field, 1> offset_field{{{176, 4, &channel_rec::impoffset}}};

// Each group stands in the frame only if the frame has the length of the group's row.
constexpr std::size_t tst_length = 186;
constexpr std::array<hex_field, 2> tst_fields{{
    {180, 4, &channel_rec::tsttime},
    {184, 4, &channel_rec::tstlen},
}};
constexpr std::size_t ext1_length = 192;
constexpr std::array<hex_field, 4> ext1_fields{{
    {188, 2, &channel_rec::aimp_level_cur},
    {190, 4, &channel_rec::ialarmlevel1},
    {194, 4, &channel_rec::ialarmlevel2},
    {198, 4, &channel_rec::ialmrpm},
}};
constexpr std::array<text_field, 1> ext1_texts{{{202, 10, &channel_rec::fwvers_ext}}};
constexpr std::size_t ext2_length = 221;
constexpr std::array<hex_field, 3> ext2_fields{{
    {212, 4, &channel_rec::ialarmdelay},
    {216, 4, &channel_rec::ialarmlen},
    {220, 4, &channel_rec::ialarmlevel},
}};
constexpr std::size_t theff_length = 231;
constexpr std::array<hex_field, 2> theff_fields{{
    {224, 4, &channel_rec::theff_alm},
    {228, 4, &channel_rec::theff_cnt},
}};
constexpr std::size_t inhibit_length = 237;
constexpr std::array<hex_field, 1> inhibit_fields{{{232, 4, &channel_rec::alminhibit_time}}};
constexpr std::array<text_field, 1> inhibit_texts{{{236, 8, &channel_rec::evasnr}}};
constexpr std::size_t dcpercent_length = 248;
constexpr std::array<hex_field, 1> dcpercent_fields{{{244, 4, &channel_rec::dcalarmpercent}}};

void scale_speed_gauge(const channel_rec& rec, iAngularGaugeX& gauge) {
    constexpr i32 least = 10; // a limit up to this is not set in the Evaluator
    if (rec.ratedspeed > least) gauge.SectionEnd[0] = rec.ratedspeed;
    if (rec.overspeed > least) {
        gauge.SectionEnd[1] = rec.overspeed;
        // Looks like a mistake and stays: the band overwrites this at once
        // (GaugeOf.TheOverspeedLimitHasItsEndAndTicks).
        gauge.PositionMax = rec.overspeed * 1.1;
    }
    const gauge_band& band = band_of(gauge_bands, rec.overspeed);
    gauge.PositionMax = band.end;
    gauge.TickMajorCount = band.major_ticks;
}

void store_firing_tables(const frame_fields& frame, channel_rec& rec) {
    std::size_t index = 0;
    for (i32& cylinder : rec.firingorder)
        cylinder = frame.hex(firingorder_position + 2 * index++, 2);
    index = 0;
    for (i32& angle : rec.firingangle)
        angle = frame.hex(firingangle_position + 4 * index++, 4);
}

void store_long_form(const frame_fields& frame, channel_rec& rec) {
    const std::size_t length = frame.length();
    if (length >= tst_length) store(frame, rec, tst_fields);
    rec.tst_valid = length >= tst_length;

    if (length >= ext1_length) {
        store(frame, rec, ext1_fields);
        store(frame, rec, ext1_texts);
    }
    rec.ext1_valid = length >= ext1_length;

    if (length >= ext2_length) store(frame, rec, ext2_fields);
    rec.ext2_valid = length >= ext2_length;

    if (length >= theff_length) {
        store(frame, rec, theff_fields);
    } else {
        rec.theff_alm = unknown::theff;
        rec.theff_cnt = unknown::theff;
    }
    if (length >= inhibit_length) {
        store(frame, rec, inhibit_fields);
        store(frame, rec, inhibit_texts);
    } else {
        rec.alminhibit_time = unknown::alminhibit_time;
        rec.evasnr = unknown::evasnr;
    }
    if (length >= dcpercent_length) store(frame, rec, dcpercent_fields);
    rec.dcpercent_valid = length >= dcpercent_length;
}

} // namespace

void decode_parameters(const frame_fields& frame, i16 channel) {
    channel_rec& rec = state.channels[channel];
    store(frame, rec, level_fields);
    scale_speed_gauge(rec, indicators.drehzahl[channel]);
    store(frame, rec, engine_fields);
    store_firing_tables(frame, rec);
    store(frame, rec, offset_field);
    store_long_form(frame, rec);

    const speed_band& band = band_of(speed_bands, rec.overspeed);
    rec.speed_scale = band.scale;
    rec.speed_unit = band.unit;

    if (rec.log_state == log_states::wanted) {
        calls.createlog(channel); // only now, since the log's header needs the parameters
        rec.log_state = log_states::open;
    }
    rec.param_valid = true;
}

} // namespace tyxo::sensor
