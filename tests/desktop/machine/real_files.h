#pragma once
// A folder of real files for one test, and what a disk or a system may refuse.

#include "platform/desktop/output_file.h"
#include "platform/files.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tyxo::real_files {

namespace fs = std::filesystem;

class in_a_folder : public testing::Test {
  protected:
    void SetUp() override {
        desktop::longest_disk_wait = std::chrono::seconds(10); // however busy the machine is
        std::string name = (fs::temp_directory_path() / "tyxo_files_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override {
        fs::remove_all(folder);
        desktop::longest_disk_wait = usual_wait;
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }
    /// What stands in the file now.
    [[nodiscard]] std::string content_now(const std::string& name) const {
        return read_file(path(name)).value_or("none");
    }
    /// The same when every step has ended: on a busy machine some take longer than anybody waits for them.
    [[nodiscard]] std::string content(const std::string& name) const {
        desktop::finish_files(std::chrono::seconds(10));
        return content_now(name);
    }
    [[nodiscard]] ino_t inode(const std::string& name) const {
        struct stat status {};
        ::stat(path(name).c_str(), &status);
        return status.st_ino;
    }
    [[nodiscard]] long files_in_folder() const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    fs::path folder;
    const std::chrono::milliseconds usual_wait = desktop::longest_disk_wait;
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

/// A user without the rights of root, for this thread and for those that it starts.
class without_rights {
  public:
    without_rights() { static_cast<void>(::syscall(SYS_setresuid, -1, 65534, -1)); }
    ~without_rights() { static_cast<void>(::syscall(SYS_setresuid, -1, before_, -1)); }
    without_rights(const without_rights&) = delete;
    without_rights& operator=(const without_rights&) = delete;

  private:
    uid_t before_ = ::geteuid();
};

} // namespace tyxo::real_files
