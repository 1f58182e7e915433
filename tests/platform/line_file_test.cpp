// A line that is written at once, without looking after its file, and the header that comes before it.

#include "basics/failure.h"
#include "platform/line_file.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;

class LineFile : public testing::Test {
  protected:
    void SetUp() override { fresh_world(); }
    line_file file_;
};

TEST_F(LineFile, TakesALineAtOnceUntilTheNextLookAtItsPlace) {
    file_.open({.path = "a.log"});
    EXPECT_TRUE(file_.on_disk().is_open());
    advance(999);
    EXPECT_TRUE(file_.print_at_once("one"));
    advance(1);
    EXPECT_FALSE(file_.print_at_once("two"));
    EXPECT_EQ(file("a.log"), "one\r\n");
    file_.print("two");
    EXPECT_TRUE(file_.print_at_once("three"));
    EXPECT_EQ(file("a.log"), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(LineFile, TakesNoLineAtOnceThatIsMoreThanAWrite) {
    EXPECT_FALSE(file_.print_at_once("closed"));
    world().refused_writes = 1;
    file_.open({.path = "a.log", .header = "header\r\n"});
    EXPECT_FALSE(file_.print_at_once("its header is due"));
    EXPECT_EQ(file("a.log"), "");
    file_.print("one");
    world().refused_writes = 1;
    EXPECT_FALSE(file_.print_at_once("refused"));
    EXPECT_TRUE(file_.print_at_once("two"));
    EXPECT_EQ(file("a.log"), "header\r\none\r\ntwo\r\n");
}

TEST_F(LineFile, WritesAHeaderThatIsDueOnlyIntoAnEmptyFile) {
    world().disk_space = 0;
    file_.open({.path = "a.log", .header = "header\r\n"});
    EXPECT_THROW(file_.print("no room"), failure);
    take_file_away("a.log");
    put_file("a.log", "another's\r\n");
    world().disk_space.reset();
    advance(1000);
    file_.print("one");
    EXPECT_EQ(file("a.log"), "another's\r\none\r\n");
}

TEST_F(LineFile, MakesItsFolderAnewWithItsFile) {
    for (const bool own_folder : {true, false}) {
        fresh_world();
        world().folders.insert("logs");
        file_place place{.path = "logs/a.log"};
        if (own_folder) place.folder = "logs";
        file_.open(place);
        take_file_away("logs/a.log");
        world().folders.erase("logs");
        advance(1000);
        if (own_folder)
            file_.print("one");
        else
            EXPECT_THROW(file_.print("one"), failure);
        EXPECT_EQ(file("logs/a.log"), own_folder ? "one\r\n" : "");
    }
}

} // namespace
} // namespace tyxo
