#pragma once
// What has to be written into each file and what was, line by line. A file is kept as its length and a sum
// over its bytes; only what a power cut may still take is kept itself.

#include "words.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace months::check {

struct ledger_file {
    std::string path;
    int channel = -1; ///< whose log it is; none for the event file
    bool exists = false;
    bool asked = false;    ///< it may be created now
    bool lossy = false;    ///< the disk refused it or its header: its lines may be lost until one is taken
    bool may_skip = false; ///< one was taken behind that, others of this handler may be lost
    std::int64_t gone_at = -1; ///< when it was taken away under whoever has it open
    int open = 0;              ///< so many logs go on in it
    std::string header;        ///< wanted in a new file
    bool header_due = false, header_may_miss = false;
    std::string last_refused; ///< it may be tried again
    std::string due;          ///< lines that have to be written, from `due_from` on
    std::size_t due_from = 0;
    bool dirty = false; ///< something has to be there at the end of the handler
    bool torn = false;  ///< a power cut tore its last line

    byte_sum whole;   ///< what was written
    byte_sum sure;    ///< what a power cut leaves
    std::string tail; ///< what lies between
    struct piece {
        std::int64_t sure_from; ///< ms
        std::size_t length;
    };
    std::deque<piece> pieces; ///< of the tail, each one sure no earlier than that before it
    char last_byte = '\n';
    enum class loss { none, torn_line, unsynced } may_miss = loss::none;
    bool found = false;

    [[nodiscard]] std::string_view due_lines() const { return std::string_view(due).substr(due_from); }
};

class ledger {
  public:
    ledger(complaint_book& book, const clock_now& now) : book_(book), now_(now) {}

    /// The file of this path, made known if it is not.
    ledger_file& at(std::string_view path);
    [[nodiscard]] ledger_file* known(std::string_view path);

    void opens(ledger_file& file, std::string header);
    void closes(ledger_file& file);
    /// Has to be written before the handler ends.
    void demand(ledger_file& file, std::string_view line);
    void forget_demands(ledger_file& file);

    void created(ledger_file& file);
    /// Whether this is what has to be written next.
    [[nodiscard]] bool fits(const ledger_file& file, std::string_view text) const;
    void appended(ledger_file& file, std::string_view text);
    void refused(ledger_file& file, std::string_view text);
    void gone(ledger_file& file);
    void handler_ended();

    /// So long the disk takes for a sync from now on, in ms.
    void disk_takes(std::int64_t ms) { sync_ms_ = ms; }

    void program_gone(ledger_file::loss may_miss);
    void found(ledger_file& file, std::string_view content, bool at_first);
    void all_found();

  private:
    void forget_synced(ledger_file& file) const;
    void write(ledger_file& file, std::string_view text, std::int64_t sure_from);
    std::size_t take_header(ledger_file& file, std::string_view text);
    void take_line(ledger_file& file, std::string_view line);
    void check_rest(ledger_file& file);
    void touch(ledger_file& file);

    complaint_book& book_;
    const clock_now& now_;
    std::int64_t sync_ms_ = 0;
    struct text_hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    template <class Value> using by_path = std::unordered_map<std::string, Value, text_hash, std::equal_to<>>;
    by_path<std::unique_ptr<ledger_file>> files_;
    by_path<ledger_file*> names_; ///< by the path as it was told
    std::vector<ledger_file*> dirty_;
};

} // namespace months::check
