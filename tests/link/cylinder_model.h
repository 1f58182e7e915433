#pragma once
// The values per cylinder once more, written down as plainly as possible, to compare with; and engines and
// curves to feed both.

#include "link/channel_rec.h"

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace tyxo::cylinder_testing {

/// Half to even.
inline double rounded(double value) {
    const double below = std::floor(value);
    if (value - below < 0.5) return below;
    if (value - below > 0.5) return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

inline int angle_sum(const channel_rec& rec, int last_place) {
    int sum = 0;
    for (int place = 0; place <= last_place; ++place)
        sum += rec.firingangle.at(static_cast<std::size_t>(place));
    return sum;
}

inline std::vector<int> model_angles(const channel_rec& rec, bool firing_order) {
    std::vector<int> angles(24);
    const auto entry = [&rec](int place) { return rec.firingorder.at(static_cast<std::size_t>(place)); };
    for (int cylinder = 1; cylinder <= rec.numzyl; ++cylinder) {
        const auto slot = static_cast<std::size_t>(cylinder - 1);
        if (firing_order) angles[slot] = angle_sum(rec, cylinder - 1);
        for (int place = 0; !firing_order && place < rec.numzyl; ++place) {
            int number = 0;
            if (rec.cylconf == 4) number = entry(place);
            if (rec.cylconf == 2 && entry(0) <= 100) number = entry(place) - 1;
            if (rec.cylconf == 2 && entry(0) > 100 && entry(place) > 200) number = 2 * (entry(place) - 200);
            if (rec.cylconf == 2 && entry(0) > 100 && entry(place) > 100 && entry(place) < 200)
                number = 2 * (entry(place) - 101) + 1;
            if (number == cylinder) angles[slot] = angle_sum(rec, place);
        }
    }
    return angles;
}

inline int model_index(const channel_rec& rec, int angle) {
    return static_cast<int>(rounded(angle * 255.0 / (rec.enginetype == 4 ? 720 : 360)));
}

/// The samples of the window, each as often as it counts.
inline std::vector<int> model_window(int index, int half_width) {
    if (index - half_width >= 0 && index + half_width > 255) return {index};
    std::vector<int> samples;
    if (index - half_width < 0) {
        for (int sample = index - half_width + 256; sample <= 255; ++sample)
            samples.push_back(sample);
        for (int sample = 0; sample <= index + half_width; ++sample)
            samples.push_back(sample);
    } else {
        for (int sample = index - half_width; sample <= index + half_width; ++sample)
            samples.push_back(sample);
    }
    return samples;
}

inline double model_percent(const channel_rec& rec, int sample, int zero) {
    const double gains[] = {999, 25, 50, 100, 225, 450};
    double divisor = gains[rec.alarmlevel];
    if (rec.dcpercent_valid) divisor = divisor * rec.dcalarmpercent / 100;
    return std::abs((sample - zero) * 100 / divisor);
}

struct model_values {
    std::vector<double> value;
    std::vector<double> difference;
};

inline model_values model_speeds(const channel_rec& rec, const sensor::curve& curve, int half_width,
                                 bool firing_order) {
    const double step = rec.fwvers.substr(1, 1) == "2" ? 0.0000004 : 0.000000333;
    const auto angles = model_angles(rec, firing_order);
    double total = 0;
    for (const int counts : curve)
        total += counts;
    const double mean = rounded(60 / (rounded(total / 256) * 256 * step) * 100);
    model_values all;
    for (int cylinder = 0; cylinder < rec.numzyl; ++cylinder) {
        const auto window =
            model_window(model_index(rec, angles[static_cast<std::size_t>(cylinder)]), half_width);
        double sum = 0;
        for (const int sample : window)
            sum += curve.at(static_cast<std::size_t>(sample));
        const double speed = 60 / (rounded(sum / static_cast<double>(window.size())) * 256 * step);
        all.value.push_back(speed > 4000 ? 4000 : rounded(speed));
        all.difference.push_back(((speed > 4000 ? 0 : rounded(speed * 100)) - mean) / 100);
    }
    return all;
}

inline model_values model_thermosignals(const channel_rec& rec, const sensor::curve& curve, int half_width,
                                        int zero, bool firing_order) {
    const auto angles = model_angles(rec, firing_order);
    double acc = 0;
    for (const int sample : curve)
        acc = rounded(model_percent(rec, sample, zero) + acc);
    model_values all;
    for (int cylinder = 0; cylinder < rec.numzyl; ++cylinder) {
        const auto window =
            model_window(model_index(rec, angles[static_cast<std::size_t>(cylinder)]), half_width);
        double sum = 0;
        for (const int sample : window)
            sum += rounded(model_percent(rec, curve.at(static_cast<std::size_t>(sample)), zero));
        const double signal = rounded(sum / static_cast<double>(window.size()));
        all.value.push_back(signal > 200 ? 200 : signal);
        all.difference.push_back(signal - rounded(acc / 256));
    }
    return all;
}

/// An in-line 4 stroke engine, its cylinders evenly apart; it fires 1 5 3 6 2 4 when it has six.
inline channel_rec in_line_engine(int cylinders = 6) {
    channel_rec rec;
    rec.enginetype = 4;
    rec.cylconf = 4;
    rec.numzyl = cylinders;
    rec.overspeed = 1500;
    rec.alarmlevel = 3;
    rec.fwvers = "V1.07";
    rec.param_valid = true;
    rec.location = "Engine 1";
    constexpr int six[] = {1, 5, 3, 6, 2, 4};
    for (int place = 0; place < std::min(cylinders, 24); ++place) {
        const auto slot = static_cast<std::size_t>(place);
        rec.firingorder[slot] = cylinders == 6 ? six[place] : place + 1;
        rec.firingangle[slot] = 720 / cylinders;
    }
    return rec;
}

/// A V engine with banks: it fires 1A 1B 2A 2B and so on, or backwards.
inline channel_rec banked_engine(int cylinders, bool backwards = false) {
    channel_rec rec = in_line_engine(cylinders);
    rec.cylconf = 2;
    for (int place = 0; place < cylinders; ++place) {
        const int from = backwards ? cylinders - 1 - place : place;
        rec.firingorder[static_cast<std::size_t>(place)] = (from % 2 == 0 ? 101 : 201) + from / 2;
    }
    rec.firingangle[0] = 7;
    return rec;
}

inline sensor::curve flat_curve(i32 sample) {
    sensor::curve curve{};
    curve.fill(sample);
    return curve;
}

inline sensor::curve random_curve(std::mt19937& random, i32 least, i32 greatest) {
    sensor::curve curve{};
    for (i32& sample : curve)
        sample = std::uniform_int_distribution<i32>(least, greatest)(random);
    return curve;
}

/// An engine of any kind, its firing angles within one cycle.
inline channel_rec random_engine(std::mt19937& random) {
    const auto any = [&random](int least, int greatest) {
        return std::uniform_int_distribution<int>(least, greatest)(random);
    };
    channel_rec rec = in_line_engine(any(1, 24));
    rec.enginetype = any(0, 1) != 0 ? 4 : 2;
    rec.cylconf = any(0, 9) == 0 ? 3 : 2 * any(1, 2);
    rec.alarmlevel = any(0, 5);
    rec.fwvers = any(0, 1) != 0 ? "V2.01" : "V1.99";
    rec.dcpercent_valid = any(0, 1) != 0;
    rec.dcalarmpercent = any(20, 150);
    const int bank = any(0, 2) * 100;
    const int most_angle = (rec.enginetype == 4 ? 720 : 360) / rec.numzyl;
    for (int place = 0; place < rec.numzyl; ++place) {
        const auto slot = static_cast<std::size_t>(place);
        rec.firingorder[slot] = bank == 0 ? any(0, rec.numzyl + 1) : 100 * any(1, 2) + any(0, 13);
        rec.firingangle[slot] = any(0, most_angle);
    }
    return rec;
}

} // namespace tyxo::cylinder_testing
