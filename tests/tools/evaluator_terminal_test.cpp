// The pseudo-terminals of the simulated Evaluator, with real devices. Nothing here waits for time to pass.

#include "plant.h"
#include "pseudo_terminal.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <sstream>
#include <unistd.h>

using namespace tyxo::evaluator_sim;
namespace fs = std::filesystem;

namespace {

class EvaluatorTerminal : public testing::Test {
  protected:
    EvaluatorTerminal() {
        std::string pattern = (fs::temp_directory_path() / "evaluator-XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        link = folder + "/ports/COM1";
    }
    ~EvaluatorTerminal() override { fs::remove_all(folder); }

    int open_device() const { return ::open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK); }

    /// What arrives at the program's side, up to `count` bytes; waits only while bytes are under way.
    static std::string read_device(int device, size_t count) {
        std::string bytes;
        pollfd input{device, POLLIN, 0};
        while (bytes.size() < count && ::poll(&input, 1, 2000) > 0) {
            char buffer[4096];
            const ssize_t got = ::read(device, buffer, sizeof buffer);
            if (got <= 0) break;
            bytes.append(buffer, static_cast<size_t>(got));
        }
        return bytes;
    }

    std::string folder;
    std::string link;
};

} // namespace

TEST_F(EvaluatorTerminal, LinkIsMadeAndRemoved) {
    {
        PseudoTerminal terminal;
        terminal.open(link);
        EXPECT_EQ(fs::read_symlink(link).string(), terminal.device());
    }
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
}

TEST_F(EvaluatorTerminal, StaleLinkIsReplacedAnyOtherFileIsNot) {
    fs::create_directories(folder + "/ports");
    fs::create_symlink("/nowhere", link);
    PseudoTerminal terminal;
    terminal.open(link);
    EXPECT_EQ(fs::read_symlink(link).string(), terminal.device());
    const std::string file = folder + "/ports/COM2";
    std::ofstream(file) << "mine";
    PseudoTerminal other;
    EXPECT_THROW(other.open(file), std::runtime_error);
    EXPECT_FALSE(other.is_open());
    EXPECT_TRUE(fs::is_regular_file(file));
}

TEST_F(EvaluatorTerminal, LinkThatPointsElsewhereIsLeftAlone) {
    PseudoTerminal terminal;
    terminal.open(link);
    fs::remove(link);
    fs::create_symlink("/nowhere", link);
    terminal.close();
    EXPECT_EQ(fs::read_symlink(link).string(), "/nowhere");
}

TEST_F(EvaluatorTerminal, BytesAreLostWhileNobodyListens) {
    PseudoTerminal terminal;
    terminal.open(link);
    terminal.read();
    EXPECT_FALSE(terminal.listened());
    EXPECT_EQ(terminal.write("early"), 0U);
    const int device = open_device();
    terminal.read();
    EXPECT_TRUE(terminal.listened());
    EXPECT_EQ(terminal.write("late\r\n\x03"), 7U);
    EXPECT_EQ(read_device(device, 7), "late\r\n\x03");
    ::close(device);
}

TEST_F(EvaluatorTerminal, NextProgramGetsNothingStale) {
    PseudoTerminal terminal;
    terminal.open(link);
    int device = open_device();
    terminal.read();
    terminal.write("unread");
    ::close(device);
    terminal.read();
    device = open_device();
    terminal.read();
    terminal.write("fresh");
    EXPECT_EQ(read_device(device, 5), "fresh");
    ::close(device);
}

TEST_F(EvaluatorTerminal, BytesWrittenRightBeforeAClosingArrive) {
    PseudoTerminal terminal;
    terminal.open(link);
    const int device = open_device();
    ASSERT_EQ(::write(device, ":80092f\r\n", 9), 9);
    ::close(device);
    EXPECT_EQ(terminal.read(), ":80092f\r\n");
}

TEST_F(EvaluatorTerminal, FullBufferDropsInsteadOfBlocking) {
    PseudoTerminal terminal;
    terminal.open(link);
    const int device = open_device();
    terminal.read();
    size_t sent = 0;
    const std::string block(1000, 'x');
    for (int i = 0; i < 1000; ++i)
        sent += terminal.write(block);
    EXPECT_LT(sent, 200000U);
    ::close(device);
}

TEST_F(EvaluatorTerminal, VanishedDeviceHangsUpAndReturnsUnderItsLink) {
    std::vector<std::string> said;
    Plant plant(folder + "/ports", 1, Pace::off, [&](const std::string& line) { said.push_back(line); });
    plant.attach(1, 1);
    EXPECT_THROW(plant.attach(2, 1), std::runtime_error);
    const int device = open_device();
    plant.vanish(1);
    pollfd state{device, POLLIN, 0};
    EXPECT_EQ(::poll(&state, 1, 2000), 1);
    EXPECT_TRUE(state.revents & POLLHUP);
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
    ::close(device);
    plant.bring_back(1);
    EXPECT_EQ(fs::read_symlink(link).string(), plant.device(1));
    EXPECT_EQ(said.at(1), "channel 1 vanished");
}

TEST_F(EvaluatorTerminal, RecordHoldsWhatTheProgramReceived) {
    Plant plant(folder + "/ports", 1, Pace::off, [](const std::string&) {});
    plant.attach(1, 1);
    const std::string file = folder + "/record.bin";
    plant.record(1, file);
    plant.channel(1).send_body(":99lost");
    plant.step(0);
    plant.step(0.1);
    const int device = open_device();
    plant.step(0.2);
    plant.channel(1).send_body(":08");
    plant.channel(1).send(3, 0);
    std::string received;
    for (int i = 1; i < 40; ++i) {
        plant.step(0.2 + 0.05 * i);
    }
    received = read_device(device, 7 + 4 * 265);
    std::ostringstream recorded;
    recorded << std::ifstream(file, std::ios::binary).rdbuf();
    EXPECT_EQ(received.size(), 7U + 4 * 265);
    EXPECT_EQ(recorded.str(), received);
    ::close(device);
}
