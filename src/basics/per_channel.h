#pragma once
// An array with an element for each channel.

#include "basics/failure.h"
#include "basics/types.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <utility>

namespace tyxo {

/// Elements are made by their defaults, or given in double braces, one for each channel: a table with a row
/// too few or too many does not compile. A subscript that is no channel is the subscript failure.
template <class T> class per_channel {
  public:
    constexpr per_channel() = default;

    template <std::size_t Count>
    requires(Count == channel_count) constexpr per_channel(T (&&rows)[Count])
        : per_channel(rows, std::make_index_sequence<Count>()) {}

    [[nodiscard]] constexpr T& operator[](std::integral auto channel) { return items_[index_of(channel)]; }
    [[nodiscard]] constexpr const T& operator[](std::integral auto channel) const {
        return items_[index_of(channel)];
    }

    [[nodiscard]] constexpr auto begin() { return items_.begin(); }
    [[nodiscard]] constexpr auto begin() const { return items_.begin(); }
    [[nodiscard]] constexpr auto end() { return items_.end(); }
    [[nodiscard]] constexpr auto end() const { return items_.end(); }
    [[nodiscard]] static constexpr std::size_t size() { return channel_count; }

    bool operator==(const per_channel&) const = default;

  private:
    template <std::size_t... Index>
    constexpr per_channel(T* rows, std::index_sequence<Index...> /*all*/)
        : items_{std::move(rows[Index])...} {}

    /// i16 in the system, other integers in windows; none is cut before it is checked.
    static constexpr std::size_t index_of(std::integral auto channel) {
        if (std::cmp_less(channel, 0) || std::cmp_greater_equal(channel, channel_count))
            failures::subscript();
        return static_cast<std::size_t>(channel);
    }

    std::array<T, channel_count> items_{};
};

} // namespace tyxo
