#include "line.h"

#include "words.h"

namespace months::check {

namespace {

void digits_of(std::string_view body, char* digits) {
    unsigned sum = 0;
    for (const char c : body.substr(1))
        sum += static_cast<unsigned char>(c);
    const unsigned rest = (256 - sum % 256) % 256;
    digits[0] = "0123456789abcdef"[rest / 16];
    digits[1] = "0123456789abcdef"[rest % 16];
}

} // namespace

std::string check_digits(std::string_view body) {
    std::string digits(2, '0');
    digits_of(body, digits.data());
    return digits;
}

bool frame_fields::check_is_right() const {
    if (frame_.size() < 5) return false;
    char digits[2];
    digits_of(frame_.substr(0, frame_.size() - 4), digits);
    return frame_.substr(frame_.size() - 4, 2) == std::string_view(digits, 2);
}

std::string_view frame_fields::text(int position, int length) const {
    if (position + length - 1 > static_cast<int>(frame_.size())) throw no_such_field();
    return frame_.substr(static_cast<std::size_t>(position - 1), static_cast<std::size_t>(length));
}

int frame_fields::code() const {
    return static_cast<int>(nearest(leading_number(frame_.substr(1, 2))));
}

} // namespace months::check
