// Where the cylinders lie in the cycle.

#include "engine.h"

#include <algorithm>
#include <cmath>

namespace tyxo::evaluator_sim {

namespace {

constexpr double least_width = 1.5 * turn / 256; // narrower bells would fall between the samples

/// Smallest distance of two firing positions, going round; a whole turn for a single one.
double least_gap(std::vector<double> position) {
    for (double& angle : position)
        angle = std::fmod(angle, turn);
    std::sort(position.begin(), position.end());
    double gap = position.front() + turn - position.back();
    for (size_t i = 1; i < position.size(); ++i)
        gap = std::min(gap, position[i] - position[i - 1]);
    return gap;
}

/// Number of a cylinder less one. In a V engine with bank letters the banks alternate: 1A, 1B, 2A, 2B...
size_t cylinder_index(int entry) {
    int number = entry;
    if (entry > 200)
        number = (entry - 200) * 2;
    else if (entry > 100)
        number = (entry - 101) * 2 + 1;
    return static_cast<size_t>(std::clamp(number, 1, max_cylinders) - 1);
}

} // namespace

Geometry::Geometry(const Parameters& parameters)
    : cylinders_(std::clamp(parameters.numzyl, 1, max_cylinders)), strokes_(parameters.enginetype),
      order_(parameters.firingorder), angles_(parameters.firingangle) {
    const size_t count = places();
    const double cycle = strokes_ == 2 ? 360 : 720;
    std::vector<double> position(count);
    double sum = 0;
    for (size_t place = 0; place < count; ++place) {
        cylinder_.push_back(cylinder_index(order_.at(place)));
        sum += angles_.at(place);
        position[place] = sum / cycle * turn;
    }
    const double width = std::max(least_width, 0.33 * least_gap(position));
    const double sharpness = 1 / (width * width);
    share_.resize(256 * count);
    push_.resize(256 * count);
    for (size_t k = 0; k < 256; ++k) {
        const double here = static_cast<double>(k) / 256 * turn;
        double nearest = -2;
        for (const double there : position)
            nearest = std::max(nearest, std::cos(here - there) - 1);
        double total = 0;
        for (size_t place = 0; place < count; ++place) {
            const double closeness = std::cos(here - position[place]) - 1;
            push_[k * count + place] = std::exp(sharpness * closeness);
            share_[k * count + place] = std::exp(sharpness * (closeness - nearest));
            total += share_[k * count + place];
        }
        for (size_t place = 0; place < count; ++place)
            share_[k * count + place] /= total;
    }
}

bool Geometry::fits(const Parameters& parameters) const {
    return cylinders_ == std::clamp(parameters.numzyl, 1, max_cylinders) &&
           strokes_ == parameters.enginetype && order_ == parameters.firingorder &&
           angles_ == parameters.firingangle;
}

} // namespace tyxo::evaluator_sim
