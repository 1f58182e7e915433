#pragma once
// Numbers as texts, the same whatever the locale.

#include "basics/types.h"

#include <string>
#include <string_view>

namespace tyxo {

/// Plain decimal form, without blank or padding: "255", "-3".
[[nodiscard]] std::string plain(i32 value);
void append_plain(std::string& text, i32 value);

/// Decimal form padded with zeros from the left to `width` digits; for values of at least 0.
[[nodiscard]] std::string padded(i32 value, int width);
void append_padded(std::string& text, i32 value, int width);

/// The signed form: a blank in front of a non-negative value, "." as the point, no zero before it, no
/// trailing zeros, 15 significant digits at most. A value that needs more than 15 places behind the point, or
/// is 1E+15 and above, has an exponent: " 1.38888888888889E-03". An infinity or NaN is an overflow failure.
[[nodiscard]] std::string signed_form(double value);

/// The same without a blank and with a zero before the point: "0.1", "-2.5", "150". An infinity or NaN is an
/// overflow failure.
[[nodiscard]] std::string plain_number(double value);

/// The number that a text begins with: blanks in front are skipped, "." is the point, an exponent counts,
/// whatever stands behind is left alone. A text without a number is 0. A number beyond the range of a double
/// is an overflow failure.
[[nodiscard]] double leading_number(std::string_view text);

} // namespace tyxo
