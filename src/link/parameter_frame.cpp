#include "link/parameter_frame.h"

namespace tyxo::funct {

void parameter_frame_send(i16 /*channel*/, const parameter_texts& /*texts*/) {}

} // namespace tyxo::funct
