#include "checker.h"

namespace months::check {

struct checker::model {
    std::vector<complaint> complaints;
};

checker::checker() : model_(std::make_unique<model>()) {}
checker::~checker() = default;

void checker::time(std::int64_t, const wall_time&) {}
void checker::program_starts(std::string_view) {}
void checker::close_asked() {}
void checker::program_ends() {}
void checker::killed() {}
void checker::power_cut() {}
void checker::arrives(int, std::string_view) {}
void checker::start_asked(int, bool) {}
void checker::stop_asked(int) {}
void checker::alert_confirmed() {}
void checker::inhibit_reset(int) {}
void checker::setting(std::string_view, std::string_view) {}
void checker::controller_disturbed() {}
void checker::file_gone(std::string_view) {}
void checker::file_created(std::string_view) {}
void checker::file_appended(std::string_view, std::string_view) {}
void checker::file_refused(std::string_view, std::string_view) {}
void checker::sent_to_line(int, std::string_view) {}
void checker::sent_to_controller(std::string_view) {}
void checker::debug_output(std::string_view) {}
void checker::message_shown(std::string_view) {}
void checker::chart_tick() {}
void checker::handler_ended(const seen&) {}
void checker::file_found(std::string_view, std::string_view) {}
void checker::all_files_found() {}

const std::vector<complaint>& checker::complaints() const {
    return model_->complaints;
}

} // namespace months::check
