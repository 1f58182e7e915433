#include "settings/serial_ports.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "link/hex.h"
#include "platform/debug_output.h"
#include "platform/port_list.h"

#include <algorithm>

namespace tyxo {

namespace serial {

void get_serial_port() {
    int error_code = 0;
    const auto found = list_ports(error_code);
    if (!found) {
        debug_output("get_serial_port: Cannot Access to Registry" + Registry::win_error_text(error_code));
        return;
    }
    std::vector<i16>& ports = serial_ports.emplace();
    constexpr std::size_t letters = 3;
    for (const port_name& port : *found) {
        debug_output(port.source + ' ' + port.name);
        const std::string number = port.name.substr(std::min(letters, port.name.size()));
        ports.push_back(round_even<i16>(leading_number(number)));
    }
    std::ranges::sort(ports);
}

} // namespace serial

namespace Registry {

std::string win_error_text(int error_code) {
    constexpr std::size_t limit = 256;
    std::string text = system_error_text(error_code).substr(0, limit);
    std::erase_if(text, [](char letter) { return letter == '\r' || letter == '\n'; });
    if (!text.empty()) return text;
    std::string digits = funct::hex4(error_code);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return "Unbekannter Windows-Fehler: &H" + digits;
}

} // namespace Registry
} // namespace tyxo
