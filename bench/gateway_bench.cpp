// Writes to a plant controller on this machine, one after the other: the gateway as it runs on the desktop
// beside libmodbus's own client, in turns against the same server. The send timer takes no part.

#include "app/wiring.h"
#include "controller/server.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>
#include <modbus/modbus.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace tyxo;

constexpr i32 first_register = 1000;
constexpr int transactions = 200; // of one turn
constexpr int turns = 11;

/// A controller on a thread of its own.
class running_server {
  public:
    running_server()
        : server_(0, {[this](const controller_sim::Answer& answer) { count(answer); }, [](const auto&) {}}),
          thread_([this] {
              while (!ended_)
                  server_.serve(0.05);
          }) {}
    ~running_server() {
        ended_ = true;
        thread_.join();
    }
    [[nodiscard]] int port() const { return server_.port(); }
    [[nodiscard]] int written() const { return written_; }

  private:
    void count(const controller_sim::Answer& answer) {
        if (answer.outcome == controller_sim::Outcome::written) ++written_;
    }

    std::atomic<int> written_ = 0;
    std::atomic<bool> ended_ = false;
    controller_sim::Server server_;
    std::thread thread_;
};

struct modbus_closer {
    void operator()(modbus_t* client) const {
        modbus_close(client);
        modbus_free(client);
    }
};

std::unique_ptr<modbus_t, modbus_closer> connected_client(int port) {
    std::unique_ptr<modbus_t, modbus_closer> client(modbus_new_tcp("127.0.0.1", port));
    modbus_set_slave(client.get(), 1);
    if (modbus_connect(client.get()) != 0) throw std::runtime_error("libmodbus does not connect");
    return client;
}

void connect_gateway(int port) {
    FrmSetupTCP::state.Txt_IPadr = "127.0.0.1";
    FrmSetupTCP::state.Txt_IPport = std::to_string(port);
    TCP_connect(1);
    if (!tcp.tcp_connected) throw std::runtime_error("the gateway does not connect");
}

/// Transactions a second of one turn.
template <class Write> double pace(Write write) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < transactions; ++i)
        write();
    return transactions / std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + turns / 2, values.end());
    return values[turns / 2];
}

void writes_beside_libmodbus(benchmark::State& state) {
    const auto count = static_cast<i16>(state.range(0));
    const running_server server;
    const auto client = connected_client(server.port());
    TCP_disconnect();
    connect_gateway(server.port());
    const std::vector<std::uint16_t> values(static_cast<std::size_t>(count), 700);
    modbus.mb_reg.fill(700);
    std::vector<double> ours;
    std::vector<double> theirs;
    int failed = 0;
    for (auto _ : state) {
        for (int turn = 0; turn < turns; ++turn) {
            ours.push_back(pace([count] { FC16MB_write(first_register, count); }));
            theirs.push_back(pace([&] {
                failed += modbus_write_registers(client.get(), first_register, count, values.data()) != count;
            }));
        }
    }
    if (failed > 0 || server.written() != 2 * turns * transactions) state.SkipWithError("writes were lost");
    state.counters["gateway_per_s"] = median(ours);
    state.counters["libmodbus_per_s"] = median(theirs);
    state.counters["ratio"] = median(ours) / median(theirs);
}
BENCHMARK(writes_beside_libmodbus)->Arg(3)->Arg(50)->Arg(123)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    wire();
    gateway.Timer1.Interval(1);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
