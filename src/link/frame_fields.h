#pragma once
// Fields of a frame by their positions.

#include "basics/failure.h"
#include "link/channel_rec.h"
#include "link/hex.h"

#include <span>
#include <string>
#include <string_view>

namespace tyxo::sensor {

/// A trimmed frame, check and CR LF included. Positions count from 1, the ":".
class frame_fields {
  public:
    explicit frame_fields(std::string_view frame) : frame_(frame) {}

    [[nodiscard]] std::size_t length() const { return frame_.size(); }

    /// The characters of a field; a field that reaches beyond the end is a failure.
    [[nodiscard]] std::string_view text(std::size_t position, std::size_t length) const {
        if (position - 1 + length > frame_.size()) failures::type_mismatch();
        return frame_.substr(position - 1, length);
    }

    [[nodiscard]] i32 hex(std::size_t position, std::size_t length) const {
        return funct::hex_to_long(text(position, length));
    }

  private:
    std::string_view frame_;
};

/// One number or text of a frame and its place in the record.
struct hex_field {
    std::size_t position;
    std::size_t length;
    i32 channel_rec::*target;
};

struct text_field {
    std::size_t position;
    std::size_t length;
    std::string channel_rec::*target;
};

inline void store(const frame_fields& frame, channel_rec& rec, std::span<const hex_field> fields) {
    for (const hex_field& field : fields)
        rec.*field.target = frame.hex(field.position, field.length);
}

inline void store(const frame_fields& frame, channel_rec& rec, std::span<const text_field> fields) {
    for (const text_field& field : fields)
        rec.*field.target = frame.text(field.position, field.length);
}

/// The parameter frame, ":06"; its forms differ in length.
void decode_parameters(const frame_fields& frame, i16 channel);

} // namespace tyxo::sensor
