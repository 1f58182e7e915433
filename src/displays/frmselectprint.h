#pragma once
// Printing of one channel's strip chart, and the dialog that chooses the channel.

#include "basics/types.h"
#include "platform/controls.h"

namespace tyxo {

struct frmselectprint_form {
    Form form;
};

inline frmselectprint_form frmselectprint;
inline i16 print_channel = 0; ///< 0 to 3, kept between uses of the dialog

/// The menu entry.
void prt_click();

} // namespace tyxo
