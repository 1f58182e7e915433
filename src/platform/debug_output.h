#pragma once
// The debug output: the only place where silent failures leave a trace.

#include <string_view>

namespace tyxo {

/// One message, one line. A CR LF at the end of the message is dropped.
void debug_output(std::string_view message);

} // namespace tyxo
