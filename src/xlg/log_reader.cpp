#include "xlg/log_reader.h"

#include "xlg/words.h"

#include <algorithm>
#include <utility>

namespace tyxo::xlg {

namespace {

/// True if the line can only stand behind <LOG>.
bool is_of_the_log(std::string_view text) {
    return text.starts_with("<REC") || text.starts_with("<!-- ") || text.starts_with("<#-- ");
}

void end_of_line(entry& found) {
    const std::string_view fault = end_fault(found.at.end);
    if (fault.empty()) return;
    found.state = std::max(found.state, damage::unended);
    if (found.faults.empty())
        found.faults.emplace_back(found.at.end == line_end::lf ? "" : "torn, ").append(fault);
    else
        found.faults.back().append("; ").append(fault);
}

} // namespace

log_reader::log_reader(byte_source source) : lines_(std::move(source)) {}

bool log_reader::next(entry& found) {
    if (!lines_.next(found.at)) {
        if (stretch_ == stretch::begin) fault_of_file_ = "empty, it has no header";
        if (stretch_ == stretch::header) fault_of_file_ = header_.missing();
        if (all_zero_) remark_of_file_ = "all values are 0 in the header, the channel did not measure";
        return false;
    }
    line_number_ = found.at.number;
    found.kind = line_kind::foreign;
    found.state = damage::none;
    found.form = nullptr;
    found.seconds = -1;
    found.body = {};
    found.second_header = false;
    found.faults.clear();
    found.faults_of_log.clear();
    found.remarks.clear();
    read_stretch(found);
    if (all_zero_ && found.kind == line_kind::record) {
        all_zero_ = false;
        found.faults_of_log.emplace_back(
            "all values of engine and Evaluator are 0 in the header of this record");
    }
    if (found.at.end != line_end::cr_lf) end_of_line(found);
    return true;
}

void log_reader::read_stretch(entry& found) {
    const std::string_view text = found.at.text;
    if (stretch_ == stretch::log && text.starts_with('<') && text != header_begin)
        return read_log_line(found);
    if (text == header_begin) {
        if (stretch_ == stretch::begin || stretch_ == stretch::header) {
            if (stretch_ == stretch::header)
                found.faults_of_log.emplace_back("the header begins again in itself");
            header_ = {};
            stretch_ = stretch::header;
            return read_header_line(found);
        }
        found.faults_of_log.emplace_back("a second header begins");
        found.second_header = true;
        stretch_ = stretch::second_header;
    }
    switch (stretch_) {
    case stretch::begin:
        if (!is_of_the_log(text)) {
            stretch_ = stretch::header;
            return read_header_line(found);
        }
        stretch_ = stretch::log;
        read_log_line(found);
        found.faults_of_log.emplace_back("no header, the log begins with this line");
        return;
    case stretch::header:
        if (is_of_the_log(text)) {
            end_header(found);
            return read_log_line(found);
        }
        return read_header_line(found);
    case stretch::second_header:
        if (is_of_the_log(text)) {
            stretch_ = stretch::log;
            return read_log_line(found);
        }
        found.kind = line_kind::header;
        found.state = damage::broken;
        if (text == log_begin) stretch_ = stretch::log;
        return;
    case stretch::log:
        return read_log_line(found);
    }
}

void log_reader::read_header_line(entry& found) {
    found.kind = line_kind::header;
    std::string fault = found.at.too_long() ? "a line of " + grouped(found.at.length) +
                                                  " characters, longer than any line of a log"
                                            : header_.take(found.at.text);
    const std::string bytes = bytes_fault(found.at.text);
    if (!bytes.empty()) fault += (fault.empty() ? "" : "; ") + bytes;
    if (!fault.empty()) {
        found.state = found.at.too_long() ? damage::broken : damage::doubtful;
        found.faults.push_back(std::move(fault));
    }
    if (found.at.text == log_begin) end_header(found);
}

void log_reader::end_header(entry& found) {
    stretch_ = stretch::log;
    if (header_.ends_early())
        found.remarks.emplace_back("more than 24 cylinders: the header ends in front of the firing order");
    else if (std::string missing = header_.missing(); !missing.empty())
        found.faults_of_log.push_back(std::move(missing));
    all_zero_ = header_.all_zero();
}

} // namespace tyxo::xlg
