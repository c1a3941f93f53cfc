#include "fluid/fluid_record.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fluid/numbers.hpp"

namespace tessarel::fluid {
namespace {

/// A text field: the first 32 characters of a row, tabs counting as blanks.
FixedText<32> text_of(std::string_view row) noexcept {
  FixedText<32> text(row);
  std::replace(text.data(), text.data() + text.size(), '\t', ' ');
  return text;
}

bool real_row(RowSource& rows, double& value) {
  std::string_view row;
  return rows.next_value(row) && read_real(row, value);
}

bool integer_row(RowSource& rows, std::int32_t low, std::int32_t high, std::int32_t& value) {
  std::string_view row;
  std::int32_t read = 0;
  if (!rows.next_value(row) || !read_integer(row, read) || read < low || read > high) return false;
  value = read;
  return true;
}

bool scaled_row(RowSource& rows, double unit, double& value) {
  if (!real_row(rows, value)) return false;
  value /= unit;
  return true;
}

/// Rows 2 to 17, the values that every record has.
bool read_values(RowSource& rows, std::size_t i, Parameters& r) {
  rows.skip_separator();
  if (!real_row(rows, r.tmin[i]) || !real_row(rows, r.tmax[i])) return false;
  rows.skip_separator();
  if (!real_row(rows, r.molmas[i]) || !real_row(rows, r.omega[i]) || !real_row(rows, r.mseg[i]) ||
      !real_row(rows, r.sigma[i]) || !real_row(rows, r.epsil[i]))
    return false;
  rows.skip_separator();
  if (!scaled_row(rows, 1.0, r.cp0_a[i]) || !scaled_row(rows, 1e3, r.cp0_b[i]) || !scaled_row(rows, 1e6, r.cp0_c[i]) ||
      !scaled_row(rows, 1e9, r.cp0_d[i]) || !real_row(rows, r.delhf0[i]))
    return false;
  rows.skip_separator();
  return true;
}

/// Number of site types, sites of each type, energies of the pairs of different types, association volume. Sites of
/// one type do not bond with each other.
bool read_association(RowSource& rows, std::size_t i, Parameters& r) {
  std::int32_t types = 0;
  if (!integer_row(rows, 0, max_sites, types)) return false;
  const auto count = static_cast<std::size_t>(types);
  for (std::size_t a = 0; a < count; ++a)
    if (!integer_row(rows, 0, max_sites_of_type, r.nhb_no[i][a])) return false;
  auto& energy = r.eps_hb[i][i];
  for (std::size_t a = 0; a < count; ++a) {
    energy[a][a] = 0.0;
    for (std::size_t b = a + 1; b < count; ++b) {
      if (!real_row(rows, energy[a][b])) return false;
      energy[b][a] = energy[a][b];
    }
  }
  if (!real_row(rows, r.kap_hb[i][i])) return false;
  r.nhb_typ[i] = types;
  return true;
}

bool read_block(RowSource& rows, std::size_t i, std::string_view keyword, Parameters& r) {
  if (keyword == "associating") return read_association(rows, i, r);
  if (keyword == "dipolar") return real_row(rows, r.dipole[i]);
  if (keyword == "quadrupolar") return real_row(rows, r.quapole[i]);
  if (keyword == "polarizable") return real_row(rows, r.polariz[i]);
  return false;
}

bool read_blocks(RowSource& rows, std::size_t i, Parameters& r) {
  std::string_view row;
  while (rows.next(row)) {
    const FixedText<32> keyword = tolower_tessarel(text_of(row).view());
    if (keyword.trimmed() == "eof") return true;
    if (!is_blank(row) && !read_block(rows, i, keyword.trimmed(), r)) return false;
    rows.skip_separator();
  }
  return false;
}

}  // namespace

FixedText<32> tolower_tessarel(std::string_view text) noexcept {
  FixedText<32> lower(text);
  for (char* c = lower.data(); c != lower.data() + lower.size(); ++c)
    if (*c >= 'A' && *c <= 'Z') *c = static_cast<char>(*c - 'A' + 'a');
  return lower;
}

Message read_fluid_record(RowSource& rows, int place, std::string_view default_name, Parameters& r, FailureText& text) {
  const auto i = at(place);
  r.parat[i] = 0.12;
  r.saftpar[i] = 0.0;
  r.polariz[i] = r.dipole[i] = r.quapole[i] = 0.0;
  r.nhb_typ[i] = 0;
  r.compname[i].assign({});

  std::string_view row;
  std::string name(trimmed(default_name));
  if (rows.next(row)) {
    r.compname[i] = text_of(row);
    name = r.compname[i].trimmed();
    if (read_values(rows, i, r) && read_blocks(rows, i, r)) return no_errors;
  }
  text.assign("Unexpected data in fluid data file \"" + name + ".saf\"...");
  return Message::of(text.trimmed());
}

}  // namespace tessarel::fluid
