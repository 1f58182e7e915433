// The server over real sockets of this machine: one thread, client and server take turns.

#include "controller/session.h"
#include "controller_frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <memory>
#include <netinet/in.h>
#include <random>
#include <sys/socket.h>

namespace tyxo::controller_sim {
namespace {

struct Client {
    explicit Client(int port) : socket(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        connected = ::connect(socket.number(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    void send(const std::string& text) {
        ::send(socket.number(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    }
    /// What has arrived; `ended` tells that the server has closed.
    std::string take() {
        char text[4096];
        const ssize_t count = ::recv(socket.number(), text, sizeof text, MSG_DONTWAIT);
        ended = count == 0 || (count < 0 && errno != EAGAIN);
        return count > 0 ? std::string(text, static_cast<std::size_t>(count)) : "";
    }
    Descriptor socket;
    bool connected = false;
    bool ended = false;
};

class ControllerServer : public testing::Test {
  protected:
    /// Serves until something for the client has arrived, at most a second.
    std::string exchange(Client& client, const std::string& request) {
        client.send(request);
        std::string answer;
        for (int round = 0; round < 100 && answer.empty() && !client.ended; ++round) {
            session.server().serve(0.01);
            answer = client.take();
        }
        return answer;
    }
    int port() { return session.server().port(); }

    std::vector<std::string> said;
    Session session{0, 1000, [this](const std::string& line) { said.push_back(line); }};
    const std::string right = bytes({0, 0, 0, 0, 0, 6, 1, 16, 0, 5, 0, 1});
};

TEST_F(ControllerServer, AWriteAndAReadOverAConnection) {
    Client client(port());
    EXPECT_EQ(exchange(client, write_frame(5, {77})), right);
    EXPECT_EQ(exchange(client, read_frame(5, 1)), bytes({0, 0, 0, 0, 0, 5, 1, 3, 2, 0, 77}));
    EXPECT_EQ(said.back(), "connection 1 opened");
}

TEST_F(ControllerServer, FramesAreCountedByBlockAndChannel) {
    Client client(port());
    exchange(client, write_frame(1000, std::vector<unsigned>(6, 1)));
    exchange(client, write_frame(1226, std::vector<unsigned>(3, 3)));
    exchange(client, write_frame(1230, std::vector<unsigned>(50, 3)));
    exchange(client, write_frame(1230, std::vector<unsigned>(50, 3)));
    exchange(client, write_frame(1390, std::vector<unsigned>(50, 4)));
    exchange(client, write_frame(7, {1}));
    exchange(client, read_frame(7, 1));
    exchange(client, write_frame(7, {}));
    session.report();
    for (const char* line : {"channel 1 frames 1=1 8=0 3=0 4=0", "channel 2 frames 1=0 8=0 3=0 4=0",
                             "channel 3 frames 1=0 8=1 3=2 4=0", "channel 4 frames 1=0 8=0 3=0 4=1",
                             "others writes=1 reads=1 refused=1"})
        EXPECT_NE(std::find(said.begin(), said.end(), line), said.end()) << line;
}

TEST_F(ControllerServer, ARequestInSingleBytesAndTwoInOnePieceAreAnswered) {
    Client client(port());
    const std::string frame = write_frame(5, {77});
    for (const char byte : frame.substr(0, frame.size() - 1))
        EXPECT_EQ((client.send({byte}), session.server().serve(0), client.take()), "");
    EXPECT_EQ(exchange(client, frame.substr(frame.size() - 1)), right);
    std::string both = exchange(client, frame + frame);
    both += both.size() < 24 ? exchange(client, "") : "";
    EXPECT_EQ(both, right + right);
}

TEST_F(ControllerServer, ALateAnswerKeepsItsTime) {
    using clock = std::chrono::steady_clock;
    session.server().behave({Manner::late, 60});
    Client client(port());
    const auto begin = clock::now();
    EXPECT_EQ(exchange(client, write_frame(5, {77})), right);
    EXPECT_GE(clock::now() - begin, std::chrono::milliseconds(60));
    EXPECT_LT(clock::now() - begin, std::chrono::milliseconds(500));
}

TEST_F(ControllerServer, ASplitAnswerArrivesInTwoPieces) {
    session.server().behave({Manner::split, 5});
    Client client(port());
    EXPECT_EQ(exchange(client, write_frame(5, {77})), right.substr(0, 5));
    EXPECT_EQ(exchange(client, ""), right.substr(5));
}

TEST_F(ControllerServer, ASilentServerKeepsTheConnection) {
    session.server().behave({Manner::silent, 0});
    Client client(port());
    client.send(write_frame(5, {77}));
    for (int round = 0; round < 5; ++round)
        session.server().serve(0.005);
    EXPECT_EQ(client.take(), "");
    EXPECT_FALSE(client.ended);
    EXPECT_EQ(session.server().image()[5], 77);
}

TEST_F(ControllerServer, CloseEndsEveryConnectionAndNewOnesComeIn) {
    Client one(port());
    Client other(port());
    session.server().serve(0.01);
    ASSERT_EQ(session.server().connections(), 2U);
    session.server().close_connections();
    one.take();
    other.take();
    EXPECT_TRUE(one.ended && other.ended);
    Client third(port());
    EXPECT_EQ(exchange(third, write_frame(5, {77})), right);
}

TEST_F(ControllerServer, AClosedPortRefusesWhileOpenConnectionsGoOn) {
    Client before(port());
    session.server().serve(0.01);
    session.server().stop_listening();
    EXPECT_FALSE(Client(port()).connected);
    EXPECT_EQ(exchange(before, write_frame(5, {77})), right);
    session.server().listen();
    EXPECT_TRUE(Client(port()).connected);
}

TEST_F(ControllerServer, AStreamWithoutSenseEndsItsConnectionOnly) {
    Client good(port());
    Client bad(port());
    EXPECT_EQ(exchange(bad, bytes({0, 0, 0, 0, 255, 255, 1, 16})), "");
    EXPECT_TRUE(bad.ended);
    EXPECT_EQ(exchange(good, write_frame(5, {77})), right);
    EXPECT_NE(std::find(said.begin(), said.end(), "connection 2 sent an impossible length"), said.end());
}

TEST_F(ControllerServer, RandomBytesOnManyConnectionsAreSurvived) {
    std::mt19937 chance(7);
    for (int round = 0; round < 300; ++round) {
        Client client(port());
        std::string noise(chance() % 600, '\0');
        for (char& byte : noise)
            byte = static_cast<char>(chance() % 256);
        if (round % 2 == 0) noise = bytes({0, 0, 0, 0, 0}) + noise;
        client.send(noise);
        session.server().serve(0);
        session.server().serve(0);
    }
    for (int round = 0; round < 20; ++round)
        session.server().serve(0.001);
    EXPECT_EQ(session.server().connections(), 0U) << "seed 7";
    Client client(port());
    EXPECT_EQ(exchange(client, write_frame(5, {77})), right);
}

TEST_F(ControllerServer, ConnectionsBeyondTheLimitAreTurnedAway) {
    std::vector<std::unique_ptr<Client>> clients;
    for (std::size_t i = 0; i < most_connections + 5; ++i) {
        clients.push_back(std::make_unique<Client>(port()));
        session.server().serve(0);
    }
    EXPECT_EQ(session.server().connections(), most_connections);
    clients.back()->take();
    EXPECT_TRUE(clients.back()->ended);
    EXPECT_EQ(exchange(*clients.front(), write_frame(5, {77})), right);
}

TEST_F(ControllerServer, AClientThatNeverReadsIsClosed) {
    Client client(port());
    std::string many;
    for (int i = 0; i < 300; ++i)
        many += read_frame(0, 125);
    for (int round = 0; round < 400 && session.server().connections() < 2; ++round) {
        client.send(many);
        session.server().serve(0);
        if (round > 3 && session.server().connections() == 0) return;
    }
    FAIL() << "it is served without end";
}

TEST_F(ControllerServer, AClientThatReadsLateGetsEveryByte) {
    constexpr int requests = 2700; // 700 kB of answers, more than fits on the way at once
    Client client(port());
    exchange(client, write_frame(0, {0x1122, 0x3344, 0x5566}));
    std::string one = exchange(client, read_frame(0, 125));
    for (int i = 0; i < requests; ++i) {
        client.send(read_frame(0, 125));
        if (i % 100 == 0) session.server().serve(0);
    }
    std::string all;
    for (int round = 0; round < 3000 && all.size() < requests * one.size(); ++round) {
        session.server().serve(0.001);
        all += client.take();
    }
    ASSERT_EQ(all.size(), requests * one.size());
    for (std::size_t i = 0; i < requests; ++i)
        ASSERT_EQ(all.compare(i * one.size(), one.size(), one), 0) << i;
}

TEST_F(ControllerServer, InputEndsAWait) {
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const Descriptor ours(ends[0]);
    const Descriptor theirs(ends[1]);
    EXPECT_FALSE(session.server().serve(0.01, ours.number()));
    ASSERT_EQ(::send(theirs.number(), "x", 1, 0), 1);
    EXPECT_TRUE(session.server().serve(60, ours.number()));
}

TEST_F(ControllerServer, APortInUseIsTold) {
    EXPECT_THROW(Server(port(), {}), std::runtime_error);
}

} // namespace
} // namespace tyxo::controller_sim
