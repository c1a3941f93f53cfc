#include "fluid/numbers.hpp"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>
#include <system_error>

namespace tessarel::fluid {
namespace {

constexpr std::string_view blanks = " \t";

bool is_digit(char c) noexcept {
  return c >= '0' && c <= '9';
}

/// The first value of a row, up to its separator.
std::string_view first_token(std::string_view row) noexcept {
  const auto first = row.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  row.remove_prefix(first);
  return row.substr(0, row.find_first_of(" \t,/"));
}

/// A sign in front of `text`, taken off it.
bool take_sign(std::string_view& text) noexcept {
  if (text.empty() || (text[0] != '-' && text[0] != '+')) return false;
  const bool negative = text[0] == '-';
  text.remove_prefix(1);
  return negative;
}

/// The power of ten behind a mantissa: e3, D-3, +3, nothing. The letter may fail where the sign is there.
bool read_exponent(std::string_view text, int& exponent) noexcept {
  exponent = 0;
  if (text.empty()) return true;
  const bool letter = std::string_view("eEdDqQ").find(text[0]) != std::string_view::npos;
  if (letter)
    text.remove_prefix(1);
  else if (text[0] != '+' && text[0] != '-')
    return false;
  const bool negative = take_sign(text);
  if (text.empty() || !is_digit(text[0])) return false;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, exponent);
  if (negative) exponent = -exponent;
  return result.ec == std::errc{} && result.ptr == end && exponent > -100000 && exponent < 100000;
}

/// Reads `token`, all of it. Digits without a point count as units of 10^-`decimals`.
bool parse_real(std::string_view token, int decimals, double& value) {
  const bool negative = take_sign(token);
  std::size_t length = 0;
  bool digits = false, point = false;
  for (; length < token.size(); ++length) {
    if (is_digit(token[length]))
      digits = true;
    else if (token[length] == '.' && !point)
      point = true;
    else
      break;
  }
  int exponent = 0;
  if (!digits || !read_exponent(token.substr(length), exponent)) return false;
  if (!point) exponent -= decimals;
  // The decimal exponent goes into the text, so that the value is the double nearest to the number written.
  const std::string number = std::string(token.substr(0, length)) + 'e' + std::to_string(exponent);
  double magnitude = 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), magnitude);
  if (result.ec != std::errc{} || !std::isfinite(magnitude)) return false;
  value = negative ? -magnitude : magnitude;
  return true;
}

}  // namespace

bool is_blank(std::string_view row) noexcept {
  return row.find_first_not_of(blanks) == std::string_view::npos;
}

bool read_real(std::string_view row, double& value) {
  return parse_real(first_token(row), 0, value);
}

bool has_decimal_comma(std::string_view row) noexcept {
  const std::string_view token = first_token(row);
  if (token.empty()) return false;
  const char* behind = token.data() + token.size();
  const char* end = row.data() + row.size();
  return end - behind >= 2 && behind[0] == ',' && is_digit(behind[1]);
}

bool read_integer(std::string_view row, std::int32_t& value) {
  std::string_view token = first_token(row);
  const bool negative = take_sign(token);
  if (token.empty() || !is_digit(token[0])) return false;
  const char* end = token.data() + token.size();
  std::int32_t magnitude = 0;
  const auto result = std::from_chars(token.data(), end, magnitude);
  if (result.ec != std::errc{} || result.ptr != end) return false;
  value = negative ? -magnitude : magnitude;
  return true;
}

bool read_fixed(std::string_view field, int decimals, double& value) {
  std::string token;
  for (const char c : field)
    if (c != ' ' && c != '\t') token += c;
  if (!token.empty()) return parse_real(token, decimals, value);
  value = 0.0;
  return true;
}

}  // namespace tessarel::fluid
