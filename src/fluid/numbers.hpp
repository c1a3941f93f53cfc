// Numbers as they stand in the rows of data files, read independently of the locale.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessarel::fluid {

/// True when the row holds nothing but blanks and tabs.
[[nodiscard]] bool is_blank(std::string_view row) noexcept;

/// Reads the first value of `row` as a list-directed read does: 1.5, 1.5e3, 1.5D3, 1.5+3; a blank, tab, comma or slash
/// ends it and what follows is ignored. False, with `value` untouched, for anything else: no value, other text
/// attached to it, a value that is no finite double.
[[nodiscard]] bool read_real(std::string_view row, double& value);
[[nodiscard]] bool read_integer(std::string_view row, std::int32_t& value);

/// True for a row whose first value has a comma for its decimal point, "88,15": read_real takes it for 88.
[[nodiscard]] bool has_decimal_comma(std::string_view row) noexcept;

/// Reads a field of fixed width under the edit descriptor Fw.d: blanks do not count, a blank field is 0, and digits
/// without a decimal point are units of 10^-d.
[[nodiscard]] bool read_fixed(std::string_view field, int decimals, double& value);

}  // namespace tessarel::fluid
