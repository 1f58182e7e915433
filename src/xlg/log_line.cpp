#include "xlg/log_reader.h"
#include "xlg/words.h"

#include <algorithm>

namespace tyxo::xlg {

namespace {

constexpr std::string_view comment_opening = "<!-- ";
constexpr std::string_view note_opening = "<#-- ";
constexpr std::string_view comment_closing = " -->";
constexpr std::size_t comment_front = 5 + 8 + 1; // opening, time, a blank

void broken(entry& found, std::string what) {
    found.state = damage::broken;
    const std::string bytes = bytes_fault(found.at.text);
    found.faults.push_back(bytes.empty() ? std::move(what) : std::move(what) + "; " + bytes);
}

/// "REC4" of a record of an unknown kind.
std::string_view tag_of(std::string_view text) {
    return text.substr(1, text.find_first_of("> ") - 1);
}

void read_record(entry& found, const record_form& form) {
    const std::string_view text = found.at.text;
    found.kind = line_kind::record;
    found.form = &form;
    if (!form.fits(text)) {
        record_fault fault = fault_of(form, text);
        broken(found, form.tag + ": " + fault.what);
        if (!fault.whole) return;
        found.state = damage::doubtful;
    }
    found.seconds = seconds_of(text.substr(form.opening.size(), 8));
    found.body = form.values_of(text);
}

void read_comment(entry& found, line_kind kind) {
    const std::string_view text = found.at.text;
    found.kind = kind;
    if (!text.ends_with(comment_closing) || text.size() < comment_front + comment_closing.size())
        return broken(found, "torn, a comment without its end");
    const std::string_view time = text.substr(comment_opening.size(), 8);
    if (!is_time(time) || text[comment_front - 1] != ' ') {
        const auto words = text.substr(comment_opening.size());
        return broken(found,
                      "the comment's time is none: " + shortened(words.substr(0, words.find(' ')), 20));
    }
    if (std::string bytes = bytes_fault(text); !bytes.empty()) {
        found.state = damage::doubtful;
        found.faults.push_back(std::move(bytes));
    }
    found.seconds = seconds_of(time);
    found.body = text.substr(comment_front, text.size() - comment_front - comment_closing.size());
}

bool begins_some_line(std::string_view text) {
    const auto begins = [text](std::string_view opening) { return opening.starts_with(text); };
    return begins(comment_opening) || begins(note_opening) ||
           std::ranges::any_of(record_forms(), [&](const record_form& form) { return begins(form.opening); });
}

bool ends_like_a_line(std::string_view text) {
    return text.ends_with(comment_closing) ||
           std::ranges::any_of(record_forms(), [&](const record_form& form) {
               return text.ends_with("</" + form.tag + ">");
           });
}

void read_foreign(entry& found) {
    const std::string_view text = found.at.text;
    if (text.empty()) return broken(found, "an empty line");
    if (begins_some_line(text)) return broken(found, "torn, cut in its beginning");
    if (text.starts_with("<REC")) {
        found.kind = line_kind::record;
        return broken(found, "unknown record kind " + shortened(tag_of(text), 20));
    }
    if (text == log_begin) return broken(found, "<LOG> stands twice");
    if (ends_like_a_line(text)) return broken(found, "torn, its beginning is missing");
    broken(found, "no line of a log");
}

} // namespace

void read_log_line(entry& found) {
    const std::string_view text = found.at.text;
    if (found.at.too_long()) {
        broken(found, "a line of " + grouped(found.at.length) + " characters, longer than any line of a log");
    } else if (const record_form* const form = form_of(text)) {
        read_record(found, *form);
    } else if (text.starts_with(comment_opening)) {
        read_comment(found, line_kind::comment);
    } else if (text.starts_with(note_opening)) {
        read_comment(found, line_kind::note);
    } else {
        read_foreign(found);
    }
}

} // namespace tyxo::xlg
