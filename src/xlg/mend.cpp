#include "xlg/mend.h"

#include "basics/failure.h"
#include "xlg/files.h"
#include "xlg/log_clock.h"
#include "xlg/log_reader.h"

#include <algorithm>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t words_kept = 60; // characters of a dropped line

class log_mender {
  public:
    log_mender(const std::string& name, byte_source source, const text_sink& copy, const text_sink& out)
        : reader_(std::move(source)), name_(name), copy_(copy), out_(out) {}

    bool run() {
        entry one;
        while (reader_.next(one))
            take(one);
        if (!reader_.fault_of_file().empty()) tell(nullptr, "left as it is: " + reader_.fault_of_file());
        out_(name_ + ": " + counted(dropped_, "line", "lines") + " dropped, " +
             counted(ends_, "line end", "line ends") + " added, " + counted(left_, "fault", "faults") +
             " left; " + counted(written_, "byte", "bytes") + "\n");
        return dropped_ + ends_ + left_ == 0;
    }

  private:
    void take(const entry& one) {
        if (one.state == damage::broken) return drop(one);
        for (const std::string& fault : one.faults_of_log)
            tell(&one.at, "left as it is: " + fault);
        if (one.state == damage::doubtful) tell(&one.at, "left as it is: " + one.faults.front());
        if (one.seconds >= 0) last_seconds_ = one.seconds;
        if (one.at.end != line_end::cr_lf) {
            ++ends_;
            out_(name_ + ":" + std::to_string(one.at.number) + ": line end added\n");
        }
        write(one.at.text);
    }

    /// Only the first line of a second header is told, and stands for all of it.
    void drop(const entry& one) {
        ++dropped_;
        const bool of_header = one.kind == line_kind::header;
        if (of_header && one.faults.empty() && !one.second_header) return;
        std::string what = one.faults.empty() ? "" : one.faults.front();
        for (const std::string& fault : one.faults_of_log)
            what += (what.empty() ? "" : "; ") + fault;
        out_(name_ + ":" + std::to_string(one.at.number) + ": dropped: " + what + " (" +
             shortened(one.at.text) + ")\n");
        if (!of_header || one.second_header) write(comment_of(one));
    }

    [[nodiscard]] std::string comment_of(const entry& one) const {
        std::string words(one.at.text.substr(0, words_kept));
        std::ranges::replace_if(words, is_no_text, '?');
        return "<!-- " + iso_time({}, 0, last_seconds_) + " xlg mend dropped line " +
               std::to_string(one.at.number) + ": " + words + " -->";
    }

    void tell(const line* where, const std::string& what) {
        ++left_;
        out_(name_ + (where != nullptr ? ":" + std::to_string(where->number) : "") + ": " + what +
             (where != nullptr ? " (" + shortened(where->text) + ")" : "") + "\n");
    }

    void write(std::string_view text) {
        line_.assign(text).append("\r\n");
        copy_(line_);
        written_ += static_cast<std::int64_t>(line_.size());
    }

    log_reader reader_;
    std::string name_;
    const text_sink& copy_;
    const text_sink& out_;
    std::string line_;
    int last_seconds_ = 0;
    std::int64_t dropped_ = 0;
    std::int64_t ends_ = 0;
    std::int64_t left_ = 0;
    std::int64_t written_ = 0;
};

} // namespace

bool mend_log(const std::string& name, byte_source source, const text_sink& copy, const text_sink& out) {
    return log_mender(name, std::move(source), copy, out).run();
}

bool mend_file(const std::string& name, byte_source source, const std::string& path, bool force,
               const text_sink& out) {
    if (same_file(name, path)) throw failure(path + " is the log itself");
    bool sound = false;
    write_whole_file(path, force,
                     [&](const text_sink& copy) { sound = mend_log(name, std::move(source), copy, out); });
    return sound;
}

} // namespace tyxo::xlg
