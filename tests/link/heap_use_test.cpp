// A channel in steady state takes nothing from the heap, from the byte on the line to the line of the log.
// This file counts the allocations of the whole test program between two marks.

#include "app/wiring.h"
#include "link/frames.h"
#include "link/link_world.h"
#include "link/start_stop.h"
#include "logging/log.h"

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace {

bool counting = false;
std::size_t allocations = 0;

void* counted(std::size_t size) {
    if (counting) ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) {
    return counted(size);
}
void* operator new[](std::size_t size) {
    return counted(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace tyxo::link_testing {
namespace {

constexpr const char* log_file = "logs/Engine 1/20260702Qu_Engine 1.xlg";

class HeapUse : public testing::Test {
  protected:
    HeapUse() {
        simulation::fresh_world();
        simulation::world().folders.insert("logs");
        simulation::put_file("tyxo.ini", "[tyxo]\r\nlogpath 1=logs\\\r\nlocation 1=Engine 1\r\n");
        wire();
        sensor::state.max_sensors = 1;
        sensor::state.comport[0] = 11;
        sensor::state.upd_periode = 250;
        sensor::state.channels[0].connected = true;
        start_log_ch(0);
        simulation::receive(0, parameters(1500));
        // The simulated disk and debug output must not take memory of their own later.
        simulation::world().files[log_file].reserve(std::size_t{1} << 20);
        simulation::world().debug.reserve(1000);
    }
    ~HeapUse() override { simulation::fresh_world(); }

    /// The allocations of receiving the pieces `count` times, after a first time that may take what it needs.
    static std::size_t allocations_of(const std::vector<std::string>& pieces, int count) {
        const auto receive_all = [&] {
            for (const std::string& piece : pieces)
                simulation::receive(0, piece);
        };
        receive_all();
        allocations = 0;
        counting = true;
        for (int round = 0; round < count; ++round)
            receive_all();
        counting = false;
        return allocations;
    }
    static std::size_t log_lines(std::string_view tag) {
        const std::string text = simulation::file(log_file);
        std::size_t found = 0;
        for (auto place = text.find(tag); place != text.npos; place = text.find(tag, place + 1))
            ++found;
        return found;
    }
};

TEST_F(HeapUse, TheCounterCounts) {
    allocations = 0;
    counting = true;
    void* const bytes = ::operator new(10);
    void* const more = ::operator new[](10);
    counting = false;
    ::operator delete(bytes);
    ::operator delete[](more);
    EXPECT_EQ(allocations, 2U);
}

TEST_F(HeapUse, ALongValuesFrameWithItsLogLineAllocatesNothing) {
    const std::string frame = measured({.tsignal = 33768, .speed = 15000, .tvoltage = 33000, .teff_dc = 450});
    EXPECT_EQ(allocations_of({frame}, 1000), 0U);
    EXPECT_EQ(log_lines("<REC1> "), 1001U);
}

TEST_F(HeapUse, AValuesFrameInTwoEventsAllocatesNothing) {
    const std::string frame = measured({.tsignal = 33768, .speed = 15000});
    EXPECT_EQ(allocations_of({frame.substr(0, 9), frame.substr(9)}, 100), 0U);
    EXPECT_EQ(log_lines("<REC1> "), 101U);
}

TEST_F(HeapUse, CurvesWithTheirLogLinesAllocateNothing) {
    // An engine with which the values per cylinder can be computed.
    sensor::state.zyl_speed_range = 1;
    sensor::state.channels[0].numzyl = 6;
    sensor::state.channels[0].firingangle = {0, 120, 120, 120, 120, 120};
    sensor::state.channels[0].alarmlevel = 3;
    std::vector<std::string> blocks;
    for (const char* code : {"03", "04"}) {
        for (i32 block = 1; block <= 4; ++block)
            blocks.push_back(curve_block(code, block, 60000));
    }
    EXPECT_EQ(allocations_of(blocks, 50), 0U);
    EXPECT_EQ(log_lines("<REC2> "), 51U);
    EXPECT_EQ(log_lines("<REC3> "), 51U);
}

TEST_F(HeapUse, AStatusFrameWithoutNewsAllocatesNothing) {
    EXPECT_EQ(allocations_of({status({.alarm = 0x0020})}, 100), 0U);
}

} // namespace
} // namespace tyxo::link_testing
