#pragma once
// What the settings of the plant say of its pictures, and no log does.

#include <string>

namespace tyxo::view {

/// Takes zero point, scales and order of the bars from the "tyxo.ini" in the log's folder or one of the three
/// above it; without one they are those of a new plant.
void load_plant_settings(const std::string& log);

} // namespace tyxo::view
