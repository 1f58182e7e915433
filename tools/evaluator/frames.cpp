#include "frames.h"

#include <algorithm>
#include <cmath>

namespace tyxo::evaluator_sim {

namespace {

constexpr long signed_zero = 32768; // raw value of 0 in the two fields that may be negative

std::string raw_field(double value) {
    return hex_field(std::lround(std::clamp(value, 0.0, 65535.0)), 4);
}

} // namespace

std::string hex_field(long value, int digits) {
    const long limit = (1L << (4 * digits)) - 1;
    value = std::clamp(value, 0L, limit);
    std::string text(static_cast<size_t>(digits), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value /= 16)
        *digit = "0123456789ABCDEF"[value % 16];
    return text;
}

std::string text_field(std::string_view text, size_t width) {
    std::string field(text.substr(0, width));
    field.resize(width, ' ');
    return field;
}

std::string check_digits(std::string_view body) {
    unsigned sum = 0;
    for (const char c : body.substr(std::min<size_t>(1, body.size())))
        sum += static_cast<unsigned char>(c);
    const unsigned check = (256 - (sum & 0xFF)) & 0xFF;
    return {"0123456789abcdef"[check / 16], "0123456789abcdef"[check % 16]};
}

std::string close_frame(std::string_view body) {
    return std::string(body) + check_digits(body) + "\r\n";
}

bool check_passes(std::string_view frame) {
    return frame.size() >= 5 && frame.front() == ':' &&
           check_digits(frame.substr(0, frame.size() - 2)) == frame.substr(frame.size() - 2);
}

std::string identification_body(const Identification& id) {
    return ":00" + text_field(id.text1, 7) + text_field(id.text2, 7) + text_field(id.text3, 6) +
           text_field(id.text4, 10);
}

std::string values_body(const Values& values, ValuesForm form) {
    std::string body = ":01" + raw_field(signed_zero + 10 * values.tsignal) + raw_field(10 * values.speed);
    if (form >= ValuesForm::state) body += hex_field(values.test_signal, 4);
    if (form >= ValuesForm::voltage) body += raw_field(signed_zero + 100 * values.voltage);
    if (form >= ValuesForm::effective_dc) body += raw_field(10 * values.effective_dc);
    if (form >= ValuesForm::effective_ac) body += raw_field(10 * values.effective_ac);
    return body;
}

std::string curve_body(int code, int block, const Curve& curve) {
    std::string body = code == 3 ? ":03" : ":04";
    body += hex_field(block, 2);
    const size_t length = curve.size() / curve_blocks;
    const size_t begin = static_cast<size_t>(block - 1) * length;
    for (size_t i = begin; i < begin + length; ++i)
        body += hex_field(curve.at(i), 4);
    return body;
}

std::string write_answer_body(bool accepted) {
    return accepted ? ":0701" : ":0700";
}

std::string status_body(const Status& status, StatusForm form) {
    std::string body = ":08" + text_field(status.firmware, 5) +
                       hex_field(static_cast<long>(status.alarm), 4) +
                       hex_field(static_cast<long>(status.error), 4);
    if (form == StatusForm::full) {
        body += "0000"; // four digits without a meaning for the receiver
        body += hex_field(status.mode, 2) + hex_field(status.inhibit_on ? 1 : 0, 4) +
                hex_field(status.inhibit_left, 4) + hex_field(status.extension, 2);
    }
    return body;
}

} // namespace tyxo::evaluator_sim
