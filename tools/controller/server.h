// The server: its socket, its connections, and the registers behind them.
#pragma once

#include "controller/behaviour.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace tyxo::controller_sim {

/// A file descriptor that is closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    void close();
    bool open() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_;
};

/// What came over a connection.
struct Events {
    std::function<void(const Answer&)> request;  ///< a request was carried out or refused
    std::function<void(const std::string&)> say; ///< something worth a line happened
};

/// The ports among which 0 chooses: a signed 16-bit number holds them.
inline constexpr int lowest_free_port = 20000;
inline constexpr int highest_free_port = 32767;

inline constexpr std::size_t most_connections = 64;
inline constexpr std::size_t longest_backlog = 1048576; ///< bytes of answers that a client may leave unread

class Server {
  public:
    /// Listens on the port of 127.0.0.1; 0 is any free one that the data logger's settings can hold. Throws
    /// std::runtime_error when it cannot.
    Server(int port, Events events);

    int port() const { return port_; }
    std::size_t connections() const { return connections_.size(); }
    bool listening() const { return listener_.open(); }

    void behave(Behaviour behaviour) { behaviour_ = behaviour; }
    void close_connections();
    /// Connections that are open stay open.
    void stop_listening() { listener_.close(); }
    /// On the same port as before; nothing when it listens. Throws std::runtime_error when it cannot.
    void listen();

    const Image& image() const { return image_; }
    Image& image() { return image_; }

    /// Waits up to `seconds` and serves what comes. Returns as soon as `input` can be read, if it is not
    /// negative, and then true.
    bool serve(double seconds, int input = -1);

  private:
    struct Waiting {
        std::string bytes;
        double due; ///< seconds of the server's clock
    };
    struct Connection {
        Descriptor socket;
        int number;
        std::string received;
        std::deque<Waiting> answers;
        bool broken = false;
    };

    bool try_to_listen(int port);
    void accept_connections();
    void receive(Connection& connection);
    void take_requests(Connection& connection);
    void send_due(Connection& connection, double time);
    void drop_broken();
    double next_answer(double time, double latest) const;

    Events events_;
    int port_;
    Descriptor listener_;
    Image image_;
    Behaviour behaviour_;
    std::mt19937 chance_{1};
    std::deque<Connection> connections_;
    int connections_so_far_ = 0;
};

} // namespace tyxo::controller_sim
