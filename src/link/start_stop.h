#pragma once
// Measuring starts and stops: all channels at once or one by one, by menu or at start-up.

#include "basics/types.h"

namespace tyxo {

/// Starts all channels in use, in order, until one cannot open its port; that one is told in a message box
/// and stopped again. The box of a command waits for the operator, that of the start does not.
void start_log();
void start_log_ch(i16 channel);

/// Stops all channels, or one, and closes their logs. The operator has been asked before. Closing waits a
/// second at most for each port.
void stop_log();
void stop_log_ch(i16 channel);

/// The menu entries. Stopping waits for the operator's answer to the stop lock, while measuring goes on.
namespace mainfrm {
void startstop_click();
void start_channel_click(i16 channel);
} // namespace mainfrm

} // namespace tyxo
