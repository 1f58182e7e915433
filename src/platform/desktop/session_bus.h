#pragma once
// The message bus of the session, from outside.

#include <string_view>

namespace tyxo::desktop {

/// True where somebody takes the connection but says nothing, however long one waits: a library that connects
/// would hang, and with it the program's start. Unix sockets only; what cannot be reached does not hang.
[[nodiscard]] bool bus_hangs(std::string_view address);

} // namespace tyxo::desktop
