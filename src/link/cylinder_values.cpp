#include "link/cylinder_values.h"

#include "basics/number.h"
#include "link/engine_texts.h"

#include <algorithm>
#include <cmath>

namespace tyxo::cylinder_values {

namespace {

/// The cylinder number per firing place.
std::array<i32, cylinder_max> cylinders_by_firing_place(const channel_rec& rec) {
    std::array<i32, cylinder_max> numbers{};
    const bool in_line = rec.cylconf == arrangement::in_line;
    const bool v_type = rec.cylconf == arrangement::v_type;
    // Looks like a mistake and stays: the first entry decides for all
    // (CylinderPlaces.TheFirstEntryDecidesWhetherAVEngineHasBanks).
    const bool banks = rec.firingorder[0] > 100;
    for (i32 place = 0; place < rec.numzyl; ++place) {
        const i32 entry = at(rec.firingorder, place);
        if (in_line) {
            numbers[place] = entry;
        } else if (v_type && !banks) {
            // Looks like a mistake and stays: every cylinder takes the place of the next one
            // (CylinderPlaces.AVEngineWithPlainNumbersIsShiftedByOneCylinder).
            numbers[place] = entry - 1;
        } else if (v_type && entry > 100 && entry < 200) {
            numbers[place] = (entry - 101) * 2 + 1;
        } else if (v_type && entry > 200) {
            numbers[place] = (entry - 200) * 2;
        }
    }
    return numbers;
}

/// The mean of `value(index)` over the window, as a whole number.
template <class Value> i32 window_mean(i32 index, i32 half_width, const Value& value) {
    if (index < 0 || index >= curve_samples) failures::subscript();
    const i32 first = index - half_width;
    const i32 last = index + half_width;
    // Looks like a mistake and stays: at its lower end the curve wraps, at its upper end one sample stands
    // for all (CylinderValues.TheWindowWrapsAtTheLowerEndAndIsOneSampleAtTheUpperEnd).
    if (first >= 0 && last >= curve_samples) return value(index);
    std::int64_t sum = 0;
    for (i32 sample = first; sample <= last; ++sample)
        sum += value(sample < 0 ? sample + curve_samples : sample);
    return round_even<i32>(static_cast<double>(sum) / (2 * half_width + 1));
}

double speed_of(i32 counts, double step) {
    if (counts == 0) failures::division_by_zero();
    return 60 / (static_cast<double>(counts) * curve_samples * step);
}

/// The mean speed of a whole curve in 1/100 rpm.
i32 mean_speed_100(const sensor::curve& curve, double step) {
    std::int64_t total = 0;
    for (const i32 counts : curve)
        total += counts;
    const i32 mean = round_even<i32>(static_cast<double>(total) / curve_samples);
    return round_even<i32>(speed_of(mean, step) * 100);
}

/// A signal below the zero point counts with its magnitude.
double percent(i32 sample, const thermo_scale& scale) {
    if (scale.divisor == 0) failures::division_by_zero();
    return std::abs((static_cast<double>(sample) - scale.adc_offset) * 100 / scale.divisor);
}

i32 mean_thermosignal(const sensor::curve& curve, const thermo_scale& scale) {
    // Looks like a mistake and stays: rounded with every sample, which is not the sum of rounded samples
    // (CylinderValues.TheMeanThermosignalIsRoundedWithEverySample).
    i32 sum = 0;
    for (const i32 sample : curve)
        sum = round_even<i32>(percent(sample, scale) + sum);
    return round_even<i32>(static_cast<double>(sum) / curve_samples);
}

} // namespace

crank_angles angles_by_firing_place(const channel_rec& rec) {
    crank_angles angles{};
    std::int64_t sum = 0;
    for (i32 place = 0; place < rec.numzyl; ++place) {
        sum += at(rec.firingangle, place);
        angles[place] = narrow<i32>(sum);
    }
    return angles;
}

crank_angles angles_by_cylinder(const channel_rec& rec) {
    const auto numbers = cylinders_by_firing_place(rec);
    const crank_angles places = angles_by_firing_place(rec);
    crank_angles angles{};
    for (i32 place = 0; place < rec.numzyl; ++place) {
        const i32 number = numbers[place];
        if (number >= 1 && number <= rec.numzyl)
            angles[number - 1] = places[place]; // the last of equals wins
    }
    return angles;
}

i32 curve_index(const channel_rec& rec, i32 angle) {
    const double cycle = rec.enginetype == 4 ? 720 : 360;
    return round_even<i32>(static_cast<double>(angle) * 255 / cycle);
}

double step_time(const channel_rec& rec) {
    const bool slow = rec.fwvers.size() > 1 && rec.fwvers[1] == '2';
    return slow ? 4e-07 : 3.33e-07;
}

double window_speed(const sensor::curve& curve, i32 index, i32 half_width, double step) {
    return speed_of(window_mean(index, half_width, [&](i32 sample) { return at(curve, sample); }), step);
}

thermo_scale thermo_scale_of(const channel_rec& rec, i32 adc_offset) {
    const double gain = at(alarm_gain_table, rec.alarmlevel);
    return {adc_offset, rec.dcpercent_valid ? gain * rec.dcalarmpercent / 100 : gain};
}

i32 window_thermosignal(const sensor::curve& curve, i32 index, i32 half_width, const thermo_scale& scale) {
    return window_mean(index, half_width,
                       [&](i32 sample) { return round_even<i32>(percent(at(curve, sample), scale)); });
}

void write_speeds(const channel_rec& rec, const crank_angles& angles, const sensor::curve& curve,
                  i32 half_width, const outputs& out) {
    const double step = step_time(rec);
    // Looks like a mistake and stays: a cylinder above the limit keeps 0, and its difference is minus the
    // mean (ModbusCalc.ACylinderAbove4000ShowsTheNegativeMeanAsItsDifference).
    std::array<i32, cylinder_max> speed_100{};
    for (i32 cylinder = 0; cylinder < rec.numzyl; ++cylinder) {
        const i32 index = curve_index(rec, at(angles, cylinder));
        const double speed = window_speed(curve, index, half_width, step);
        const bool shown = speed <= greatest_speed;
        at(out.value, cylinder) = shown ? round_even<i32>(speed) : greatest_speed;
        if (shown) speed_100[cylinder] = round_even<i32>(speed * 100);
    }
    const i32 mean_100 = mean_speed_100(curve, step);
    for (i32 cylinder = 0; cylinder < rec.numzyl; ++cylinder)
        out.difference[cylinder] = (static_cast<double>(speed_100[cylinder]) - mean_100) / 100;
}

void write_thermosignals(const channel_rec& rec, const crank_angles& angles, const sensor::curve& curve,
                         i32 half_width, i32 adc_offset, mean_order order, const outputs& out) {
    const thermo_scale scale = thermo_scale_of(rec, adc_offset);
    i32 mean = 0;
    if (order == mean_order::before_values) mean = mean_thermosignal(curve, scale);
    std::array<i32, cylinder_max> signal{}; // without the limit
    for (i32 cylinder = 0; cylinder < rec.numzyl; ++cylinder) {
        const i32 index = curve_index(rec, at(angles, cylinder));
        signal[cylinder] = window_thermosignal(curve, index, half_width, scale);
        at(out.value, cylinder) = std::min(signal[cylinder], greatest_thermosignal);
    }
    if (order == mean_order::behind_values) mean = mean_thermosignal(curve, scale);
    for (i32 cylinder = 0; cylinder < rec.numzyl; ++cylinder)
        out.difference[cylinder] = static_cast<double>(signal[cylinder]) - mean;
}

} // namespace tyxo::cylinder_values
