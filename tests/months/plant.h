#pragma once
// A plant on the simulated machine: the program, four Evaluators, an operator, a controller and what goes
// wrong, along one history. The checker watches from outside.

#include "chance.h"
#include "evaluator.h"
#include "history.h"

#include "check/checker.h"
#include "platform/simulation.h"

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace months {

/// What a history came to.
struct outcome {
    std::vector<std::string> complaints; ///< none: all that the program did was right
    std::int64_t events = 0;             ///< of ports, timers and acts
    std::int64_t bytes = 0;              ///< that the program took from its lines
    std::int64_t lines = 0;              ///< in logs and event file
    std::int64_t starts = 0;             ///< of the program
    std::int64_t cuts = 0;               ///< of the power
    std::int64_t registers_sent = 0;     ///< frames to the controller
    std::int64_t longest_wait = 0;       ///< ms of the plant's time inside one handler of a line or a timer
    std::size_t memory_early = 0;        ///< bytes in use after the first day
    std::size_t memory_late = 0;         ///< and at the end
};

class plant {
  public:
    /// With a story, every act is told as it happens; with a folder, logs and event file are kept there.
    explicit plant(const history& what, std::ostream* story = nullptr, std::filesystem::path keep = {});
    outcome run();

  private:
    using act_handler = void (plant::*)(const act&, chance&);
    static act_handler handler_of(act_kind kind);

    // The machine.
    void set_up();
    void program_starts();
    void program_has_gone(std::int64_t for_ms);
    void watch_machine();
    void plan();
    void plan_evaluator(int channel);
    void plan_act();
    void carry_out(const act& what);
    void handler_has_ended();
    void archive_old_files();
    void keep_file(const std::string& path, const std::string& content) const;
    [[nodiscard]] static std::size_t memory_in_use();
    [[nodiscard]] bool belongs_to_a_fault(std::string_view line) const;
    void check_settings_file();
    [[noreturn]] void end_by(const char* why, bool power);
    void tell(const std::string& line);
    void remember(std::string_view what, std::string_view text);
    void wrong(const std::string& what);
    [[nodiscard]] check::wall_time wall() const;
    [[nodiscard]] std::string location(int channel) const;
    [[nodiscard]] std::string settings_text();
    [[nodiscard]] static std::vector<std::string> keys_of(std::string_view settings);
    [[nodiscard]] static std::string setting_in_file(std::string_view key);

    // Acts, by who does them.
    void at_evaluator(const act& what, chance& dice);
    void at_port(const act& what, chance& dice);
    void at_disk(const act& what, chance& dice);
    void at_machine(const act& what, chance& dice);
    void at_controller(const act& what, chance& dice);
    void by_operator(const act& what, chance& dice);

    void set_clock_by(std::int64_t seconds);
    void unlock_with(std::string password, std::int64_t after_ms);
    void tell_start(int channel); ///< -1: all
    void start_channels(int channel);
    void stop_channels(int channel, const std::string& password, std::int64_t answered_after);
    [[nodiscard]] std::string typed(chance& dice) const;
    void new_password(chance& dice);
    void new_scales(chance& dice);
    void new_setup(chance& dice);
    void new_gateway(chance& dice);
    void show_windows(int channel, chance& dice);
    void hide_windows();

    const history& history_;
    std::ostream* story_;
    std::filesystem::path keep_; ///< none: empty
    chance dice_;
    check::checker checker_;
    outcome outcome_;
    std::array<evaluator, 4> evaluators_;
    std::size_t next_act_ = 0;
    int used_ = 4;               ///< channels
    int stopping_ = -1;          ///< the channel that the stop lock asks about; -1: all
    std::string password_;       ///< in force
    bool right_password_ = true; ///< the operator types it
    bool runs_ = false;
    std::int64_t controller_lies_until_ = 0;
    std::int64_t looked_ms_ = 0; ///< the end of the last handler: what the debug output says came behind it
    bool by_hand_ = false;       ///< registers are written that no cycle sends
    check::seen seen_;
    std::array<std::int32_t, 4> rows_seen_{};
    std::array<std::string, 4> newest_log_; ///< path of the file last written
    std::int64_t archived_day_ = 0;
    std::deque<std::string> recent_;
    std::vector<std::string> keys_; ///< of the settings file, in their order
};

/// Runs a history from beginning to end.
[[nodiscard]] outcome run(const history& what, std::ostream* story = nullptr,
                          const std::filesystem::path& keep = {});

} // namespace months
