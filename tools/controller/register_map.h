// What the registers of the data logger mean, and what they say in plain words.
#pragma once

#include "controller/protocol.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace tyxo::controller_sim {

inline constexpr std::size_t channels = 4;
inline constexpr std::size_t registers_per_channel = 110;
inline constexpr std::size_t most_cylinders = 24;

/// A block is written by one frame.
struct Block {
    int code;
    std::size_t offset; ///< from the first register of its channel
    std::size_t count;
};

inline constexpr std::array<Block, 4> blocks = {{{1, 0, 6}, {8, 6, 3}, {3, 10, 50}, {4, 60, 50}}};

struct Place {
    std::size_t channel; ///< 0 to 3
    std::size_t block;   ///< element of `blocks`
};

/// Which block of which channel a write of `count` registers at `address` is; nothing when it is none.
std::optional<Place> place_of(std::size_t address, std::size_t count, std::size_t base);

/// What a channel's registers say, in lines. Without a block that came, there is nothing to say of it.
std::vector<std::string> channel_in_words(const Image& image, std::size_t base, std::size_t channel,
                                          const std::array<std::size_t, blocks.size()>& frames);

/// The meanings of the bits that are set; "-" for none.
std::string alarm_words(unsigned status);
std::string error_words(unsigned status);

} // namespace tyxo::controller_sim
