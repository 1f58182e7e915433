#pragma once
// The colours of all windows, whatever the desktop's are: those of scales, lamps and texts that are given
// assume a light ground.

namespace tyxo {

/// Gives the application its light palette, tool tips and all; a desktop that turns dark meanwhile changes
/// nothing. Called once, behind the application's making.
void use_light_palette();

} // namespace tyxo
