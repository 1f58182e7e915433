#pragma once
// The frames to the plant controller: what stands in them, in which order and how soon.

#include "plant_settings.h"
#include "record.h"
#include "words.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace months::check {

/// A block of registers of one channel.
struct register_block {
    int code = 1; ///< 1 measured values, 8 status, 3 speed of the cylinders, 4 thermosignal of the cylinders
    int channel = 0;
    bool operator==(const register_block&) const = default;
};

/// Which block begins at this register.
[[nodiscard]] std::optional<register_block> block_at(int address, int base);

/// What is wrong with a frame that writes this block, by the record of its channel.
[[nodiscard]] std::optional<std::string> block_difference(std::string_view frame, const register_block& block,
                                                          const channel_record& record);

/// The order and the pace of the blocks.
class register_cycle {
  public:
    void restart() { *this = {}; }
    void disturb() { unsure_ = true; } ///< blocks may be missing before the next one
    /// A block is sent; the result says what is wrong with its turn.
    std::optional<std::string> sent(const register_block& block, const plant_settings& plant,
                                    const clock_now& now);

  private:
    bool unsure_ = true;
    int step_ = 0, channel_ = 0; ///< of the next block
    std::int64_t last_ms_ = -1;
};

} // namespace months::check
