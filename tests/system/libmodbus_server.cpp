// A Modbus TCP server on libmodbus: libmodbus_server PORT.
//
// Lines on standard input: "get ADDRESS COUNT" is answered with "registers ...", "set ADDRESS VALUE..." with
// "done". It serves one connection at a time, unit identifier 1.

#include <modbus/modbus.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <poll.h>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

constexpr int registers = 65536;

/// Carries a line out. Returns false when it is the end.
bool obey(modbus_mapping_t& map) {
    std::string line;
    if (!std::getline(std::cin, line)) return false;
    std::istringstream words(line);
    std::string verb;
    std::size_t address = 0;
    words >> verb >> address;
    std::uint16_t* const holding = map.tab_registers;
    if (verb == "get") {
        std::size_t count = 0;
        words >> count;
        std::cout << "registers";
        for (std::size_t i = 0; i < count && address + i < registers; ++i)
            std::cout << ' ' << holding[address + i];
        std::cout << std::endl;
        return true;
    }
    for (unsigned value = 0; words >> value && address < registers; ++address)
        holding[address] = static_cast<std::uint16_t>(value);
    std::cout << "done" << std::endl;
    return true;
}

/// One request of the connection. Returns false when the connection has ended.
bool serve(modbus_t& server, modbus_mapping_t& map) {
    std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> request{};
    const int size = modbus_receive(&server, request.data());
    if (size > 0) modbus_reply(&server, request.data(), size, &map);
    return size != -1;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) return 2;
    const int port = std::atoi(argv[1]);
    modbus_t* const server = modbus_new_tcp("127.0.0.1", port);
    modbus_mapping_t* const map = modbus_mapping_new(0, 0, registers, 0);
    int listener = modbus_tcp_listen(server, 1);
    if (listener < 0 || map == nullptr) {
        std::cerr << "libmodbus_server: " << modbus_strerror(errno) << "\n";
        return 1;
    }
    modbus_set_slave(server, 1);
    std::cout << "listening on port " << port << std::endl;
    int connection = -1;
    for (;;) {
        std::array<pollfd, 3> ready{
            {{STDIN_FILENO, POLLIN, 0}, {listener, POLLIN, 0}, {connection, POLLIN, 0}}};
        if (poll(ready.data(), ready.size(), -1) < 0) return 1;
        if (ready[0].revents != 0 && !obey(*map)) break;
        if (connection >= 0 && ready[2].revents != 0 && !serve(*server, *map)) {
            close(connection);
            connection = -1;
        } else if (connection < 0 && ready[1].revents != 0) {
            connection = modbus_tcp_accept(server, &listener);
        }
    }
    modbus_mapping_free(map);
    modbus_free(server);
    return 0;
}
