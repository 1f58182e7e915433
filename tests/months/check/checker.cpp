#include "checker.h"

#include "model.h"

namespace months::check {

checker::checker() : model_(std::make_unique<model>()) {}
checker::~checker() = default;

void checker::time(std::int64_t ms, const wall_time& local) {
    model_->time_is(ms, local);
}

void checker::program_starts(std::string_view settings) {
    model_->program_starts(settings);
}

void checker::close_asked() {
    model_->event("", "Tyxo Data Logger software stopped !", "");
    model_->cycle.disturb();
}

void checker::program_ends() {
    model_->program_gone(ledger_file::loss::none);
}

void checker::killed() {
    model_->program_gone(ledger_file::loss::torn_line);
}

void checker::power_cut() {
    model_->program_gone(ledger_file::loss::unsynced);
}

void checker::disk_takes(std::int64_t ms) {
    model_->files.disk_takes(ms);
}

void checker::arrives(int channel, std::string_view bytes) {
    model_->arrives(channel, bytes);
}

void checker::start_asked(int channel, bool port_opens) {
    model_->start(channel, port_opens);
}

void checker::stop_asked(int channel) {
    model_->stop(channel);
}

void checker::alert_confirmed() {
    model_->tell("Mainalarm", "", "confirmed by operator!");
    model_->alert_open = false;
}

void checker::inhibit_reset(int channel) {
    model_->expect_debug("TX: :80092f");
    model_->channel[channel].reset_due = true;
}

void checker::setting(std::string_view key, std::string_view value) {
    model_->setting(key, value);
}

void checker::controller_disturbed() {
    model_->cycle.disturb();
}

void checker::file_gone(std::string_view path) {
    model_->files_disturbed = true;
    if (ledger_file* const file = model_->files.known(path)) model_->files.gone(*file);
}

void checker::file_created(std::string_view path) {
    ledger_file* file = model_->files.known(path);
    while ((file == nullptr || (!file->asked && file->gone_at < 0)) && model_->settle())
        file = model_->files.known(path);
    model_->files.created(model_->files.at(path));
}

void checker::file_appended(std::string_view path, std::string_view text) {
    model_->appended(path, text);
}

void checker::file_refused(std::string_view path, std::string_view text) {
    model_->refused(path, text);
}

void checker::sent_to_line(int channel, std::string_view bytes) {
    model_->to_line(channel, bytes);
}

void checker::sent_to_controller(std::string_view frame) {
    model_->to_controller(frame);
}

void checker::debug_output(std::string_view line) {
    model_->debug_output(line);
}

void checker::message_shown(std::string_view text) {
    model_->message(text);
}

void checker::chart_tick() {
    model_->chart_tick();
}

void checker::handler_ended(const seen& now) {
    model_->handler_ended(now);
}

void checker::file_found(std::string_view path, std::string_view content) {
    model_->found(path, content);
}

void checker::all_files_found() {
    model_->files.all_found();
}

const std::vector<complaint>& checker::complaints() const {
    return model_->book.complaints;
}

} // namespace months::check
