// The TCP client socket in a simulation: a scripted controller.

#include "platform/winsock.h"

#include "basics/failure.h"

namespace tyxo {

struct Winsock::connection {};

Winsock::Winsock() = default;
Winsock::~Winsock() = default;

i16 Winsock::State() const {
    return socket_state::closed;
}

void Winsock::RemoteHost(std::string_view /*host*/) {}

void Winsock::RemotePort(i32 /*port*/) {}

void Winsock::Connect() {}

void Winsock::Close() {}

void Winsock::SendData(std::string_view /*bytes*/) {
    throw failure("Wrong protocol or connection state for the requested transaction or request");
}

u8 Winsock::GetData() {
    throw failure("Wrong protocol or connection state for the requested transaction or request");
}

} // namespace tyxo
