#pragma once
// The bytes of an Evaluator's line: frames that stand in them, check digits and fields.

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace months::check {

/// Puts frames together from bytes; what is outside of a frame is dropped.
class frame_assembler {
  public:
    /// True when the byte ends a frame, which then stands in `frame()`, up to its CR LF.
    bool take(char byte) {
        if (byte == ':') {
            frame_.assign(1, ':');
            open_ = true;
            cr_ = false;
            return false;
        }
        if (!open_) return false;
        if (byte == '\r') {
            cr_ = true;
            return false;
        }
        if (byte == '\n') {
            if (!cr_) return false;
            open_ = cr_ = false;
            frame_ += "\r\n";
            return true;
        }
        frame_ += byte;
        return false;
    }
    [[nodiscard]] const std::string& frame() const { return frame_; }

  private:
    std::string frame_;
    bool open_ = false, cr_ = false;
};

/// The two lower-case digits that make the sum of all characters behind the ":" 0.
[[nodiscard]] std::string check_digits(std::string_view body);

/// A field does not stand in the frame.
struct no_such_field : std::runtime_error {
    no_such_field() : std::runtime_error("a field that the frame does not have") {}
};

/// What a character is worth as a hexadecimal digit; -1 for any other.
inline constexpr std::array<signed char, 256> hex_worth = [] {
    std::array<signed char, 256> worth{};
    worth.fill(-1);
    for (int i = 0; i < 16; ++i) {
        worth[static_cast<unsigned char>("0123456789abcdef"[i])] = static_cast<signed char>(i);
        worth[static_cast<unsigned char>("0123456789ABCDEF"[i])] = static_cast<signed char>(i);
    }
    return worth;
}();

/// A frame with its check digits and CR LF, which short frames have where others have fields. Positions count
/// from 1, the ":".
class frame_fields {
  public:
    explicit frame_fields(std::string_view frame) : frame_(frame) {}
    [[nodiscard]] int length() const { return static_cast<int>(frame_.size()); }
    [[nodiscard]] int hex(int position, int digits) const {
        if (position + digits - 1 > static_cast<int>(frame_.size())) throw no_such_field();
        int value = 0;
        for (int i = 0; i < digits; ++i) {
            const int digit = hex_worth[static_cast<unsigned char>(frame_[position - 1 + i])];
            if (digit < 0) throw no_such_field();
            value = value * 16 + digit;
        }
        return value;
    }
    [[nodiscard]] std::string_view text(int position, int length) const;
    [[nodiscard]] bool check_is_right() const;
    [[nodiscard]] int code() const;

  private:
    std::string_view frame_;
};

} // namespace months::check
