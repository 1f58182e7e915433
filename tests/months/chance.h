#pragma once
// Random numbers that are the same for a seed on every machine.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace months {

class chance {
  public:
    explicit chance(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }
    /// 0 up to, not including, `count`, which is above 0.
    std::size_t below(std::size_t count) { return next() % count; }
    /// Both included.
    std::int64_t between(std::int64_t low, std::int64_t high) {
        return low + static_cast<std::int64_t>(below(static_cast<std::size_t>(high - low + 1)));
    }
    bool once_in(std::size_t times) { return below(times) == 0; }
    template <class List> const auto& one_of(const List& list) { return list[below(list.size())]; }

  private:
    std::uint64_t state_;
};

} // namespace months
