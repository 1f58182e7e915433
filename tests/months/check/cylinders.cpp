#include "cylinders.h"

#include "words.h"

#include <cmath>
#include <cstdlib>
#include <numeric>

namespace months::check {

namespace {

struct not_to_be_had {};

/// Where in the curve a cylinder fires, by the number of the cylinder.
std::array<int, 24> positions(const channel_record& r) {
    std::array<int, 24> position{};
    if (r.numzyl > 24) throw not_to_be_had();
    places number{};
    const auto count = static_cast<std::size_t>(r.numzyl);
    for (std::size_t i = 0; i < count; ++i) {
        const int order = r.firingorder[i];
        if (r.cylconf == 4) {
            number[i] = order;
        } else if (r.cylconf == 2 && r.firingorder[0] <= 100) {
            number[i] = order - 1;
        } else if (r.cylconf == 2 && order > 100 && order < 200) {
            number[i] = (order - 101) * 2 + 1;
        } else if (r.cylconf == 2 && order > 200) {
            number[i] = (order - 200) * 2;
        }
    }
    int angle = 0;
    std::array<int, 24> angle_of{};
    for (std::size_t i = 0; i < count; ++i) {
        angle += r.firingangle[i];
        if (number[i] >= 1 && number[i] <= r.numzyl)
            angle_of[static_cast<std::size_t>(number[i] - 1)] = angle;
    }
    for (std::size_t i = 0; i < count; ++i)
        position[i] = static_cast<int>(nearest(angle_of[i] * 255.0 / (r.enginetype == 4 ? 720 : 360)));
    return position;
}

/// The mean of the samples around a position; near the end of the curve the one sample.
template <class Curve> std::int64_t window_mean(const Curve& curve, int position, int half) {
    const auto sample = [&](int place) -> std::int64_t {
        if (place < 0 || place > 255) throw not_to_be_had();
        return curve[static_cast<std::size_t>(place)];
    };
    if (position - half >= 0 && position + half > 255) return sample(position);
    std::int64_t sum = 0;
    for (int place = position - half; place <= position + half; ++place)
        sum += sample(place < 0 ? place + 256 : place);
    return nearest(static_cast<double>(sum) / (2 * half + 1));
}

double rpm(std::int64_t count, double tick) {
    if (count == 0) throw not_to_be_had();
    return 60 / (static_cast<double>(count) * 256 * tick);
}

bool attempted(cylinder_values& values, int cylinders, const auto& compute) {
    try {
        compute();
    } catch (const not_to_be_had&) {
        values.unknown.fill(true);
        return false;
    }
    std::fill_n(values.unknown.begin(), cylinders, false);
    return true;
}

} // namespace

bool compute_speeds(channel_record& r, const cylinder_settings& settings) {
    return attempted(r.speed_of, r.numzyl, [&] {
        const bool two = r.fwvers.size() > 1 && leading_number(std::string_view(r.fwvers).substr(1, 1)) == 2;
        const double tick = two ? 0.0000004 : 0.000000333;
        const auto position = positions(r);
        const auto count = static_cast<std::size_t>(r.numzyl);
        std::array<std::int64_t, 24> speed100{};
        for (std::size_t i = 0; i < count; ++i) {
            const double speed =
                rpm(window_mean(r.cylinder_acceleration, position[i], settings.half_width), tick);
            r.speed_of.value[i] = speed <= 4000 ? nearest(speed) : 4000;
            if (speed <= 4000) speed100[i] = nearest(speed * 100);
        }
        const auto& curve = r.cylinder_acceleration;
        const auto total = std::accumulate(curve.begin(), curve.end(), std::int64_t{0});
        const std::int64_t mean100 = nearest(rpm(nearest(static_cast<double>(total) / 256), tick) * 100);
        for (std::size_t i = 0; i < count; ++i)
            r.speed_of.difference[i] = nearest(static_cast<double>(speed100[i] - mean100) / 100);
    });
}

bool compute_thermo(channel_record& r, const cylinder_settings& settings) {
    return attempted(r.thermo_of, r.numzyl, [&] {
        constexpr double gains[] = {999, 25, 50, 100, 225, 450};
        const auto position = positions(r);
        if (r.alarmlevel < 0 || r.alarmlevel > 5) throw not_to_be_had();
        double gain = gains[r.alarmlevel];
        if (r.dcpercent_valid) gain = gain * r.dcalarmpercent / 100;
        if (gain == 0) throw not_to_be_had();
        std::array<std::int64_t, 256> rounded{};
        double sum = 0;
        for (std::size_t j = 0; j < rounded.size(); ++j) {
            const double percent = std::abs((r.cylinder_thermo[j] - settings.zero_point) * 100 / gain);
            rounded[j] = nearest(percent);
            sum = static_cast<double>(nearest(percent + sum));
        }
        const std::int64_t mean = nearest(sum / 256);
        for (std::size_t i = 0; i < static_cast<std::size_t>(r.numzyl); ++i) {
            const std::int64_t signal = window_mean(rounded, position[i], settings.half_width);
            r.thermo_of.value[i] = signal > 200 ? 200 : signal;
            r.thermo_of.difference[i] = signal - mean;
        }
    });
}

} // namespace months::check
