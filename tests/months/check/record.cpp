#include "record.h"

#include "words.h"

#include <cstdlib>

namespace months::check {

namespace {

int tenth_of_distance(int raw) {
    return static_cast<int>(tenth(std::abs(raw - 32768)));
}

void measured(channel_record& r, const frame_fields& frame, bool visible, demands& what) {
    const int length = frame.length();
    if (length < 17) {
        r.tsignal = tenth_of_distance(frame.hex(4, 4));
        r.speed = static_cast<int>(tenth(frame.hex(8, 4)));
    } else {
        r.test_signal = frame.hex(12, 4);
        if (r.test_signal != r.test_signal_told && r.test_signal <= 2) {
            constexpr std::string_view notes[] = {"Testsignal OFF", "Testsignal1 ON", "Testsignal2 ON"};
            what.note = notes[r.test_signal];
            r.test_signal_told = r.test_signal;
        }
        const bool real = visible || r.test_signal == 0;
        if (real) r.tsignal = tenth_of_distance(frame.hex(4, 4));
        r.speed = static_cast<int>(tenth(frame.hex(8, 4)));
        if (length > 20 && real) r.tvoltage = std::abs(frame.hex(16, 4) - 32768);
        if (length > 24) r.teff_dc = static_cast<int>(tenth(frame.hex(20, 4)));
        if (length > 28) r.teff_ac = static_cast<int>(tenth(frame.hex(24, 4)));
    }
    what.record = 1;
}

void curve_block(channel_record& r, const frame_fields& frame, int code, demands& what) {
    if (frame.length() < 11) return;
    const int block = frame.hex(4, 2);
    if (block < 1 || block > 4) return;
    int& last = code == 3 ? r.thermo_block : r.acceleration_block;
    samples& curve = code == 3 ? r.thermo : r.acceleration;
    if (block != last + 1) {
        what.debug = "blocknummerfehler thermospannung";
        last = 0;
        return;
    }
    for (int i = 0; i < 64; ++i)
        curve[static_cast<std::size_t>(64 * (block - 1) + i)] = frame.hex(6 + 4 * i, 4);
    if (block == 4) what.curve = code;
    if (block < 4) last = block;
}

void speed_line(channel_record& r) {
    struct band {
        int below;
        double scale;
        const char* unit;
    };
    constexpr band bands[] = {{120, 1, "RPM"},
                              {400, 0.2, "RPM /5"},
                              {1400, 0.1, "RPM /10"},
                              {2900, 0.05, "RPM /20"},
                              {65536, 0.04, "RPM /25"}};
    for (const band& b : bands) {
        if (r.overspeed >= b.below) continue;
        r.speed_scale = b.scale;
        r.speed_unit = b.unit;
        return;
    }
}

void parameters(channel_record& r, const frame_fields& frame, demands& what) {
    int position = 4;
    const auto next = [&](int digits) {
        const int value = frame.hex(position, digits);
        position += digits;
        return value;
    };
    for (int* field :
         {&r.alarmlevel, &r.prealarmlevel, &r.ratedspeed, &r.overspeed, &r.enginetype, &r.numzyl, &r.cylconf})
        *field = next(4);
    for (int& cylinder : r.firingorder)
        cylinder = next(2);
    for (int& angle : r.firingangle)
        angle = next(4);
    r.impoffset = next(4);

    const int length = frame.length();
    // A group counts as there when it has been read completely.
    const auto group = [&](bool& valid, int least, const auto& read) {
        if (length >= least) read();
        valid = length >= least;
    };
    group(r.tst_valid, 186, [&] {
        r.tsttime = next(4);
        r.tstlen = next(4);
    });
    group(r.ext1_valid, 192, [&] {
        r.aimp_level_cur = next(2);
        for (int* field : {&r.ialarmlevel1, &r.ialarmlevel2, &r.ialmrpm})
            *field = next(4);
        r.fwvers_ext = frame.text(position, 10);
        position += 10;
    });
    group(r.ext2_valid, 221, [&] {
        for (int* field : {&r.ialarmdelay, &r.ialarmlen, &r.ialarmlevel})
            *field = next(4);
    });
    if (length >= 231) {
        r.theff_alm = next(4);
        r.theff_cnt = next(4);
    } else {
        r.theff_alm = r.theff_cnt = 9999;
    }
    if (length >= 237) {
        r.alminhibit_time = next(4);
        r.evasnr = frame.text(position, 8);
        position += 8;
    } else {
        r.alminhibit_time = 99999;
        r.evasnr = "inactive";
    }
    group(r.dcpercent_valid, 248, [&] { r.dcalarmpercent = next(4); });
    speed_line(r);
    what.parameters = true;
}

void status(channel_record& r, const frame_fields& frame, demands& what) {
    r.fwvers = frame.text(4, 5);
    r.status_alarm = frame.hex(9, 4);
    r.status_error = frame.hex(13, 4);
    if (frame.length() < 31) {
        r.eva_mode = 1;
        r.alminhibit_on = 0;
    } else {
        r.eva_mode = frame.hex(21, 2);
        r.alminhibit_on = frame.hex(23, 4);
        r.alminhibit_left = frame.hex(27, 4);
        r.status_ext = frame.hex(31, 2);
    }
    what.status = true;
}

} // namespace

demands decode(channel_record& record, const frame_fields& frame, bool test_signal_visible) {
    demands what;
    try {
        switch (const int code = frame.code()) {
        case 0:
            what.mscomm_allowed = frame.length() < 35;
            break;
        case 1:
            measured(record, frame, test_signal_visible, what);
            break;
        case 3:
        case 4:
            curve_block(record, frame, code, what);
            break;
        case 6:
            parameters(record, frame, what);
            break;
        case 7:
            what.debug = frame.hex(4, 2) == 1 ? "write parameter OK" : "write parameter Not OK";
            break;
        case 8:
            status(record, frame, what);
            break;
        default:
            break;
        }
    } catch (const no_such_field&) {
        what.mscomm = true;
    }
    return what;
}

} // namespace months::check
