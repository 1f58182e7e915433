#include "protocol.h"

namespace tyxo::controller_sim {

namespace {

constexpr std::size_t shortest_length = 2;  // unit identifier and function code
constexpr std::size_t longest_length = 254; // and 252 bytes of data
constexpr std::size_t before_length = 6;    // bytes of a header that its length does not count
constexpr std::size_t request_size = 12;    // with address and count
constexpr std::size_t values_at = 13;

std::uint8_t byte(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]);
}

std::size_t word(std::string_view bytes, std::size_t at) {
    return byte(bytes, at) * std::size_t{256} + byte(bytes, at + 1);
}

void put_word(std::string& bytes, std::size_t value) {
    bytes += static_cast<char>(value / 256 % 256);
    bytes += static_cast<char>(value % 256);
}

/// The header of an answer to the frame, up to the unit identifier, for `size` bytes behind that.
std::string header_for(std::string_view frame, std::size_t size) {
    std::string answer(frame.substr(0, 4));
    put_word(answer, size + 1);
    return answer + frame[header_size - 1];
}

Answer refused(std::string_view frame, std::uint8_t code) {
    return {exception_answer(frame, code), Outcome::refused, 0, 0};
}

Answer write(std::string_view frame, Image& image) {
    if (frame.size() < values_at) return refused(frame, exception_code::value);
    const std::size_t address = word(frame, 8);
    const std::size_t count = word(frame, 10);
    if (count == 0 || count > most_written || byte(frame, 12) != 2 * count ||
        frame.size() != values_at + 2 * count)
        return refused(frame, exception_code::value);
    if (address + count > registers) return refused(frame, exception_code::address);
    for (std::size_t i = 0; i < count; ++i)
        image.at(address + i) = static_cast<std::uint16_t>(word(frame, values_at + 2 * i));
    return {header_for(frame, 5) + std::string(frame.substr(function_at, 5)), Outcome::written, address,
            count};
}

Answer read(std::string_view frame, const Image& image) {
    if (frame.size() != request_size) return refused(frame, exception_code::value);
    const std::size_t address = word(frame, 8);
    const std::size_t count = word(frame, 10);
    if (count == 0 || count > most_read) return refused(frame, exception_code::value);
    if (address + count > registers) return refused(frame, exception_code::address);
    std::string answer = header_for(frame, 2 + 2 * count);
    answer += static_cast<char>(function_code::read_holding);
    answer += static_cast<char>(2 * count);
    for (std::size_t i = 0; i < count; ++i)
        put_word(answer, image.at(address + i));
    return {answer, Outcome::read, address, count};
}

} // namespace

std::optional<std::string> take_frame(std::string& bytes) {
    if (bytes.size() < before_length) return std::nullopt;
    if (word(bytes, 2) != 0) throw BrokenStream{"a protocol identifier that is not 0"};
    const std::size_t length = word(bytes, 4);
    if (length < shortest_length || length > longest_length) throw BrokenStream{"an impossible length"};
    const std::size_t size = before_length + length;
    if (bytes.size() < size) return std::nullopt;
    std::string frame = bytes.substr(0, size);
    bytes.erase(0, size);
    return frame;
}

Answer serve(std::string_view frame, Image& image) {
    switch (byte(frame, function_at)) {
    case function_code::write_multiple:
        return write(frame, image);
    case function_code::read_holding:
        return read(frame, image);
    default:
        return refused(frame, exception_code::function);
    }
}

std::string exception_answer(std::string_view frame, std::uint8_t code) {
    std::string answer = header_for(frame, 2);
    answer += static_cast<char>(byte(frame, function_at) | function_code::exception_mark);
    return answer + static_cast<char>(code);
}

} // namespace tyxo::controller_sim
