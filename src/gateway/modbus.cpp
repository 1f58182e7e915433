#include "gateway/modbus.h"

#include "basics/failure.h"
#include "basics/number.h"
#include "basics/number_text.h"
#include "gateway/frmsetuptcp.h"
#include "platform/program.h"

#include <algorithm>

namespace tyxo {

namespace {

constexpr u8 unit = 1;
constexpr u8 read_registers = 3;
constexpr u8 write_registers = 16;
constexpr i32 tick_limit = 100;      // the transaction is given up at the tick behind it
constexpr int answer_wait_step = 50; // ms; whatever happens ends a step at once

constexpr std::string_view not_read = "*****";

/// A byte of a frame; an overflow failure when the value needs more.
char byte(i32 value) {
    return static_cast<char>(narrow<u8>(value));
}

/// A register's two bytes, the high one first. Looks like a mistake and stays: below -32768 only the low 15
/// bits survive (ModbusWrite.EncodesARegisterAsItsTable).
void append_register(std::string& frame, i32 value) {
    if (value >= 0) {
        frame += byte(value / 256);
        frame += byte(value % 256);
        return;
    }
    const i32 low_bits = value & 0x7FFF;
    frame += byte((low_bits / 256) | 128);
    frame += byte(low_bits % 256);
}

/// The lengths have one byte each, their high bytes are always 0.
std::string write_frame(i32 address, i16 count) {
    std::string frame(4, '\0');
    frame += byte(0);
    frame += byte(2 * count + 7);
    frame += byte(unit);
    frame += byte(write_registers);
    frame += byte(address / 256);
    frame += byte(address % 256);
    frame += byte(0);
    frame += byte(count);
    frame += byte(2 * count);
    for (i32 index = 0; index < count; ++index)
        append_register(frame, at(modbus.mb_reg, index));
    return frame;
}

std::array<u8, 12> read_frame(i32 address, i16 count) {
    const auto high = [](i32 value) { return narrow<u8>(value / 256); };
    const auto low = [](i32 value) { return narrow<u8>(value % 256); };
    return {0, 0, 0, 0, 0, 6, unit, read_registers, high(address), low(address), high(count), low(count)};
}

/// Hands a frame to the socket. A failure leaves everything as it was: nothing was sent.
void send(std::string_view frame, bool reads) {
    const modbus_state before = modbus;
    modbus.mb_read_active = reads;
    modbus.mb_write_active = !reads;
    if (!reads) modbus.mb_send_done = false;
    try {
        gateway.Winsock_A.SendData(frame);
    } catch (const failure&) {
        modbus = before;
        throw;
    }
}

/// Looks like a mistake and stays: the spelling, here and of the confirmation's failure
/// (ConnectionLoss.ASilentControllerIsRefusedEveryWriteForAnHourThoughItComesBack,
/// ModbusAnswer.WithAnotherFunctionToAWriteIsReportedAndTimesOut).
void refuse_write() {
    FrmSetupTCP::show_tcp_status("Error writting registers", status_colour::red);
    gateway.Timer_reconnect.Enabled(true);
}

void close_transaction() {
    modbus.mb_read_pending = false;
    modbus.mb_tick_count = 0;
    gateway.Timer1.Enabled(false);
}

/// Shows the registers of an answer. Looks like a mistake and stays: whether it is the answer of a read is
/// not looked at, an exception's code counts as the number of bytes
/// (ModbusAnswer.AnExceptionToAReadIsTakenByItsCode).
void take_registers() {
    auto box = FrmSetupTCP::state.Text4.begin();
    const i32 last = modbus.mb_rx[9] + 9;
    for (i32 index = 10; index <= last; index += 2)
        *box++ = plain(at(modbus.mb_rx, index) * 256 + at(modbus.mb_rx, index + 1));
    FrmSetupTCP::show_tcp_status("Registers read", status_colour::green);
    std::fill(box, FrmSetupTCP::state.Text4.end(), not_read);
    close_transaction();
}

/// Looks like a mistake and stays: any other function, an exception too, leaves the transaction open until it
/// times out (ModbusAnswer.WithAnotherFunctionToAWriteIsReportedAndTimesOut).
void take_confirmation() {
    if (modbus.mb_rx[8] != write_registers) {
        FrmSetupTCP::show_tcp_status("Error writting registers feedback", status_colour::red);
        return;
    }
    FrmSetupTCP::show_tcp_status("Registers written", status_colour::green);
    modbus.mb_write_pending = false;
    close_transaction();
}

} // namespace

bool transaction_open() {
    return gateway.Timer1.Enabled() || modbus.mb_waiting;
}

void FC16MB_write(i32 address, i16 count) {
    if (modbus.mb_timed_out || gateway.Winsock_A.State() != socket_state::connected) {
        refuse_write();
        return;
    }
    const std::string frame = write_frame(address, count);
    send(frame, false);
    gateway.Timer1.Enabled(true);
    modbus.mb_write_pending = true;
    WaitForWinsock();
    modbus.mb_tick_count = 0;
}

void FC3MB_read(i32 address, i16 count) {
    // Looks like a mistake and stays: unlike a write it goes out behind a time-out too
    // (ModbusWrite.AReadReturnsAtOnceAndIsSentThoughWritesAreGivenUp).
    modbus.mb_tx = read_frame(address, count);
    send({reinterpret_cast<const char*>(modbus.mb_tx.data()), modbus.mb_tx.size()}, true);
    modbus.mb_read_pending = true;
    modbus.mb_tick_count = 0;
    gateway.Timer1.Enabled(true);
}

void WaitForWinsock() {
    modbus.mb_waiting = true;
    while ((!modbus.mb_send_done || modbus.mb_write_pending) && !modbus.mb_timed_out) {
        // An answer that comes before the frame is handed over stops the clock: without it the wait could
        // last for ever.
        gateway.Timer1.Enabled(true);
        wait_events(answer_wait_step);
    }
    gateway.Timer1.Enabled(false);
    modbus.mb_waiting = false;
}

void FrmSetupTCP::Winsock_A_DataArrival(i32 bytesTotal) {
    // Looks like a mistake and stays: an arrival is taken to be a whole answer, one in pieces counts as
    // several (ModbusAnswer.ByteByByteTimesOutAtFirst), and what an earlier answer left behind the bytes of
    // this one is looked at too (ModbusAnswer.ThatIsShorterThanItsCountShowsWhatEarlierOnesLeft).
    for (i32 index = 1; index <= bytesTotal; ++index)
        at(modbus.mb_rx, index) = gateway.Winsock_A.GetData();
    if (modbus.mb_read_active) take_registers();
    if (modbus.mb_write_active) take_confirmation();
}

void FrmSetupTCP::Timer1_tick() {
    if (++modbus.mb_tick_count <= tick_limit) return;
    close_transaction();
    FrmSetupTCP::show_tcp_status("Modbus Time Out", status_colour::red);
    modbus.mb_timed_out = true;
    modbus.mb_write_pending = false;
    gateway.Timer_reconnect.Enabled(true);
}

} // namespace tyxo
