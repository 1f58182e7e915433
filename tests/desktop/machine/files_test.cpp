// Files of the real machine: what is on the disk after a write, a failed write and a kill.

#include "real_files.h"

#include "basics/failure.h"

#include <algorithm>
#include <fstream>
#include <sys/wait.h>

namespace {

using namespace tyxo;
using namespace tyxo::real_files;

class Files : public in_a_folder {};

/// How often the other threads of this process have gone to sleep.
long sleeps_of_others() {
    long sum = 0;
    for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() == std::to_string(::gettid())) continue;
        std::ifstream status(thread.path() / "status");
        for (std::string word; status >> word;) {
            long count = 0;
            if (word == "voluntary_ctxt_switches:" && status >> count) sum += count;
        }
    }
    return sum;
}

TEST_F(Files, ALineEndsInCrLfAndIsWithTheSystemAtOnce) {
    output_file file;
    file.open({.path = path("a.xlg")});
    file.print("one");
    EXPECT_EQ(content_now("a.xlg"), "one\r\n"); // the file is still open
}

TEST_F(Files, LinesWakeNoOtherThread) {
    output_file file;
    file.open({.path = path("a.xlg")});
    file.print("one"); // asks for the sync of all that follow
    const long before = sleeps_of_others();
    for (int line = 0; line < 1000; ++line)
        file.print("more");
    EXPECT_LT(sleeps_of_others() - before, 100); // once a second a thread looks whether the file is there
}

TEST_F(Files, ANewFileBeginsWithItsHeaderAndAnOldOneKeepsItsLines) {
    output_file file;
    file.open({.path = path("a"), .header = "header\r\n"});
    file.print("old");
    file.open({.path = path("a"), .header = "header\r\n"});
    file.print("more");
    EXPECT_EQ(content("a"), "header\r\nold\r\nmore\r\n");
}

TEST_F(Files, AFileThatCannotBeReadKeepsItsLines) {
    std::ofstream(path("a")) << "old\r\n";
    fs::permissions(folder, fs::perms::all);
    fs::permissions(folder / "a", fs::perms{0222});
    {
        const without_rights nobody;
        ASSERT_EQ(content("a"), "none");
        output_file file;
        file.open({.path = path("a"), .header = "header\r\n"});
        file.print("more");
    }
    fs::permissions(folder / "a", fs::perms{0600});
    EXPECT_EQ(content("a"), "old\r\nmore\r\n");
}

TEST_F(Files, ATornLastLineIsEndedBeforeTheFirstNewOne) {
    for (const std::string torn : {"<REC1> 13", "<REC1> 13\r", "x", "\n"}) {
        std::ofstream(path("a")) << torn;
        output_file file;
        file.open({.path = path("a")});
        EXPECT_EQ(content("a"), torn);
        file.print("next");
        EXPECT_EQ(content("a"), torn + (torn.back() == '\r' ? "\n" : "\r\n") + "next\r\n");
    }
}

TEST_F(Files, ALinkToNoFileYetMakesThatFile) {
    fs::create_symlink(folder / "real", folder / "a");
    output_file file;
    file.open({.path = path("a"), .header = "header\r\n"});
    EXPECT_EQ(content("real"), "header\r\n");
}

TEST_F(Files, AFileThatWasMovedAwayIsBegunAnewAfterASecond) {
    output_file file;
    file.open({.path = path("logs/a"), .folder = path("logs"), .header = "header\r\n"});
    file.print("one");
    fs::rename(folder / "logs", folder / "archive");
    ::usleep(1'000'000);
    file.print("two");
    EXPECT_EQ(content("archive/a"), "header\r\none\r\n");
    EXPECT_EQ(content("logs/a"), "header\r\ntwo\r\n");
}

TEST_F(Files, ABackslashSeparatesFolders) {
    make_folder(path("logs"));
    output_file file;
    file.open({.path = folder.string() + "\\logs\\a"});
    file.print("x");
    EXPECT_EQ(content("logs/a"), "x\r\n");
}

TEST_F(Files, NamesAreUtf8OnTheDiskAndAnsiInTheSystem) {
    output_file file;
    file.open({.path = path("M\xFCller.xlg")});
    EXPECT_TRUE(fs::exists(folder / "M\xC3\xBCller.xlg"));
}

TEST_F(Files, ALineThatDoesNotFitLeavesNoPieceAndLaterLinesFitAgain) {
    output_file file;
    file.open({.path = path("a")});
    file.print("12345678");
    {
        const full_disk full(15); // room for half of the next line
        EXPECT_THROW(file.print("abcdefgh"), failure);
    }
    EXPECT_EQ(content("a"), "12345678\r\n");
    file.print("next");
    EXPECT_EQ(content("a"), "12345678\r\nnext\r\n");
}

TEST_F(Files, AHeaderThatDoesNotFitLeavesNoPieceAndComesBeforeTheFirstLine) {
    output_file file;
    {
        const full_disk full(5);
        file.open({.path = path("a"), .header = "header\r\n"});
        EXPECT_THROW(file.print("x"), failure);
    }
    EXPECT_EQ(content("a"), "");
    file.print("next");
    EXPECT_EQ(content("a"), "header\r\nnext\r\n");
}

TEST_F(Files, ADeviceWithoutSpaceIsAFailureWithADescription) {
    output_file file;
    file.open({.path = "/dev/full"});
    try {
        file.print("line");
        FAIL() << "the line was taken";
    } catch (const failure& why) {
        EXPECT_STREQ(why.what(), "No space left on device");
    }
}

TEST_F(Files, AMissingFolderIsAFailure) {
    output_file file;
    EXPECT_THROW(file.open({.path = path("missing/a")}), failure);
    EXPECT_THROW(file.print("x"), failure);
    file.close();
    EXPECT_THROW(file.print("x"), failure);
}

TEST_F(Files, MakeFolderMakesOneLevelAndFailsForAnExistingOne) {
    make_folder(path("one"));
    EXPECT_TRUE(fs::is_directory(folder / "one"));
    EXPECT_THROW(make_folder(path("one")), failure);
    EXPECT_THROW(make_folder(path("two/three")), failure);
}

/// A line that the writer was told is written is in the file, whole; a kernel may cut only the write that a
/// kill comes into.
TEST_F(Files, AKilledWriterLosesNoFinishedLine) {
    int lines[2];
    ASSERT_EQ(::pipe(lines), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
        output_file file;
        file.open({.path = path("a.xlg")});
        for (int line = 0;; ++line) {
            file.print("line " + std::to_string(line));
            if (::write(lines[1], &line, sizeof line) != sizeof line) ::_exit(1);
        }
    }
    int last = -1;
    for (int line = 0; last < 2000 && ::read(lines[0], &line, sizeof line) == sizeof line;)
        last = line;
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    for (int line = 0; ::close(lines[1]) == 0 || ::read(lines[0], &line, sizeof line) == sizeof line;)
        last = std::max(last, line); // what it had still said
    ::close(lines[0]);
    std::string finished;
    for (int line = 0; line <= last; ++line)
        finished += "line " + std::to_string(line) + "\r\n";
    EXPECT_TRUE(content("a.xlg").starts_with(finished));

    output_file file; // the next run
    file.open({.path = path("a.xlg")});
    file.print("after");
    EXPECT_TRUE(content("a.xlg").ends_with("\r\nafter\r\n"));
}

} // namespace
