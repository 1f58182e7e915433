#include "process.h"

#include <chrono>
#include <csignal>

namespace tyxo::evaluator_sim {

namespace {

volatile std::sig_atomic_t requested = 0;

void request_stop(int) {
    requested = 1;
}

} // namespace

void watch_signals() {
    struct sigaction action {};
    action.sa_handler = request_stop;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
    action.sa_handler = SIG_IGN;
    for (const int signal : {SIGPIPE, SIGTTIN})
        ::sigaction(signal, &action, nullptr);
}

bool stop_requested() {
    return requested != 0;
}

double now() {
    using namespace std::chrono;
    static const steady_clock::time_point start = steady_clock::now();
    return duration<double>(steady_clock::now() - start).count();
}

} // namespace tyxo::evaluator_sim
