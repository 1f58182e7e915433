#include "platform/mscomm.h"

#include "simulated_ports.h"

#include "basics/failure.h"
#include "link/serial.h"
#include "platform/simulation.h"

#include <algorithm>

namespace tyxo {

struct MSComm::state {
    simulation::port_settings settings;
    std::string waiting; ///< received, not yet taken
    std::string sent;
    i32 event = 0;
    std::function<void()> handler;

    [[nodiscard]] const simulation::port_behaviour& behaviour() const {
        static const simulation::port_behaviour willing;
        const auto found = simulation::world().ports.find(settings.number);
        return found == simulation::world().ports.end() ? willing : found->second;
    }
    void fire(i32 kind) {
        event = kind;
        if (handler) handler();
    }
    /// True if the system took the bytes that wait.
    bool deliver() {
        if (waiting.empty() || settings.r_threshold == 0 || simulation::world().events_held) return false;
        fire(comm_event::receive);
        return true;
    }
};

namespace {

/// The states of all ports in the order of their making, which is the order of the channels.
std::vector<MSComm::state*>& all_ports() {
    static auto* const ports = new std::vector<MSComm::state*>;
    return *ports;
}

i16 place_of(const MSComm::state* port) {
    return static_cast<i16>(std::ranges::find(all_ports(), port) - all_ports().begin());
}

void require_open(const MSComm::state& port) {
    if (!port.settings.open) throw failure("Operation valid only when the port is open");
}

} // namespace

MSComm::MSComm() : state_(std::make_unique<state>()) {
    all_ports().push_back(state_.get());
}
MSComm::~MSComm() {
    std::erase(all_ports(), state_.get());
}

bool MSComm::PortOpen() const {
    return state_->settings.open;
}

void MSComm::PortOpen(bool open) {
    if (open && state_->behaviour().refuses_to_open) throw failure("Port already open");
    if (open) ++state_->settings.opened;
    if (!open && state_->settings.open) {
        // Closing waits for the line: what the line brings meanwhile comes in.
        state_->waiting += state_->behaviour().arrives_while_closing;
        state_->deliver();
    }
    state_->settings.open = open;
    state_->waiting.clear();
}

void MSComm::CommPort(i16 number) {
    if (number <= 0) throw failure("Invalid port number");
    state_->settings.number = number;
}

void MSComm::Settings(std::string_view text) {
    state_->settings.settings = text;
}

void MSComm::InBufferCount(i32 /*zero*/) {
    require_open(*state_);
    state_->waiting.clear();
}

void MSComm::OutBufferCount(i32 /*zero*/) {
    require_open(*state_);
}
void MSComm::InputMode(i32 mode) {
    state_->settings.input_mode = mode;
}
void MSComm::RTSEnable(bool on) {
    state_->settings.rts = on;
}
void MSComm::RThreshold(i32 bytes) {
    state_->settings.r_threshold = bytes;
}
void MSComm::SThreshold(i32 bytes) {
    state_->settings.s_threshold = bytes;
}
void MSComm::Handshaking(i32 kind) {
    state_->settings.handshaking = kind;
}

void MSComm::Output(std::string_view text) {
    require_open(*state_);
    if (state_->behaviour().refuses_output) throw failure("Device unavailable");
    state_->sent += text;
    if (simulation::world().on_output) simulation::world().on_output(place_of(state_.get()), text);
}

void MSComm::Input(std::string& chunk) {
    require_open(*state_);
    const bool refused = state_->behaviour().refuses_input;
    const auto& on_input = simulation::world().on_input;
    if (on_input) on_input(place_of(state_.get()), refused ? std::string_view() : state_->waiting);
    if (refused) throw failure("Device unavailable");
    chunk.swap(state_->waiting);
    state_->waiting.clear();
}

i32 MSComm::CommEvent() const {
    return state_->event;
}
void MSComm::on_comm(std::function<void()> handler) {
    state_->handler = std::move(handler);
}

namespace simulation {

namespace {

MSComm::state& port_state(i16 channel) {
    return *all_ports().at(static_cast<std::size_t>(channel));
}

} // namespace

void deliver_waiting() {
    for (MSComm::state* port : all_ports())
        port->deliver();
}

bool receive(i16 channel, std::string_view bytes) {
    MSComm::state& port = port_state(channel);
    if (!port.settings.open) return false;
    port.waiting += bytes;
    return port.deliver();
}

void port_event(i16 channel, i32 event) {
    port_state(channel).fire(event);
}

std::string& sent(i16 channel) {
    return port_state(channel).sent;
}

const port_settings& port(i16 channel) {
    return port_state(channel).settings;
}

} // namespace simulation
} // namespace tyxo
