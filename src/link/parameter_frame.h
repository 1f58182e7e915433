#pragma once
// The way back from the system to an Evaluator: the parameter write frame.

#include "link/channel_rec.h"

#include <array>
#include <string>

namespace tyxo::funct {

/// The texts that make up a parameter set, as they stand in the setup dialog.
struct parameter_texts {
    std::string alarmlevel;
    std::string ratedspeed; ///< rpm
    std::string overspeed;  ///< rpm
    std::string num_cyl;
    std::array<std::string, cylinder_max> firingorder; ///< all 24 go out, whatever `num_cyl` says
    std::string prealarmlevel;
};

/// Sends the frame ":07" to the channel's Evaluator, which answers it whenever it likes. A value beyond four
/// digits makes the frame longer; no range is checked. Failure, with nothing sent: a text is no number or its
/// number does not fit, 32 bits for all but the firing order's 16; and the failures of `serial::frame_send`.
void parameter_frame_send(i16 channel, const parameter_texts& texts);

} // namespace tyxo::funct
