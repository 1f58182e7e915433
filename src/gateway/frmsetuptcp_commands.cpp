// What the window's buttons do with the numbers in its boxes: read, write, save.

#include "basics/failure.h"
#include "basics/number.h"
#include "basics/number_text.h"
#include "gateway/connection.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo::FrmSetupTCP {

namespace {

constexpr i32 greatest_sendbase = 65410;
constexpr i32 greatest_regbase = 62300;
constexpr i32 greatest_port = 65535;
constexpr i32 greatest_register = 65535;

/// A number above the limit is replaced in its box; there is no limit below.
void limit(std::string& box, i32 greatest) {
    if (leading_number(box) > greatest) box = plain(greatest);
}

void limit_manual() {
    limit(state.Txt_sendbase, greatest_sendbase);
    limit(state.Txt_regnumber, most_registers);
}

i32 start_register() {
    return round_even<i32>(leading_number(state.Txt_sendbase));
}
i16 register_count() {
    return round_even<i16>(leading_number(state.Txt_regnumber));
}

/// True if a manual command may go on; a missing connection is told.
bool connected() {
    if (gateway.Winsock_A.State() == socket_state::connected) return true;
    show_tcp_status("Device not connected via TCP/IP", status_colour::red);
    return false;
}

/// The boxes of the first registers as the values of the next write, and back as what is written.
void take_values(i16 count) {
    for (i16 index = 0; index < count; ++index) {
        std::string& box = at(state.Text4, index);
        const double number = leading_number(box);
        if (number < 0 || number > greatest_register) box = plain(greatest_register);
        i32& value = at(modbus.mb_reg, index);
        value = round_even<i32>(leading_number(box));
        box = plain(value);
    }
}

void save_address() {
    const std::string& address = state.Txt_IPadr;
    Ini::ini_write("IPAdr", address);
    settings.IPAdr = address;
    // Looks like a mistake and stays: without an automatic connection the socket is closed from here on,
    // while `tcp_connected` is what it was (SaveTcp.LeavesTheStateOfTheConnectionAsItWas).
    gateway.Winsock_A.Close();
    gateway.Winsock_A.RemoteHost(address);
}

void save_port() {
    std::string& box = state.Txt_IPport;
    limit(box, greatest_port);
    Ini::ini_write("IPPort", box);
    // Looks like a mistake and stays: the box allows 65535, the setting 32767. In between the save ends here
    // (SaveTcp.APortAbove32767OverflowsBehindItsStoring).
    settings.IPport = round_even<i16>(leading_number(box));
}

void save_register_base() {
    std::string& box = state.Txt_regbase;
    limit(box, greatest_regbase);
    Ini::ini_write("REGBase", signed_form(leading_number(box)));
    settings.REGBase = round_even<i32>(leading_number(box));
}

void save_register_count() {
    limit(state.Txt_regnumber, most_registers);
    Ini::ini_write("REGNumber", state.Txt_regnumber);
    settings.REGNumber = register_count();
}

/// Looks like a mistake and stays: the spellings differ from those that the start reads. They find the same
/// keys (SaveTcp.FindsTheKeysOfTheStartInTheirOtherSpelling).
void save_options() {
    Ini::ini_write("IPAutoC", signed_form(settings.IPAutoC));
    Ini::ini_write("IpenaTRS", signed_form(settings.IPenaTRS));
    Ini::ini_write("Ippolar", signed_form(settings.IPpolar));
    Ini::ini_write("Ipsysstat", signed_form(settings.IPsysstat));
}

/// Looks like a mistake and stays: only in the file, the setting in memory remains until the next start
/// (SaveTcp.StoresEverythingInOrderToTheByte).
void save_start_register() {
    limit(state.Txt_sendbase, greatest_sendbase);
    Ini::ini_write("Sendbase", state.Txt_sendbase);
}

} // namespace

void Cmd_read_R_click() {
    if (transaction_open() || !connected()) return;
    limit_manual();
    FC3MB_read(start_register(), register_count());
}

void Cmd_write_R_click() {
    if (transaction_open() || !connected()) return;
    limit_manual();
    const i16 count = register_count();
    take_values(count);
    FC16MB_write(start_register(), count);
}

void Cmd_save_click() {
    {
        const Ini::one_change all_keys; // what was stored before a port that overflows stays stored
        save_address();
        save_port();
        save_register_base();
        save_register_count();
        save_options();
        save_start_register();
    }
    if (settings.IPAutoC == 1) TCP_connect(1);
}

} // namespace tyxo::FrmSetupTCP
