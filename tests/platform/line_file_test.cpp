// A file of lines by itself: what it writes at once, what it brings to the disk and when, and what it does
// when the disk refuses or the file goes away.

#include "platform/line_file.h"

#include "basics/failure.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

using namespace simulation;
using texts = std::vector<std::string>;

class LineFile : public testing::Test {
  protected:
    LineFile() { fresh_world(); }

    /// Opened late, so that a mistake about the clock's zero shows.
    void open(const std::string& header = "") {
        advance(5000);
        lines.open({.path = "a.txt", .header = header});
        world().synced.clear();
    }

    line_file lines;
};

TEST_F(LineFile, WithoutAPlaceRefusesLinesAndSaysWhy) {
    const auto why = attempt([this] { lines.print("lost"); });
    EXPECT_EQ(why, "The file is not open");
    EXPECT_FALSE(lines.print_at_once("lost"));
}

TEST_F(LineFile, APlaceThatDoesNotOpenSaysSoOfEachLine) {
    EXPECT_THROW(lines.open({.path = "missing/a.txt"}), failure);
    EXPECT_EQ(attempt([this] { lines.print("lost"); }), "The file is not open");
    EXPECT_FALSE(lines.print_at_once("lost"));
}

TEST_F(LineFile, EachLineIsSyncedAtOnceWhereThePlaceWantsIt) {
    lines.open({.path = "a.txt", .each_line = true});
    world().synced.clear();
    lines.print("one");
    lines.print("two");
    EXPECT_EQ(world().synced, (texts{"a.txt", "a.txt"}));
}

TEST_F(LineFile, LinesOfOtherPlacesAreSyncedSoonAndAtTheClosing) {
    open();
    EXPECT_TRUE(lines.on_disk().is_open());
    lines.print("one");
    EXPECT_EQ(world().synced, texts{});
    lines.close();
    EXPECT_EQ(world().synced, texts{"a.txt"});
    EXPECT_FALSE(lines.on_disk().is_open());
    EXPECT_EQ(attempt([this] { lines.print("lost"); }), "The file is not open");
}

TEST_F(LineFile, AnotherPlaceClosesTheFirstOne) {
    open();
    lines.print("one");
    lines.open({.path = "b.txt"});
    EXPECT_EQ(world().synced, texts{"a.txt"});
}

TEST_F(LineFile, AFileThatWentAwayIsSyncedBeforeItIsBegunAnew) {
    open();
    lines.print("one");
    take_file_away("a.txt");
    advance(1000);
    lines.print("two");
    EXPECT_EQ(world().synced, texts{"a.txt"});
    EXPECT_EQ(file("a.txt"), "two\r\n");
}

TEST_F(LineFile, AFolderOfItsOwnIsMadeAnewWithTheFile) {
    for (const bool own_folder : {true, false}) {
        fresh_world();
        world().folders.insert("logs");
        file_place place{.path = "logs/a.txt"};
        if (own_folder) place.folder = "logs";
        lines.open(place);
        take_file_away("logs/a.txt");
        world().folders.erase("logs");
        advance(1000);
        if (own_folder)
            lines.print("one");
        else
            EXPECT_THROW(lines.print("one"), failure);
        EXPECT_EQ(file("logs/a.txt"), own_folder ? "one\r\n" : "");
    }
}

TEST_F(LineFile, ThePathIsLookedAtOnceASecondFromTheLastLookOn) {
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

TEST_F(LineFile, AHeaderThatIsDueComesBeforeTheNextLine) {
    world().refused_writes = 1;
    open("header\r\n");
    EXPECT_FALSE(lines.print_at_once("one"));
    EXPECT_EQ(file("a.txt"), "");
    lines.print("one");
    EXPECT_EQ(file("a.txt"), "header\r\none\r\n");
    EXPECT_TRUE(lines.print_at_once("two"));
    EXPECT_EQ(file("a.txt"), "header\r\none\r\ntwo\r\n");
}

TEST_F(LineFile, AHeaderThatIsDueIsNotWrittenIntoAnotherFileThatCame) {
    world().disk_space = 0;
    open("header\r\n");
    EXPECT_THROW(lines.print("no room"), failure);
    take_file_away("a.txt");
    put_file("a.txt", "somebody's line\r\n");
    world().disk_space.reset();
    advance(1000);
    lines.print("mine");
    EXPECT_EQ(file("a.txt"), "somebody's line\r\nmine\r\n");
}

TEST_F(LineFile, ALineAtOnceIsWrittenUntilThePathIsToBeLookedAt) {
    open();
    EXPECT_TRUE(lines.print_at_once("one"));
    advance(999);
    EXPECT_TRUE(lines.print_at_once("two"));
    advance(1);
    EXPECT_FALSE(lines.print_at_once("three"));
    EXPECT_EQ(file("a.txt"), "one\r\ntwo\r\n");
    lines.print("three");
    EXPECT_TRUE(lines.print_at_once("four"));
    EXPECT_EQ(file("a.txt"), "one\r\ntwo\r\nthree\r\nfour\r\n");
}

TEST_F(LineFile, ALineAtOnceThatTheDiskRefusesIsFalseAndLeavesNothing) {
    open();
    world().refused_writes = 1;
    EXPECT_FALSE(lines.print_at_once("one"));
    EXPECT_EQ(file("a.txt"), "");
    EXPECT_TRUE(lines.print_at_once("two"));
    EXPECT_EQ(file("a.txt"), "two\r\n");
}

} // namespace
} // namespace tyxo
