#include "platform/desktop/port_nodes.h"

#include "platform/port_list.h"

#include <QSerialPortInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <map>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tyxo {

namespace desktop {

namespace {

namespace fs = std::filesystem;

struct node_family {
    std::string_view prefix;
    int first; ///< number of the node 0
    int last;
};

constexpr int greatest_number = 32767; // port numbers have 16 bits

constexpr std::array<node_family, 3> families{{
    {"ttyS", 1, 64},
    {"ttyUSB", 65, 128},
    {"ttyACM", 129, greatest_number},
}};

const std::string link_prefix = "ports/COM";
const std::string rule_prefix = "/dev/COM";

std::optional<int> whole_number(std::string_view text) {
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// The lock file of a device, where the serial port library looks for it, if there is one.
std::optional<std::string> lock_file_of(const std::string& device) {
    constexpr std::string_view nodes = "/dev/";
    std::string name = device.starts_with(nodes) ? device.substr(nodes.size()) : device;
    std::ranges::replace(name, '/', '_');
    name.insert(0, "/LCK..");
    for (const std::string folder : {"/var/lock", "/etc/locks", "/var/spool/locks", "/var/spool/uucp", "/tmp",
                                     "/var/tmp", "/var/lock/lockdev", "/run/lock"}) {
        std::error_code error;
        if (fs::path file = folder + name; fs::exists(file, error)) return file.string();
    }
    return std::nullopt;
}

std::string owner_of(const std::string& file) {
    struct stat status {};
    const passwd* const owner = stat(file.c_str(), &status) == 0 ? getpwuid(status.st_uid) : nullptr;
    return owner != nullptr ? owner->pw_name : "somebody else";
}

} // namespace

std::optional<int> number_of_node(std::string_view name) {
    for (const node_family& family : families) {
        if (!name.starts_with(family.prefix)) continue;
        const auto index = whole_number(name.substr(family.prefix.size()));
        if (index && *index >= 0 && *index <= family.last - family.first) return family.first + *index;
    }
    return std::nullopt;
}

std::string node_of_number(int number) {
    for (const node_family& family : families) {
        if (number < family.first || number > family.last) continue;
        return "/dev/" + std::string(family.prefix) + std::to_string(number - family.first);
    }
    return {};
}

std::optional<std::string> path_of(int number) {
    for (std::string path : {link_prefix + std::to_string(number), rule_prefix + std::to_string(number),
                             node_of_number(number)}) {
        if (device_of(path)) return path;
    }
    return std::nullopt;
}

std::optional<std::string> device_of(const std::string& path) {
    std::error_code error;
    const fs::path device = fs::canonical(path, error);
    if (error) return std::nullopt;
    return device.string();
}

std::optional<std::string> missing_right(int number, const std::string& device) {
    if (access(device.c_str(), R_OK | W_OK) == 0 || errno != EACCES) return std::nullopt;
    std::string text = "COM" + std::to_string(number) + ": no right to open " + device;
    struct stat status {};
    if (stat(device.c_str(), &status) == 0) {
        const group* const owner = getgrgid(status.st_gid);
        text += ", join the group " + (owner != nullptr ? owner->gr_name : std::to_string(status.st_gid));
    }
    return text;
}

std::optional<std::string> lock_in_the_way(int number, const std::string& device) {
    const auto file = lock_file_of(device);
    if (!file) return std::nullopt;
    pid_t holder = 0;
    std::ifstream(*file) >> holder;
    const std::string text = "COM" + std::to_string(number) + ": " + device;
    const std::string process = "process " + std::to_string(holder);
    if (holder > 0 && (kill(holder, 0) == 0 || errno == EPERM))
        return text + " is in use by " + process + ", lock file " + *file;
    const std::string ended = holder > 0 ? " of " + process + ", which has ended" : "";
    return text + " is locked by the file " + *file + ended + ": delete it, it belongs to " + owner_of(*file);
}

namespace {

/// Ports that a folder names "COM<n>".
void add_named_ports(std::map<int, std::string>& ports, const fs::path& folder) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with("COM") || !entry.exists(error)) continue;
        const auto number = whole_number(name.substr(3));
        if (number && *number > 0 && *number <= greatest_number)
            ports.emplace(*number, entry.path().string());
    }
}

} // namespace

} // namespace desktop

std::optional<std::vector<port_name>> list_ports(int& error_code) {
    std::map<int, std::string> ports;
    desktop::add_named_ports(ports, "ports");
    desktop::add_named_ports(ports, "/dev");
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const auto number = desktop::number_of_node(info.portName().toStdString());
        if (number) ports.emplace(*number, info.systemLocation().toStdString());
    }
    std::vector<port_name> names;
    names.reserve(ports.size());
    for (const auto& [number, source] : ports)
        names.push_back({source, "COM" + std::to_string(number)});
    error_code = 0;
    return names;
}

std::string system_error_text(int error_code) {
    return error_code > 0 ? std::strerror(error_code) : std::string();
}

} // namespace tyxo
