// Words and numbers of the command language.
//
// Every reader throws InputError with a sentence that names the word at fault, so that a command line is
// either understood completely or refused with a reason.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::evaluator_sim {

/// A command or an option that cannot be understood; what() is fit for the user's eyes.
class InputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The words of a line, separated by blanks and tabs.
std::vector<std::string> split_words(std::string_view line);

/// The text without leading and trailing blanks, tabs and line ends.
std::string_view trim(std::string_view text);

/// A decimal number in low to high; `what` names it in the refusal.
double read_number(std::string_view word, std::string_view what, double low, double high);

/// A whole decimal number in low to high.
int read_integer(std::string_view word, std::string_view what, int low, int high);

/// A hexadecimal number of at most four digits.
unsigned read_hex(std::string_view word, std::string_view what);

/// Bytes from a text with the escapes \r \n \t \\ and \xHH.
std::string unescape(std::string_view text);

/// The bytes as one printable line: what unescape would turn into them again.
std::string printable(std::string_view bytes);

} // namespace tyxo::evaluator_sim
