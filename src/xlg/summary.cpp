#include "xlg/summary.h"

#include "basics/number_text.h"
#include "xlg/log_clock.h"
#include "xlg/log_reader.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t most_gaps_told = 20;
constexpr std::size_t most_comments_told = 50;

/// When a line was written: what its time is needed for is told at the end only.
struct moment {
    int day = 0;
    int seconds = -1;
};

struct extreme {
    int value = 0;
    moment when;
};

/// Least and greatest of a column. All samples of a curve are one.
struct range {
    std::string_view name;
    std::string_view unit;
    bool any = false;
    extreme least;
    extreme most;

    void take(int value, moment when) {
        if (!any || value < least.value) least = {value, when};
        if (!any || value > most.value) most = {value, when};
        any = true;
    }
};

struct gap {
    std::int64_t seconds = 0;
    moment behind;
};

/// Takes the numbers of a record's body one by one.
class number_reader {
  public:
    explicit number_reader(std::string_view body) : at_(body.data()), end_(body.data() + body.size()) {}
    int next() {
        int value = 0;
        at_ = std::from_chars(at_, end_, value).ptr;
        if (at_ < end_) ++at_; // the blank
        return value;
    }

  private:
    const char* at_;
    const char* end_;
};

class log_summary {
  public:
    log_summary(const std::string& name, byte_source source, int gap_minutes, const text_sink& out)
        : reader_(std::move(source)), name_(name), gap_seconds_(60LL * gap_minutes), out_(out),
          kinds_(record_forms().size()) {
        for (const record_form& form : record_forms())
            for (const column_limit& column : form.columns)
                if (ranges_.empty() || ranges_.back().name != column.name)
                    ranges_.push_back({column.name, column.unit, false, {}, {}});
    }

    bool run() {
        entry one;
        while (reader_.next(one))
            take(one);
        tell();
        return left_out_ == 0 && reader_.fault_of_file().empty();
    }

  private:
    void take(const entry& one) {
        if (!one.sound()) ++left_out_;
        if (!one.sound() || one.seconds < 0) return;
        const clock_step step = clock_.take(one.seconds);
        now_ = {clock_.day(), one.seconds};
        if (first_.seconds < 0) first_ = now_;
        const bool stopped = one.kind == line_kind::comment && one.body == "Measure Stopped";
        if (step.seconds > gap_seconds_ && !stopped_) {
            ++gaps_found_;
            if (gaps_.size() < most_gaps_told) gaps_.push_back({step.seconds, last_});
        }
        stopped_ = stopped;
        last_ = now_;
        if (one.kind == line_kind::record) return take_record(one);
        ++(one.kind == line_kind::note ? notes_ : comments_);
        if (begins_alarm(one.body)) ++alarms_;
        count_comment(one.body);
    }

    void take_record(const entry& one) {
        const auto kind = static_cast<std::size_t>(one.form - record_forms().data());
        ++kinds_[kind];
        number_reader numbers(one.body);
        auto into = ranges_.begin();
        for (const column_limit& column : one.form->columns) {
            while (into->name != column.name)
                ++into;
            into->take(numbers.next(), now_);
        }
    }

    /// A log has few different ones; the memory for them is bounded all the same.
    void count_comment(std::string_view text) {
        const auto found = texts_.find(text);
        if (found != texts_.end())
            ++found->second;
        else if (texts_.size() < most_comments_told)
            texts_.emplace(text, 1);
        else
            ++other_texts_;
    }

    void tell() {
        text_ = name_ + "\n";
        tell_engine();
        tell_lines();
        for (const auto& [comment, count] : texts_)
            row("", grouped(count) + " x " + shortened(comment, 100));
        if (other_texts_ > 0) row("", grouped(other_texts_) + " x others");
        for (const range& each : ranges_)
            if (each.any)
                row(std::string(each.name), std::to_string(each.least.value) + " (" +
                                                time_of(each.least.when) + ") to " +
                                                std::to_string(each.most.value) + " (" +
                                                time_of(each.most.when) + ") " + std::string(each.unit));
        for (const gap& each : gaps_)
            row("Gap", duration(each.seconds) + " behind " + time_of(each.behind));
        if (gaps_found_ > gaps_.size())
            row("", counted(static_cast<std::int64_t>(gaps_found_ - gaps_.size()), "gap", "gaps") + " more");
        out_(text_ + "\n");
    }

    void tell_engine() {
        const auto value = [this](const char* tag) { return shortened(reader_.header().value(tag), 200); };
        row("Program", value("VERSION"));
        const std::string arrangement = value("CYLCONF") == "2" ? " cylinder V-type" : " cylinder in-line";
        row("Engine", value("NUMZYL") + arrangement + ", " + value("ENGINETYPE") + " stroke, nominal speed " +
                          value("RATEDSPEED") + " rpm, overspeed " + value("OVERSPEED") + " rpm");
        row("Firing order", value("FIRINGORDER"));
        row("Evaluator", "type code " + value("TYPECODE") + ", firmware " + value("FWVERS") +
                             ", serial number " + value("EVASNR"));
    }

    void tell_lines() {
        if (first_.seconds >= 0) row("Period", time_of(first_) + " to " + time_of(last_));
        std::string records;
        for (std::size_t kind = 0; kind < kinds_.size(); ++kind)
            records += (kind > 0 ? ", " : "") + record_forms()[kind].tag + " " + grouped(kinds_[kind]);
        row("Records", records);
        if (left_out_ > 0)
            row("Left out", counted(left_out_, "damaged line", "damaged lines") + ", see xlg check");
        if (!reader_.fault_of_file().empty()) row("Wrong", reader_.fault_of_file() + ", see xlg check");
        row("Comments",
            grouped(comments_) + ", notes " + grouped(notes_) + ", alarms that begin " + grouped(alarms_));
    }

    void row(const std::string& name, const std::string& content) {
        constexpr std::size_t width = 22;
        text_.append("  ").append(name).append(width - std::min(width, name.size()), ' ');
        text_.append(content).append("\n");
    }

    [[nodiscard]] std::string time_of(moment when) const {
        auto date = date_of_name(name_);
        if (!date) date = date_of_digits(reader_.header().value("LOGDATE"));
        return iso_time(date, when.day, when.seconds);
    }

    log_reader reader_;
    std::string name_;
    std::int64_t gap_seconds_;
    const text_sink& out_;
    std::string text_;
    log_clock clock_;
    moment first_;
    moment last_;
    moment now_;
    bool stopped_ = false;
    std::vector<std::int64_t> kinds_;
    std::vector<range> ranges_;
    std::int64_t comments_ = 0;
    std::int64_t notes_ = 0;
    std::int64_t alarms_ = 0;
    std::int64_t left_out_ = 0;
    std::map<std::string, std::int64_t, std::less<>> texts_;
    std::int64_t other_texts_ = 0;
    std::vector<gap> gaps_;
    std::size_t gaps_found_ = 0;
};

} // namespace

bool summarise_log(const std::string& name, byte_source source, int gap_minutes, const text_sink& out) {
    return log_summary(name, std::move(source), gap_minutes, out).run();
}

} // namespace tyxo::xlg
