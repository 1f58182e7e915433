#include "platform/line_file.h"

#include "basics/failure.h"
#include "platform/clock.h"
#include "platform/debug_output.h"

#include <utility>

namespace tyxo {

namespace {

constexpr std::int64_t look_ms = 1000;

} // namespace

void line_file::open(file_place place) {
    close();
    place_ = std::move(place);
    header_due_ = false;
    if (place_.folder && attempt([this] { make_folder(*place_.folder); })) {
        debug_output(place_.no_folder);
    }
    begin(running_ms());
}

void line_file::print(std::string_view line) {
    if (place_.path.empty()) throw failure("The file is not open");
    const std::int64_t now = running_ms();
    if (now - looked_ >= look_ms) {
        looked_ = now;
        if (!disk_.is_open() || !disk_.in_place()) begin_anew(now);
    }
    const auto why = attempt([&] { write(line); });
    if (!why) return;
    if (now - begun_ < look_ms) throw failure(*why);
    begin_anew(now);
    write(line);
}

bool line_file::print_at_once(std::string_view line) {
    if (!disk_.is_open() || header_due_ || running_ms() - looked_ >= look_ms) return false;
    return !attempt([&] { write(line); });
}

void line_file::close() {
    if (disk_.is_open()) disk_.sync(sync_time::at_once);
    disk_.close();
    place_ = {};
}

/// A header that is still due stays so, unless another file has come to the place meanwhile.
void line_file::begin(std::int64_t now) {
    begun_ = looked_ = now;
    disk_.close();
    const bool created = disk_.open(place_.path, !place_.header.empty());
    header_due_ = !place_.header.empty() && (created || (header_due_ && disk_.empty()));
    attempt([this] { write_header(); });
}

void line_file::begin_anew(std::int64_t now) {
    if (disk_.is_open()) disk_.sync(sync_time::at_once); // it may still be somewhere
    if (place_.folder) attempt([this] { make_folder(*place_.folder); });
    begin(now);
    debug_output("log opened anew : " + place_.path);
}

void line_file::write_header() {
    if (!header_due_) return;
    disk_.append(place_.header);
    disk_.sync(sync_time::at_once);
    header_due_ = false;
}

void line_file::write(std::string_view line) {
    if (!disk_.is_open()) throw failure("The file is not open");
    write_header();
    buffer_.assign(line).append("\r\n");
    disk_.append(buffer_);
    disk_.sync(place_.each_line ? sync_time::at_once : sync_time::soon);
}

} // namespace tyxo
