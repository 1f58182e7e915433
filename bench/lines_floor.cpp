// The least that four lines and their logs cost a process: it waits for bytes, reads them, and writes a line
// of a log for every short frame. `bench/running_program.py floor` runs it beside the program's rows.
//
//     lines_floor LOG PORT...

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t short_frame = 100; // characters; only measured values are logged as they come
const std::string line(80, '-');

pollfd open_port(const char* path) {
    const int handle = ::open(path, O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (handle < 0) std::exit(1);
    termios settings{};
    if (::tcgetattr(handle, &settings) != 0) std::exit(1);
    ::cfmakeraw(&settings);
    if (::tcsetattr(handle, TCSANOW, &settings) != 0) std::exit(1);
    return {handle, POLLIN, 0};
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    const int log = ::open(argv[1], O_WRONLY | O_CREAT | O_APPEND, 0666);
    std::vector<pollfd> ports;
    for (int port = 2; port < argc; ++port)
        ports.push_back(open_port(argv[port]));
    std::vector<std::size_t> lengths(ports.size()); // of the frames that come in
    std::array<char, 4096> bytes{};
    while (::poll(ports.data(), ports.size(), -1) > 0) {
        for (std::size_t port = 0; port < ports.size(); ++port) {
            if (ports[port].revents == 0) continue;
            const ssize_t count = ::read(ports[port].fd, bytes.data(), bytes.size());
            if (count <= 0) return 1;
            for (ssize_t index = 0; index < count; ++index) {
                ++lengths[port];
                if (bytes[static_cast<std::size_t>(index)] != '\n') continue;
                const bool logged = lengths[port] < short_frame;
                lengths[port] = 0;
                if (logged && ::write(log, line.data(), line.size()) < 0) return 1;
            }
        }
    }
}
