// The settings file's replacement on the real machine: what stands on the disk afterwards, whatever was
// refused.

#include "real_files.h"

#include "platform/desktop/replace_file.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>

namespace {

using namespace tyxo;
using namespace tyxo::real_files;
using desktop::replace_system_file;

class ReplacedFile : public in_a_folder {};

/// The result of a step in a process whose mounts nobody else sees.
template <class Step> bool with_own_mounts(const Step& step) {
    const pid_t child = ::fork();
    if (child == 0) {
        const bool own = ::unshare(CLONE_NEWNS) == 0 || ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
        ::_exit(own && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 && step() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status == 0;
}

TEST_F(ReplacedFile, ReplaceKeepsTheModeAndFollowsALink) {
    std::ofstream(path("real.ini")) << "old";
    fs::permissions(folder / "real.ini", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(folder / "real.ini", folder / "tyxo.ini");
    EXPECT_TRUE(replace_system_file(path("tyxo.ini"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "tyxo.ini"));
    EXPECT_EQ(content("real.ini"), "new");
    EXPECT_EQ(fs::status(folder / "real.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ReplacedFile, ReplaceKeepsOwnerAndGroup) {
    const bool root = ::geteuid() == 0; // nobody else may give files away
    const uid_t owner = root ? 65534 : ::geteuid();
    const gid_t group = root ? 12345 : ::getegid();
    std::ofstream(path("tyxo.ini")) << "old";
    ASSERT_EQ(::chown(path("tyxo.ini").c_str(), owner, group), 0);
    fs::permissions(folder / "tyxo.ini", fs::perms{02660});
    EXPECT_TRUE(replace_system_file(path("tyxo.ini"), "new"));
    struct stat status {};
    ASSERT_EQ(::stat(path("tyxo.ini").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777U, 02660U);
    EXPECT_EQ(content("tyxo.ini"), "new");
}

TEST_F(ReplacedFile, AFileOfAForeignOwnerOrInALockedFolderIsWrittenInPlace) {
    for (const auto folder_mode : {fs::perms{0777}, fs::perms{0555}}) {
        std::ofstream(path("tyxo.ini")) << "old content";
        fs::permissions(folder / "tyxo.ini", fs::perms{0666});
        const ino_t before = inode("tyxo.ini");
        fs::permissions(folder, folder_mode);
        {
            const without_rights nobody;
            EXPECT_TRUE(replace_system_file(path("tyxo.ini"), "new"));
        }
        fs::permissions(folder, fs::perms{0777});
        EXPECT_EQ(content("tyxo.ini"), "new");
        EXPECT_TRUE(inode("tyxo.ini") == before || ::geteuid() != 0) << "it is the user's own";
        EXPECT_EQ(files_in_folder(), 1);
    }
}

TEST_F(ReplacedFile, AFullDiskLeavesAFileThatIsWrittenInPlaceAsItWas) {
    std::ofstream(path("tyxo.ini")) << "old content";
    fs::permissions(folder / "tyxo.ini", fs::perms{0666});
    fs::permissions(folder, fs::perms{0555});
    {
        const without_rights nobody;
        const full_disk full(15);
        EXPECT_FALSE(replace_system_file(path("tyxo.ini"), "new content that is longer"));
    }
    fs::permissions(folder, fs::perms{0777});
    EXPECT_EQ(content("tyxo.ini"), "old content");
}

TEST_F(ReplacedFile, AWriteProtectedFileIsLeftAloneThoughItsFolderMayBeWritten) {
    std::ofstream(path("tyxo.ini")) << "old";
    const uid_t owner = ::geteuid() == 0 ? 65534 : ::geteuid();
    ASSERT_EQ(::chown(path("tyxo.ini").c_str(), owner, ::getegid()), 0);
    fs::permissions(folder / "tyxo.ini", fs::perms{0444});
    fs::permissions(folder, fs::perms{0777});
    const without_rights nobody;
    EXPECT_FALSE(replace_system_file(path("tyxo.ini"), "new"));
    EXPECT_EQ(content("tyxo.ini"), "old");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacedFile, AFileThatIsAMountPointIsWrittenInPlace) {
    std::ofstream(path("real.ini")) << "old";
    std::ofstream(path("tyxo.ini")) << "below";
    EXPECT_TRUE(with_own_mounts([this] {
        return ::mount(path("real.ini").c_str(), path("tyxo.ini").c_str(), nullptr, MS_BIND, nullptr) == 0 &&
               replace_system_file(path("tyxo.ini"), "new");
    }));
    EXPECT_EQ(content("real.ini"), "new");
    EXPECT_EQ(files_in_folder(), 2);
}

TEST_F(ReplacedFile, TemporaryFilesOfOthersAreNoObstacleAndAreLeftAlone) {
    const std::string own = "tyxo.ini." + std::to_string(::getpid());
    for (const std::string& stale : {std::string("tyxo.ini.new"), own + "-0", own + "-1"})
        std::ofstream(path(stale)) << "somebody's";
    fs::create_directory(folder / (own + "-2"));
    std::ofstream(path("tyxo.ini")) << "old";
    const ino_t before = inode("tyxo.ini");
    EXPECT_TRUE(replace_system_file(path("tyxo.ini"), "new"));
    EXPECT_EQ(content("tyxo.ini"), "new");
    EXPECT_NE(inode("tyxo.ini"), before) << "it was replaced, not written over";
    EXPECT_EQ(content(own + "-0"), "somebody's");
    EXPECT_EQ(files_in_folder(), 5);
}

TEST_F(ReplacedFile, ReplaceOnAFullDiskLeavesTheOldFileAlone) {
    std::ofstream(path("tyxo.ini")) << "old content";
    {
        const full_disk full(4);
        EXPECT_FALSE(replace_system_file(path("tyxo.ini"), "new content"));
    }
    EXPECT_EQ(content("tyxo.ini"), "old content");
    EXPECT_EQ(files_in_folder(), 1);
}

TEST_F(ReplacedFile, AKillAtAnyMomentLeavesTheOldOrTheNewFile) {
    const std::string first(20000, '1');
    const std::string second(30000, '2');
    ASSERT_TRUE(replace_system_file(path("tyxo.ini"), first));
    std::mt19937 random(4711);
    for (int round = 0; round < 60; ++round) {
        const pid_t writer = ::fork();
        if (writer == 0) {
            for (;;) {
                replace_system_file(path("tyxo.ini"), second);
                replace_system_file(path("tyxo.ini"), first);
            }
        }
        ::usleep(std::uniform_int_distribution<useconds_t>(100, 5000)(random));
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        const std::string left = content("tyxo.ini");
        ASSERT_TRUE(left == first || left == second) << "round " << round << ": " << left.size() << " bytes";
    }
}

} // namespace
