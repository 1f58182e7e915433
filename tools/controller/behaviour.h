// How a controller answers: as it should, or in one of the ways in which it may not.
#pragma once

#include "controller/protocol.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::controller_sim {

enum class Manner {
    normal,
    silent,         ///< carries requests out and answers none
    late,           ///< answers after `value` milliseconds
    exception,      ///< answers with the exception code `value` and carries nothing out
    split,          ///< answers in two pieces, the first of `value` bytes
    bytewise,       ///< answers in single bytes
    too_much,       ///< sends 300 bytes in one piece, the answer first
    wrong_function, ///< answers a write as a read is, a read as a write is
    garbage,        ///< answers with random bytes
};

struct Behaviour {
    Manner manner = Manner::normal;
    int value = 0;
};

/// A part of an answer, and how long after the part before it goes out.
struct Piece {
    std::string bytes;
    double delay = 0; ///< seconds
};

inline constexpr double piece_gap = 0.02;        ///< seconds between two pieces of one answer
inline constexpr double byte_gap = 0.002;        ///< seconds between two bytes of one answer
inline constexpr std::size_t flood_size = 300;   ///< bytes of an answer that is too long
inline constexpr int longest_lateness = 600'000; ///< milliseconds

/// Carries a frame out in the manner of `behaviour`. Returns what becomes of it; `pieces` gets what goes out.
Answer answer_to(std::string_view frame, Image& image, const Behaviour& behaviour, std::mt19937& chance,
                 std::vector<Piece>& pieces);

} // namespace tyxo::controller_sim
