// Port numbers and the device nodes behind them.

#include "platform/desktop/port_nodes.h"

#include "platform/port_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tyxo;
namespace fs = std::filesystem;

/// A working directory of its own, with a folder of port links.
class PortNodes : public testing::Test {
  protected:
    void SetUp() override {
        before = fs::current_path();
        std::string name = (fs::temp_directory_path() / "tyxo_ports_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        fs::current_path(name);
        fs::create_directory("ports");
    }
    void TearDown() override {
        const fs::path own = fs::current_path();
        fs::current_path(before);
        fs::remove_all(own);
    }

    fs::path before;
};

TEST_F(PortNodes, KernelNodesHaveTheirNumbers) {
    EXPECT_EQ(desktop::number_of_node("ttyS0"), 1);
    EXPECT_EQ(desktop::number_of_node("ttyS63"), 64);
    EXPECT_EQ(desktop::number_of_node("ttyUSB0"), 65);
    EXPECT_EQ(desktop::number_of_node("ttyUSB2"), 67);
    EXPECT_EQ(desktop::number_of_node("ttyACM0"), 129);
}

TEST_F(PortNodes, OtherNamesHaveNone) {
    EXPECT_EQ(desktop::number_of_node("tty0"), std::nullopt);
    EXPECT_EQ(desktop::number_of_node("ttyS"), std::nullopt);
    EXPECT_EQ(desktop::number_of_node("ttyS1x"), std::nullopt);
    EXPECT_EQ(desktop::number_of_node("ttyS64"), std::nullopt); // would be the number of ttyUSB0
    EXPECT_EQ(desktop::number_of_node("rfcomm0"), std::nullopt);
}

TEST_F(PortNodes, NumbersLeadBackToTheirNodes) {
    EXPECT_EQ(desktop::node_of_number(1), "/dev/ttyS0");
    EXPECT_EQ(desktop::node_of_number(64), "/dev/ttyS63");
    EXPECT_EQ(desktop::node_of_number(65), "/dev/ttyUSB0");
    EXPECT_EQ(desktop::node_of_number(128), "/dev/ttyUSB63");
    EXPECT_EQ(desktop::node_of_number(129), "/dev/ttyACM0");
    EXPECT_EQ(desktop::node_of_number(0), "");
}

TEST_F(PortNodes, TheLinkInTheWorkingDirectoryComesFirst) {
    fs::create_symlink("/dev/null", "ports/COM1");
    EXPECT_EQ(desktop::path_of(1), "ports/COM1");
    EXPECT_EQ(desktop::device_of("ports/COM1"), "/dev/null");
}

TEST_F(PortNodes, ALinkToADeviceThatIsGoneIsNoPort) {
    fs::create_symlink("/dev/pts/no_such_node", "ports/COM300");
    EXPECT_EQ(desktop::path_of(300), std::nullopt);
    EXPECT_EQ(desktop::device_of("ports/COM300"), std::nullopt);
}

TEST_F(PortNodes, TheListHoldsTheLinksAndNoDanglingOne) {
    fs::create_symlink("/dev/null", "ports/COM301");
    fs::create_symlink("/dev/pts/no_such_node", "ports/COM302");
    fs::create_symlink("/dev/null", "ports/COMX");
    fs::create_symlink("/dev/null", "ports/COM99999"); // port numbers have 16 bits
    fs::create_symlink("/dev/null", "ports/COM0");
    int error_code = -1;
    const auto ports = list_ports(error_code);
    ASSERT_TRUE(ports.has_value());
    const auto listed = [&](const std::string& name) {
        return std::ranges::count(*ports, name, &port_name::name);
    };
    EXPECT_EQ(listed("COM301"), 1);
    EXPECT_EQ(listed("COM302"), 0);
    EXPECT_EQ(listed("COMX"), 0);
    EXPECT_EQ(listed("COM99999"), 0);
    EXPECT_EQ(listed("COM0"), 0);
}

TEST_F(PortNodes, AMissingRightNamesThePortTheDeviceAndTheGroup) {
    if (::geteuid() != 0) {
        EXPECT_NE(desktop::missing_right(7, "/etc/shadow")
                      ->find("COM7: no right to open /etc/shadow, join the group "),
                  std::string::npos);
        return;
    }
    // Root may open anything: ask as somebody else.
    fs::permissions(fs::current_path(), fs::perms::all);
    int answer[2];
    ASSERT_EQ(::pipe(answer), 0);
    if (::fork() == 0) {
        if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(1);
        const std::string text = desktop::missing_right(7, "/etc/shadow").value_or("nothing");
        ::_exit(::write(answer[1], text.data(), text.size()) > 0 ? 0 : 1);
    }
    std::string text(200, ' ');
    const ssize_t length = ::read(answer[0], text.data(), text.size());
    ASSERT_GT(length, 0);
    EXPECT_EQ(text.substr(0, static_cast<std::size_t>(length)),
              "COM7: no right to open /etc/shadow, join the group shadow");
}

TEST_F(PortNodes, ADeviceThatMayBeOpenedHasNoObstacle) {
    EXPECT_EQ(desktop::missing_right(7, "/dev/null"), std::nullopt);
}

/// A device of no other test, and its lock file as a port library writes it.
class LockedPort : public PortNodes {
  protected:
    void lock(pid_t holder) const { std::ofstream(file) << holder << "\nplant\nhost\n"; }
    void TearDown() override {
        fs::remove(file);
        PortNodes::TearDown();
    }
    [[nodiscard]] std::string said() const {
        return desktop::lock_in_the_way(65, device).value_or("nothing");
    }

    const std::string name = "tyxo_test" + std::to_string(::getpid());
    const std::string device = "/dev/" + name;
    const std::string file = "/var/lock/LCK.." + name;
};

TEST_F(LockedPort, WithoutALockFileHasNoLockInItsWay) {
    EXPECT_EQ(said(), "nothing");
}

TEST_F(LockedPort, NamesTheProcessThatUsesTheDevice) {
    lock(::getpid());
    EXPECT_EQ(said(), "COM65: " + device + " is in use by process " + std::to_string(::getpid()) +
                          ", lock file " + file);
}

TEST_F(LockedPort, NamesTheFileThatAnEndedProcessLeftAndWhoMayDeleteIt) {
    const pid_t ended = ::fork();
    if (ended == 0) ::_exit(0);
    ::waitpid(ended, nullptr, 0);
    lock(ended);
    EXPECT_EQ(said(), "COM65: " + device + " is locked by the file " + file + " of process " +
                          std::to_string(ended) + ", which has ended: delete it, it belongs to " +
                          ::getpwuid(::geteuid())->pw_name);
}

TEST_F(LockedPort, NamesALockFileThatTellsNoProcess) {
    std::ofstream(file) << "?";
    EXPECT_EQ(said(), "COM65: " + device + " is locked by the file " + file + ": delete it, it belongs to " +
                          ::getpwuid(::geteuid())->pw_name);
}

} // namespace
