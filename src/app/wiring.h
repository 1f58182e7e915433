#pragma once
// Who reacts to what.

namespace tyxo {

/// Fills the table of calls that leave the link, and gives timers and ports their handlers.
void wire();

} // namespace tyxo
