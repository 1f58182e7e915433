#include "platform/desktop/session_bus.h"

#include "platform/desktop/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

namespace tyxo::desktop {

namespace {

/// Longer than a bus of a busy machine takes, which answers in less than a millisecond otherwise.
constexpr std::chrono::milliseconds longest_answer{2000};

/// What a client says first: an empty byte, and the question how it may introduce itself.
constexpr std::string_view greeting("\0AUTH\r\n", 7);

/// The value of the key in the first address of the list; bytes that are written as %41 stay so.
std::string_view value_of(std::string_view address, std::string_view key) {
    address = address.substr(0, address.find(';'));
    const auto place = address.find(key);
    if (!address.starts_with("unix:") || place == address.npos) return {};
    const std::string_view rest = address.substr(place + key.size());
    return rest.substr(0, rest.find(','));
}

} // namespace

bool bus_hangs(std::string_view address) {
    const std::string_view path = value_of(address, "path=");
    const std::string name =
        path.empty() ? '\0' + std::string(value_of(address, "abstract=")) : std::string(path);
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (name.size() < 2 || name.size() >= sizeof place.sun_path) return false;
    std::ranges::copy(name, place.sun_path);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());

    const descriptor bus(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (::connect(bus.get(), reinterpret_cast<const sockaddr*>(&place), size) != 0) return errno == EAGAIN;
    if (::send(bus.get(), greeting.data(), greeting.size(), MSG_NOSIGNAL) < 0) return false;
    pollfd answer{bus.get(), POLLIN, 0};
    return ::poll(&answer, 1, static_cast<int>(longest_answer.count())) == 0;
}

} // namespace tyxo::desktop
