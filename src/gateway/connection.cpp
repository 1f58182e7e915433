#include "gateway/connection.h"

namespace tyxo {

void TCP_connect(u8 /*command*/) {}

void TCP_disconnect() {}

void Timer_reconnect_tick() {}

void Timer_TCP_tick() {}

void start_gateway() {}

} // namespace tyxo
