#include "xlg/csv.h"

#include "basics/ansi.h"
#include "xlg/log_clock.h"
#include "xlg/log_reader.h"

#include <algorithm>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t rows_at_once = std::size_t{64} * 1024; // bytes

const record_form& measured_values() {
    return record_forms().front();
}

bool is_wanted(const entry& one, csv_lines lines) {
    switch (lines) {
    case csv_lines::records:
        return one.form == &measured_values();
    case csv_lines::curves:
        return one.form != nullptr && one.form->curve;
    default:
        return one.kind == line_kind::comment || one.kind == line_kind::note;
    }
}

class csv_writer {
  public:
    csv_writer(const std::string& name, byte_source source, csv_lines lines, const text_sink& out)
        : reader_(std::move(source)), lines_(lines), out_(out), date_(date_of_name(name)) {
        append_csv_text(name_, name);
    }

    std::int64_t run() {
        std::int64_t left_out = 0;
        entry one;
        while (reader_.next(one)) {
            if (!one.sound()) ++left_out;
            if (one.seconds < 0 || !one.sound()) continue;
            clock_.take(one.seconds);
            if (!is_wanted(one, lines_)) continue;
            append_row(one);
            if (rows_.size() > rows_at_once) pass_on();
        }
        pass_on();
        return left_out;
    }

  private:
    void append_row(const entry& one) {
        rows_.append(name_).append(",").append(std::to_string(one.at.number)).append(",");
        append_time_of(one.seconds);
        if (lines_ == csv_lines::comments) {
            rows_.append(one.kind == line_kind::note ? ",note," : ",comment,");
            append_csv_text(rows_, utf8_from_ansi(one.body));
        } else {
            if (lines_ == csv_lines::curves) rows_.append(",").append(one.form->tag);
            rows_ += ',';
            const std::size_t from = rows_.size();
            rows_.append(one.body);
            std::replace(rows_.begin() + static_cast<std::ptrdiff_t>(from), rows_.end(), ' ', ',');
        }
        rows_.append("\r\n");
    }

    /// Most lines have the second of the line before.
    void append_time_of(int seconds) {
        if (seconds != seconds_told_ || clock_.day() != day_told_) {
            if (!date_) date_ = date_of_digits(reader_.header().value("LOGDATE"));
            seconds_told_ = seconds;
            day_told_ = clock_.day();
            time_ = iso_time(date_, day_told_, seconds_told_);
        }
        rows_ += time_;
    }

    void pass_on() {
        if (!rows_.empty()) out_(rows_);
        rows_.clear();
    }

    log_reader reader_;
    csv_lines lines_;
    const text_sink& out_;
    std::optional<local_time> date_;
    std::string name_;
    log_clock clock_;
    std::string time_;
    int seconds_told_ = -1;
    int day_told_ = 0;
    std::string rows_;
};

} // namespace

std::string csv_head(csv_lines lines) {
    std::string head = "file,line,time";
    if (lines == csv_lines::comments) return head + ",kind,text\r\n";
    if (lines == csv_lines::curves) {
        head += ",record";
        for (std::size_t sample = 0; sample < record_forms().back().columns.size(); ++sample)
            head += ",sample " + std::to_string(sample) + " [raw]";
        return head + "\r\n";
    }
    for (const column_limit& column : measured_values().columns)
        head.append(",").append(column.name).append(" [").append(column.unit).append("]");
    return head + "\r\n";
}

std::int64_t csv_of_log(const std::string& name, byte_source source, csv_lines lines, const text_sink& out) {
    return csv_writer(name, std::move(source), lines, out).run();
}

void append_csv_text(std::string& row, std::string_view utf8) {
    const bool plain_text = utf8.find_first_of("\",\r\n") == utf8.npos && !utf8.empty() &&
                            utf8.front() != ' ' && utf8.back() != ' ';
    if (plain_text) {
        row += utf8;
        return;
    }
    row += '"';
    for (const char byte : utf8) {
        if (byte == '"') row += '"';
        row += byte;
    }
    row += '"';
}

} // namespace tyxo::xlg
