// What the simulated disk keeps when the power goes, as little and as much as a real one may.

#include "platform/files.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

std::size_t nothing_more(std::size_t /*most*/) {
    return 0;
}
std::size_t everything(std::size_t most) {
    return most;
}

class Power : public testing::Test {
  protected:
    Power() { fresh_world(); }
    ~Power() override { fresh_world(); }

    output_file log_;
};

TEST_F(Power, LeavesWhatWasSynced) {
    log_.open({.path = "a.xlg", .header = "head\r\n"});
    log_.print("line");
    lose_power(nothing_more);
    EXPECT_EQ(file("a.xlg"), "head\r\n") << "the header is synced at once, the line is not";
}

TEST_F(Power, MayLeaveAllThatWasWritten) {
    log_.open({.path = "a.xlg", .header = "head\r\n"});
    log_.print("line");
    lose_power(everything);
    EXPECT_EQ(file("a.xlg"), "head\r\nline\r\n");
}

TEST_F(Power, TearsALine) {
    log_.open({.path = "a.xlg", .header = "head\r\n"});
    log_.print("line");
    lose_power([](std::size_t most) { return most / 2; });
    EXPECT_EQ(file("a.xlg"), "head\r\nlin");
}

TEST_F(Power, LeavesALineThatIsFiveSecondsOld) {
    log_.open({.path = "a.xlg"});
    log_.print("old");
    advance(1);
    log_.print("younger");
    advance(4999);
    log_.print("young");
    lose_power(nothing_more);
    EXPECT_EQ(file("a.xlg"), "old\r\n");
}

TEST_F(Power, LeavesNoLogWithoutItsHeader) {
    log_.open({.path = "a.xlg", .header = "head\r\n"});
    EXPECT_EQ(file("a.xlg"), "head\r\n");
    lose_power(nothing_more);
    EXPECT_EQ(file("a.xlg"), "head\r\n");
}

TEST_F(Power, LeavesLinesThatAreSyncedOneByOne) {
    log_.open({.path = "events.txt", .each_line = true});
    log_.print("one");
    log_.print("two");
    lose_power(nothing_more);
    EXPECT_EQ(file("events.txt"), "one\r\ntwo\r\n");
}

TEST_F(Power, TakesALineWhoseSyncIsStillUnderWay) {
    world().sync_ms = 3000;
    log_.open({.path = "events.txt", .each_line = true});
    log_.print("one");
    advance(3000);
    log_.print("two");
    lose_power(nothing_more);
    EXPECT_EQ(file("events.txt"), "one\r\n");
}

TEST_F(Power, TakesALineThatCameWhileASyncWasUnderWay) {
    world().sync_ms = 3000;
    log_.open({.path = "events.txt", .each_line = true});
    log_.print("one");
    advance(2000);
    log_.print("two");
    advance(1000);
    const machine before = world();
    lose_power(nothing_more);
    EXPECT_EQ(file("events.txt"), "one\r\n");
    world() = before;
    advance(2000);
    lose_power(nothing_more);
    EXPECT_EQ(file("events.txt"), "one\r\ntwo\r\n");
}

TEST_F(Power, MayTakeAFileThatIsNew) {
    log_.open({.path = "a.xlg"});
    log_.print("line");
    lose_power(nothing_more);
    EXPECT_FALSE(world().files.contains("a.xlg"));
}

TEST_F(Power, LeavesTheOldOrTheNewSettings) {
    put_file("tyxo.ini", "old");
    replace_file("tyxo.ini", "new");
    const machine before = world();
    lose_power(everything);
    EXPECT_EQ(file("tyxo.ini"), "new");
    world() = before;
    lose_power(nothing_more);
    EXPECT_EQ(file("tyxo.ini"), "old");
}

TEST_F(Power, LeavesSettingsThatAreFiveSecondsOld) {
    put_file("tyxo.ini", "old");
    replace_file("tyxo.ini", "new");
    advance(5000);
    lose_power(nothing_more);
    EXPECT_EQ(file("tyxo.ini"), "new");
}

} // namespace
} // namespace tyxo
