// A file of lines by itself: what is brought to the disk and when, and what is done when the disk refuses.

#include "platform/line_file.h"

#include "basics/failure.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using texts = std::vector<std::string>;

class LineFileSteps : public testing::Test {
  protected:
    LineFileSteps() { fresh_world(); }
    ~LineFileSteps() override { fresh_world(); }

    /// Opened late, so that a mistake about the clock's zero shows.
    void open(const std::string& header = "") {
        advance(5000);
        lines.open({.path = "a.txt", .header = header});
        world().synced.clear();
    }

    line_file lines;
};

TEST_F(LineFileSteps, WithoutAPlaceRefusesLinesAndSaysWhy) {
    const auto why = attempt([this] { lines.print("lost"); });
    EXPECT_EQ(why, "The file is not open");
    EXPECT_FALSE(lines.print_at_once("lost"));
}

TEST_F(LineFileSteps, APlaceThatDoesNotOpenSaysSoOfEachLine) {
    EXPECT_THROW(lines.open({.path = "missing/a.txt"}), failure);
    EXPECT_EQ(attempt([this] { lines.print("lost"); }), "The file is not open");
    EXPECT_FALSE(lines.print_at_once("lost"));
}

TEST_F(LineFileSteps, EachLineIsSyncedAtOnceWhereThePlaceWantsIt) {
    lines.open({.path = "a.txt", .each_line = true});
    world().synced.clear();
    lines.print("one");
    lines.print("two");
    EXPECT_EQ(world().synced, (texts{"a.txt", "a.txt"}));
}

TEST_F(LineFileSteps, LinesOfOtherPlacesAreSyncedSoonAndAtTheClosing) {
    open();
    lines.print("one");
    EXPECT_EQ(world().synced, texts{});
    lines.close();
    EXPECT_EQ(world().synced, texts{"a.txt"});
    EXPECT_FALSE(lines.on_disk().is_open());
    EXPECT_EQ(attempt([this] { lines.print("lost"); }), "The file is not open");
}

TEST_F(LineFileSteps, AnotherPlaceClosesTheFirstOne) {
    open();
    lines.print("one");
    lines.open({.path = "b.txt"});
    EXPECT_EQ(world().synced, texts{"a.txt"});
}

TEST_F(LineFileSteps, AFileThatWentAwayIsSyncedBeforeItIsBegunAnew) {
    open();
    lines.print("one");
    take_file_away("a.txt");
    advance(1000);
    lines.print("two");
    EXPECT_EQ(world().synced, texts{"a.txt"});
    EXPECT_EQ(file("a.txt"), "two\r\n");
}

TEST_F(LineFileSteps, ThePathIsLookedAtOnceASecondFromTheLastLookOn) {
    open();
    advance(1500);
    lines.print("looked");
    take_file_away("a.txt");
    advance(999);
    lines.print("into the file that went away");
    EXPECT_EQ(file("a.txt"), "");
    advance(1);
    lines.print("anew");
    EXPECT_EQ(file("a.txt"), "anew\r\n");
}

TEST_F(LineFileSteps, AHeaderThatIsDueIsNotWrittenIntoAnotherFileThatCame) {
    world().refused_writes = 1;
    open("header\r\n");
    take_file_away("a.txt");
    put_file("a.txt", "somebody's line\r\n");
    advance(1000);
    lines.print("mine");
    EXPECT_EQ(file("a.txt"), "somebody's line\r\nmine\r\n");
}

TEST_F(LineFileSteps, AHeaderThatIsDueComesBeforeTheNextLine) {
    world().refused_writes = 1;
    open("header\r\n");
    EXPECT_FALSE(lines.print_at_once("one"));
    EXPECT_EQ(file("a.txt"), "");
    lines.print("one");
    EXPECT_EQ(file("a.txt"), "header\r\none\r\n");
    EXPECT_TRUE(lines.print_at_once("two"));
}

TEST_F(LineFileSteps, ALineAtOnceIsWrittenUntilThePathIsToBeLookedAt) {
    open();
    EXPECT_TRUE(lines.print_at_once("one"));
    advance(999);
    EXPECT_TRUE(lines.print_at_once("two"));
    advance(1);
    EXPECT_FALSE(lines.print_at_once("three"));
    EXPECT_EQ(file("a.txt"), "one\r\ntwo\r\n");
}

TEST_F(LineFileSteps, ALineAtOnceThatTheDiskRefusesIsFalse) {
    open();
    world().refused_writes = 1;
    EXPECT_FALSE(lines.print_at_once("one"));
    EXPECT_EQ(file("a.txt"), "");
}

} // namespace
} // namespace tyxo
