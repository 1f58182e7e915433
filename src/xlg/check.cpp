#include "xlg/check.h"

#include "xlg/log_clock.h"
#include "xlg/log_reader.h"

#include <array>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::string_view measure_stopped = "Measure Stopped";

/// What goes along the lines of one log.
class log_check {
  public:
    log_check(const std::string& name, byte_source source, std::optional<int> gap_minutes,
              const text_sink& out)
        : reader_(std::move(source)), found_(name, out), gap_minutes_(gap_minutes),
          date_of_name_(date_of_name(name)) {}

    bool run() {
        entry one;
        while (reader_.next(one)) {
            count(one);
            tell(one);
            if (one.seconds >= 0) follow_time(one);
        }
        if (!reader_.fault_of_file().empty()) found_.wrong(reader_.fault_of_file());
        if (!reader_.remark_of_file().empty()) found_.remark(reader_.remark_of_file());
        compare_dates();
        close();
        return found_.wrong_count() == 0;
    }

  private:
    void count(const entry& one) {
        if (one.kind == line_kind::record) {
            ++records_;
            if (one.sound()) ++kinds_[static_cast<std::size_t>(one.form - record_forms().data())];
        }
        if (one.kind == line_kind::comment || one.kind == line_kind::note) ++comments_;
    }

    void tell(const entry& one) {
        for (const std::string& fault : one.faults_of_log)
            found_.wrong(one.at, fault);
        const bool record = one.kind == line_kind::record;
        for (const std::string& fault : one.faults)
            found_.wrong(one.at, (record ? "record " + grouped(records_) + ", " : "") + fault);
        for (const std::string& remark : one.remarks)
            found_.remark(one.at, remark);
    }

    void follow_time(const entry& one) {
        const clock_step step = clock_.take(one.seconds);
        const bool stops = one.kind == line_kind::comment && one.body == measure_stopped;
        behind_midnight_ = behind_midnight_ || step.midnight;
        if (behind_midnight_ && !stops) { // a log that a new one replaces stops just then
            found_.remark(one.at, "the log goes on behind midnight");
            behind_midnight_ = false;
        }
        if (step.seconds < 0) found_.remark(one.at, "time runs back by " + duration(-step.seconds));
        if (gap_minutes_ && step.seconds > 60LL * *gap_minutes_ && !stopped_)
            found_.wrong(one.at, "a gap of " + duration(step.seconds) + " in front of it");
        stopped_ = stops;
    }

    void compare_dates() {
        const std::string told = reader_.header().value("LOGDATE");
        const auto date = date_of_digits(told);
        if (date && date_of_name_ && *date != *date_of_name_)
            found_.remark("the name's date is not that of the header, " + told);
    }

    void close() {
        std::string figures =
            counted(reader_.lines(), "line", "lines") + ", " + counted(records_, "record", "records");
        std::string_view between = " (";
        for (const record_form& form : record_forms()) {
            figures.append(between).append(form.tag + " ");
            figures += grouped(kinds_[static_cast<std::size_t>(&form - record_forms().data())]);
            between = ", ";
        }
        found_.close(figures + "), " + counted(comments_, "comment", "comments") + ", " +
                     counted(reader_.bytes(), "byte", "bytes"));
    }

    log_reader reader_;
    findings found_;
    std::optional<int> gap_minutes_;
    std::optional<local_time> date_of_name_;
    log_clock clock_;
    bool stopped_ = false;         ///< the measurement, by the line before
    bool behind_midnight_ = false; ///< and not told yet
    std::int64_t records_ = 0;
    std::int64_t comments_ = 0;
    std::array<std::int64_t, 8> kinds_{};
};

} // namespace

bool check_log(const std::string& name, byte_source source, std::optional<int> gap_minutes,
               const text_sink& out) {
    return log_check(name, std::move(source), gap_minutes, out).run();
}

} // namespace tyxo::xlg
