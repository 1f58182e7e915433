// A plant controller that answers anything at any time, or nothing, while the gateway's window is open, the
// cycle runs, and the operator reads and writes registers.

#include "fuzz/machine.h"
#include "fuzz/targets.h"

#include "app/wiring.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "link/channel_rec.h"
#include "link/main_timers.h"
#include "platform/simulation.h"

namespace tyxo::fuzzing {

namespace {

using simulation::world;

constexpr i32 most_steps = 30;
constexpr std::int64_t most_time = 60'000;    // ms of plant time in one run
constexpr std::int64_t longest_wait = 10'000; // ms of a command: an attempt to connect and a few answers

std::string some_bytes(input& in) {
    return std::string(in.text(in.below(40)));
}

/// What the controller does about a frame.
simulation::reply reply_to(std::string_view frame, input& in) {
    const u8 kind = in.byte();
    simulation::reply reply;
    std::string answer = simulation::right_answer(frame);
    switch (kind % 6) {
    case 0:
        break; // silence
    case 1:
        reply.pieces.push_back({in.byte(), some_bytes(in)});
        break;
    case 2: // in two pieces
        answer.resize(std::min<std::size_t>(answer.size(), in.byte()));
        reply.pieces.push_back({in.byte(), answer});
        reply.pieces.push_back({in.byte() * 10, some_bytes(in)});
        break;
    case 3: // one byte is another
        answer[static_cast<std::size_t>(in.byte()) % answer.size()] = in.raw<char>();
        reply.pieces.push_back({in.byte(), answer});
        break;
    default:
        reply.pieces.push_back({kind / 16, answer});
    }
    reply.closes = kind >= 250;
    return reply;
}

/// All that can be typed and clicked in the window.
void operate(input& in) {
    using namespace FrmSetupTCP;
    constexpr auto commands = std::to_array<void (*)()>(
        {Check1_click, Check2_click, Check3_click, Check4_click, Reg_content_click, slow_click, medium_click,
         fast_click, res_con_click, Cmd_read_R_click, Cmd_write_R_click, Cmd_save_click, Connect_click,
         cmd_discon_click, Cmd_close_click, mainfrm::setup_tcp_click, mainfrm::Timer_TCP_tick});
    constexpr auto boxes = std::to_array<void (*)(std::string_view)>(
        {Txt_IPadr_change, Txt_IPport_change, Txt_regbase_change, Txt_sendbase_change, Txt_regnumber_change,
         [](std::string_view text) { Text4_change(text.size() % 123, text); }});
    const i32 choice = in.below(static_cast<i32>(commands.size() + boxes.size()));
    const std::int64_t begin = world().now_ms;
    if (choice < static_cast<i32>(commands.size()))
        command([&] { at(commands, choice)(); });
    else
        command([&] { at(boxes, choice - static_cast<i32>(commands.size()))(some_bytes(in)); });
    expect(world().now_ms - begin <= longest_wait, "a command ends");
}

void change_controller(input& in) {
    simulation::controller& plant = world().plant;
    const u8 choice = in.byte();
    plant.connects = static_cast<simulation::connecting>(choice % 4);
    plant.connect_ms = in.byte() * 4;
    plant.refuses_data = choice >= 240;
    plant.handover_ms = in.byte() % 100;
    if (choice / 4 % 8 == 0) plant.handover_ms.reset();
}

void change_values(input& in) {
    channel_rec& rec = sensor::state.channels[static_cast<i16>(in.below(channel_count))];
    rec.tsignal = in.below(3278);
    rec.mb_thermo_diff[0] = in.raw<i16>() / 3.0;
    rec.mb_angacc_diff[23] = in.raw<i16>() * 50.0;
    simulation::set_local({2026, 7, 2, 23, 59, in.below(60)});
}

void step(input& in) {
    switch (in.byte() % 8) {
    case 0:
        change_controller(in);
        break;
    case 1:
        simulation::controller_sends(some_bytes(in));
        break;
    case 2:
        simulation::controller_closes();
        break;
    case 3:
        simulation::connection_breaks();
        break;
    case 4:
        change_values(in);
        break;
    case 5:
    case 6:
        operate(in);
        break;
    default:
        simulation::advance(in.byte() * 20);
    }
}

void check_gateway() {
    expect(!modbus.mb_waiting, "nobody waits outside a handler");
    expect(modbus.mb_tick_count >= 0 && modbus.mb_tick_count <= 101, "a transaction ends at its 101st tick");
    expect(tcp.tcp_step >= 0 && tcp.tcp_step <= 3, "the cycle has four steps");
    expect(tcp.tcp_channel >= 0 && tcp.tcp_channel < channel_count, "and four channels");
    expect(tcp.tcp_fail_count >= 0 && tcp.tcp_fail_count < 3, "the third failure locks");
}

} // namespace

void modbus_answers(input in) {
    simulation::fresh_world();
    wire();
    sensor::state.max_sensors = channel_count;
    settings.IPAdr = "plc";
    settings.IPport = 502;
    settings.REGBase = in.raw<std::uint16_t>();
    const u8 choice = in.byte();
    settings.IPAutoC = choice % 2;
    settings.IPenaTRS = choice / 2 % 2;
    settings.IPpolar = choice / 4 % 2;
    settings.IPsysstat = choice / 8 % 2;
    settings.IPRefresh = choice / 16 % 4;
    world().plant.answers = [&in](const std::string& frame) { return reply_to(frame, in); };
    start_gateway();
    command(mainfrm::setup_tcp_click);
    for (i32 left = most_steps; left > 0 && !in.empty() && world().now_ms < most_time; --left) {
        step(in);
        check_gateway();
    }
    check_state();
    world().plant.answers = [](const std::string&) { return simulation::reply(); };
    mainfrm::timers.Timer_TCP.Enabled(false);
    simulation::advance(3000);
    expect(!transaction_open(), "silence ends every transaction");
}

} // namespace tyxo::fuzzing
