// The frames an Evaluator puts on its line, as text.
//
// A frame is ":", a two-character code, fixed-width upper-case data, two lower-case check digits, CR LF. The
// functions named *_body return everything up to the last data character; close_frame adds the rest.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tyxo::evaluator_sim {

/// One curve over an engine cycle, sample 0 at the start of the cycle.
using Curve = std::array<std::uint16_t, 256>;

constexpr int curve_blocks = 4;

/// The number in upper-case hexadecimal with exactly `digits` digits; values out of range go to the nearest
/// limit.
std::string hex_field(long value, int digits);

/// The text cut or filled with blanks to exactly `width` characters.
std::string text_field(std::string_view text, size_t width);

/// The two lower-case check digits of a body that starts with ":".
std::string check_digits(std::string_view body);

/// The body with check digits and CR LF.
std::string close_frame(std::string_view body);

/// Whether a complete frame (with check digits, without its CR LF) passes the check.
bool check_passes(std::string_view frame);

/// Code 00: four texts of 7, 7, 6 and 10 characters.
struct Identification {
    std::string text1 = "TYXO-EV";
    std::string text2 = "KVD-SIM";
    std::string text3 = "000100";
    std::string text4 = "SIMULATION";
};

std::string identification_body(const Identification& id);

/// How much stands in a code 01 frame; each form holds what the one before it holds and one field more.
enum class ValuesForm { brief, state, voltage, effective_dc, effective_ac };

/// The measured values in engineering units.
struct Values {
    double tsignal = 0;      ///< % of the DC alarm level
    double speed = 0;        ///< rpm
    int test_signal = 0;     ///< 0 off, 1 or 2
    double voltage = 0;      ///< mV
    double effective_dc = 0; ///< % of the DC alarm level
    double effective_ac = 0; ///< % of the AC alarm level
};

std::string values_body(const Values& values, ValuesForm form);

/// Codes 03 and 04: block 1 to 4 of a curve, 64 samples each.
std::string curve_body(int code, int block, const Curve& curve);

/// Code 07: the answer to a parameter write.
std::string write_answer_body(bool accepted);

/// How much stands in a code 08 frame.
enum class StatusForm { brief, full };

struct Status {
    std::string firmware; ///< five characters
    unsigned alarm = 0;
    unsigned error = 0;
    int mode = 1; ///< 0 advanced, 1 standard, 99 data not available
    bool inhibit_on = false;
    int inhibit_left = 0; ///< seconds
    int extension = 0;    ///< two digits at the end of the full form
};

std::string status_body(const Status& status, StatusForm form);

} // namespace tyxo::evaluator_sim
