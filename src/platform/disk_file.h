#pragma once
// The steps that a `line_file` is made of. Each may take as long as the disk takes.

#include <memory>
#include <string_view>

namespace tyxo {

enum class sync_time { soon, at_once };

class disk_file {
  public:
    disk_file();
    ~disk_file();
    disk_file(const disk_file&) = delete;
    disk_file& operator=(const disk_file&) = delete;

    /// Opens the file to write at its end, never emptying it, readable or not. True if there was none and it
    /// was created. Where a text follows at once, a new file may come to its place together with that text.
    /// Failure: it cannot be written.
    bool open(std::string_view path, bool text_follows);
    /// Puts the text at the end, with one system call. A line that a broken run has left without its CR LF is
    /// ended before. Failure: the disk does not take all of it; then nothing of it stays.
    void append(std::string_view text);
    /// False when nothing stands at the file's path any more, or another file.
    [[nodiscard]] bool in_place() const;
    [[nodiscard]] bool empty() const;
    /// Has what was appended brought to the disk, without waiting for that: at once, or within 5 s.
    void sync(sync_time when);
    void close();
    [[nodiscard]] bool is_open() const;

    struct state;
    /// For the platform's own use.
    [[nodiscard]] state& own() { return *state_; }

  private:
    std::unique_ptr<state> state_;
};

} // namespace tyxo
