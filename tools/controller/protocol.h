// Modbus TCP as a server sees it: bytes come in, requests are cut out of them, answers go out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::controller_sim {

inline constexpr std::size_t registers = 65536;
inline constexpr std::size_t longest_frame = 260;
inline constexpr std::size_t header_size = 7; ///< up to the unit identifier
inline constexpr std::size_t function_at = 7; ///< the place of the function code
inline constexpr std::size_t most_written = 123;
inline constexpr std::size_t most_read = 125;

namespace function_code {
inline constexpr std::uint8_t read_holding = 3;
inline constexpr std::uint8_t write_multiple = 16;
inline constexpr std::uint8_t exception_mark = 128;
} // namespace function_code

namespace exception_code {
inline constexpr std::uint8_t function = 1;
inline constexpr std::uint8_t address = 2;
inline constexpr std::uint8_t value = 3;
} // namespace exception_code

/// The holding registers of a controller.
using Image = std::vector<std::uint16_t>;

/// What became of a request.
enum class Outcome { written, read, refused };

struct Answer {
    std::string bytes;
    Outcome outcome = Outcome::refused;
    std::size_t address = 0; ///< of a write or a read that was carried out
    std::size_t count = 0;
};

/// The next whole frame at the front of `bytes`, which it is cut off; nothing when more bytes are needed.
/// Throws BrokenStream when what stands there is no frame and nothing behind it can be found.
std::optional<std::string> take_frame(std::string& bytes);

/// The bytes cannot be those of a Modbus client.
struct BrokenStream {
    const char* why;
};

/// Carries out a whole frame. What cannot be done is answered with an exception and changes nothing.
Answer serve(std::string_view frame, Image& image);

/// The answer with an exception to a frame.
std::string exception_answer(std::string_view frame, std::uint8_t code);

} // namespace tyxo::controller_sim
