// Files of the real machine: what is on the disk after a write, a failed write and a kill.

#include "platform/files.h"

#include "basics/failure.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tyxo;
namespace fs = std::filesystem;

class files : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "tyxo_files_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override { fs::remove_all(folder); }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }
    [[nodiscard]] std::string content(const std::string& name) const {
        return read_file(path(name)).value_or("none");
    }

    fs::path folder;
};

/// Lets no file of this process grow beyond `bytes`, as on a disk that is full.
class full_disk {
  public:
    explicit full_disk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~full_disk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, old_handler_);
    }
    full_disk(const full_disk&) = delete;
    full_disk& operator=(const full_disk&) = delete;

  private:
    rlimit before_{};
    void (*old_handler_)(int) = SIG_DFL;
};

TEST_F(files, a_line_ends_in_cr_lf_and_is_on_the_disk_at_once) {
    output_file file;
    file.create(path("a.xlg"));
    file.print("one");
    EXPECT_EQ(content("a.xlg"), "one\r\n"); // the file is still open
}

TEST_F(files, create_empties_and_append_keeps) {
    output_file file;
    file.create(path("a"));
    file.print("old");
    file.append_to(path("a"));
    file.print("more");
    EXPECT_EQ(content("a"), "old\r\nmore\r\n");
    file.create(path("a"));
    EXPECT_EQ(content("a"), "");
}

TEST_F(files, a_backslash_separates_folders) {
    make_folder(path("logs"));
    output_file file;
    file.create(folder.string() + "\\logs\\a");
    file.print("x");
    EXPECT_EQ(content("logs/a"), "x\r\n");
}

TEST_F(files, names_are_utf_8_on_the_disk_and_ansi_in_the_system) {
    output_file file;
    file.create(path("M\xFCller.xlg"));
    EXPECT_TRUE(fs::exists(folder / "M\xC3\xBCller.xlg"));
}

TEST_F(files, a_line_that_does_not_fit_leaves_no_piece_and_later_lines_fit_again) {
    output_file file;
    file.create(path("a"));
    file.print("12345678");
    {
        const full_disk full(15); // room for half of the next line
        EXPECT_THROW(file.print("abcdefgh"), failure);
    }
    EXPECT_EQ(content("a"), "12345678\r\n");
    file.print("next");
    EXPECT_EQ(content("a"), "12345678\r\nnext\r\n");
}

TEST_F(files, a_device_without_space_is_a_failure_with_a_description) {
    output_file file;
    file.append_to("/dev/full");
    try {
        file.print("line");
        FAIL() << "the line was taken";
    } catch (const failure& why) {
        EXPECT_STREQ(why.what(), "No space left on device");
    }
}

TEST_F(files, a_missing_folder_is_a_failure) {
    output_file file;
    EXPECT_THROW(file.create(path("missing/a")), failure);
    EXPECT_FALSE(file.is_open());
    EXPECT_THROW(file.print("x"), failure);
}

TEST_F(files, make_folder_makes_one_level_and_fails_for_an_existing_one) {
    make_folder(path("one"));
    EXPECT_TRUE(fs::is_directory(folder / "one"));
    EXPECT_THROW(make_folder(path("one")), failure);
    EXPECT_THROW(make_folder(path("two/three")), failure);
}

TEST_F(files, replace_keeps_the_mode_and_follows_a_link) {
    std::ofstream(path("real.ini")) << "old";
    fs::permissions(folder / "real.ini", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(folder / "real.ini", folder / "tyxo.ini");
    EXPECT_TRUE(replace_file(path("tyxo.ini"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "tyxo.ini"));
    EXPECT_EQ(content("real.ini"), "new");
    EXPECT_EQ(fs::status(folder / "real.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(files, replace_on_a_full_disk_leaves_the_old_file_alone) {
    std::ofstream(path("tyxo.ini")) << "old content";
    {
        const full_disk full(4);
        EXPECT_FALSE(replace_file(path("tyxo.ini"), "new content"));
    }
    EXPECT_EQ(content("tyxo.ini"), "old content");
    EXPECT_FALSE(fs::exists(folder / "tyxo.ini.new"));
}

TEST_F(files, a_kill_at_any_moment_leaves_the_old_or_the_new_file) {
    const std::string first(20000, '1');
    const std::string second(30000, '2');
    ASSERT_TRUE(replace_file(path("tyxo.ini"), first));
    std::mt19937 random(4711);
    for (int round = 0; round < 60; ++round) {
        const pid_t writer = ::fork();
        if (writer == 0) {
            for (;;) {
                replace_file(path("tyxo.ini"), second);
                replace_file(path("tyxo.ini"), first);
            }
        }
        ::usleep(std::uniform_int_distribution<useconds_t>(100, 5000)(random));
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        const std::string left = content("tyxo.ini");
        ASSERT_TRUE(left == first || left == second) << "round " << round << ": " << left.size() << " bytes";
    }
}

TEST_F(files, a_killed_writer_loses_no_finished_line) {
    int lines[2];
    ASSERT_EQ(::pipe(lines), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
        output_file file;
        file.create(path("a.xlg"));
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
    ::close(lines[0]);
    ::close(lines[1]);
    const std::string left = content("a.xlg");
    EXPECT_NE(left.find("line " + std::to_string(last) + "\r\n"), left.npos);
    EXPECT_TRUE(left.ends_with("\r\n"));
}

} // namespace
