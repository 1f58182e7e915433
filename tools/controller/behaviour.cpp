#include "behaviour.h"

#include <algorithm>

namespace tyxo::controller_sim {

namespace {

std::string with_other_function(std::string answer) {
    const bool was_write = answer.at(function_at) == function_code::write_multiple;
    answer[function_at] =
        static_cast<char>(was_write ? function_code::read_holding : function_code::write_multiple);
    return answer;
}

std::string random_bytes(std::size_t count, std::mt19937& chance) {
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(chance() % 256);
    return bytes;
}

} // namespace

Answer answer_to(std::string_view frame, Image& image, const Behaviour& behaviour, std::mt19937& chance,
                 std::vector<Piece>& pieces) {
    if (behaviour.manner == Manner::exception) {
        const auto code = static_cast<std::uint8_t>(behaviour.value);
        pieces.push_back({exception_answer(frame, code), 0});
        return {pieces.back().bytes, Outcome::refused, 0, 0};
    }
    Answer answer = serve(frame, image);
    const std::string& bytes = answer.bytes;
    switch (behaviour.manner) {
    case Manner::silent:
        break;
    case Manner::late:
        pieces.push_back({bytes, behaviour.value / 1000.0});
        break;
    case Manner::split: {
        const auto first = std::min(static_cast<std::size_t>(behaviour.value), bytes.size());
        pieces.push_back({bytes.substr(0, first), 0});
        if (first < bytes.size()) pieces.push_back({bytes.substr(first), piece_gap});
        break;
    }
    case Manner::bytewise:
        for (const char byte : bytes)
            pieces.push_back({std::string(1, byte), byte_gap});
        break;
    case Manner::too_much:
        pieces.push_back({bytes + std::string(flood_size - std::min(flood_size, bytes.size()), '\0'), 0});
        break;
    case Manner::wrong_function:
        pieces.push_back({with_other_function(bytes), 0});
        break;
    case Manner::garbage:
        pieces.push_back({random_bytes(bytes.size(), chance), 0});
        break;
    default:
        pieces.push_back({bytes, 0});
    }
    return answer;
}

} // namespace tyxo::controller_sim
