// The engines a scenario can ask for by name.

#include "parameters.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace tyxo::evaluator_sim {

namespace {

struct Preset {
    std::string_view name;
    int strokes;
    int cylconf;
    int ratedspeed;
    int overspeed;
    /// Angles from a firing position to the next, repeated over the cycle. The first position stands at 0
    /// degrees, so that all views of the engine agree on where a cylinder lies.
    std::vector<int> angles;
    std::vector<int> order;
};

const std::vector<Preset>& presets() {
    static const std::vector<Preset> table = {
        {"inline1-4", 4, 4, 3000, 3450, {0}, {1}},
        {"inline6-4", 4, 4, 750, 860, {120}, {1, 5, 3, 6, 2, 4}},
        {"inline9-4", 4, 4, 500, 575, {80}, {1, 3, 5, 7, 9, 8, 6, 4, 2}},
        {"inline5-2", 2, 4, 124, 143, {72}, {1, 4, 3, 2, 5}},
        {"inline12-2", 2, 4, 102, 117, {30}, {1, 12, 5, 7, 2, 11, 4, 9, 3, 10, 6, 8}},
        {"v8-4", 4, 2, 1500, 1725, {90}, {1, 5, 4, 2, 6, 3, 7, 8}}, // numbered through, without bank letters
        {"v12-4", 4, 2, 1500, 1725, {60}, {101, 206, 105, 202, 103, 204, 106, 201, 102, 205, 104, 203}},
        {"v16-4",
         4,
         2,
         1000,
         1150,
         {60, 30},
         {101, 201, 103, 203, 107, 207, 104, 204, 108, 208, 106, 206, 102, 202, 105, 205}},
        {"v24-4", 4, 2, 900, 1035, {30}, {101, 201, 108, 208, 105, 205, 110, 210, 103, 203, 107, 207,
                                          112, 212, 106, 206, 109, 209, 104, 204, 111, 211, 102, 202}},
    };
    return table;
}

} // namespace

std::optional<Parameters> engine_preset(std::string_view name) {
    const auto& table = presets();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Preset& p) { return p.name == name; });
    if (found == table.end()) return std::nullopt;
    Parameters engine;
    engine.enginetype = found->strokes;
    engine.cylconf = found->cylconf;
    engine.ratedspeed = found->ratedspeed;
    engine.overspeed = found->overspeed;
    engine.numzyl = static_cast<int>(found->order.size());
    engine.ialmrpm = found->ratedspeed / 2;
    std::copy(found->order.begin(), found->order.end(), engine.firingorder.begin());
    for (size_t i = 1; i < found->order.size(); ++i)
        engine.firingangle.at(i) = found->angles.at((i - 1) % found->angles.size());
    return engine;
}

std::string engine_preset_names() {
    std::string names;
    for (const Preset& preset : presets())
        names += (names.empty() ? "" : ", ") + std::string(preset.name);
    return names;
}

Parameters plain_engine(bool v_engine, int cylinders, int strokes, int ratedspeed, int overspeed) {
    Parameters engine;
    engine.enginetype = strokes;
    engine.cylconf = v_engine ? 2 : 4;
    engine.ratedspeed = ratedspeed;
    engine.overspeed = overspeed;
    engine.numzyl = cylinders;
    engine.ialmrpm = ratedspeed / 2;
    for (int i = 0; i < cylinders; ++i) {
        const auto place = static_cast<size_t>(i);
        engine.firingorder.at(place) = v_engine ? (i % 2 == 0 ? 101 : 201) + i / 2 : i + 1;
        // Whole degrees without a growing error: each angle is the difference of two rounded positions.
        const int cycle = 180 * strokes;
        if (i > 0) engine.firingangle.at(place) = i * cycle / cylinders - (i - 1) * cycle / cylinders;
    }
    return engine;
}

} // namespace tyxo::evaluator_sim
