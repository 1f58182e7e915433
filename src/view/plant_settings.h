#pragma once
// What the settings of the plant say of its pictures, and no log does.

#include <string>

namespace tyxo::view {

/// Takes zero point, scales, order of the bars and which curves are shown from the "tyxo.ini" in the log's
/// folder or one of the three above it, or from the file that is named; without one they are those of a new
/// plant. Failure: the named file cannot be read.
void load_plant_settings(const std::string& log, const std::string& file = {});

} // namespace tyxo::view
