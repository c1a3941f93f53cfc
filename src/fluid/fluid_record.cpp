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

/// A record while it is read, and the first number in it that means no fluid.
struct Reading {
  RowSource& rows;
  std::string_view fault{};
  int faulty_row = 0;

  void require(bool sound, std::string_view otherwise) {
    if (sound || !fault.empty()) return;
    fault = otherwise;
    faulty_row = rows.row();
  }
};

bool real_row(Reading& in, double& value) {
  std::string_view row;
  if (!in.rows.next_value(row) || !read_real(row, value)) return false;
  in.require(!has_decimal_comma(row), "decimal comma");
  return true;
}

bool positive_row(Reading& in, double& value) {
  if (!real_row(in, value)) return false;
  in.require(value > 0, "value not above 0");
  return true;
}

/// Energy or volume of a bond.
bool bond_row(Reading& in, double& value) {
  if (!real_row(in, value)) return false;
  in.require(value >= 0, "value below 0");
  return true;
}

bool integer_row(RowSource& rows, std::int32_t low, std::int32_t high, std::int32_t& value) {
  std::string_view row;
  std::int32_t read = 0;
  if (!rows.next_value(row) || !read_integer(row, read) || read < low || read > high) return false;
  value = read;
  return true;
}

bool scaled_row(Reading& in, double unit, double& value) {
  if (!real_row(in, value)) return false;
  value /= unit;
  return true;
}

/// Rows 2 to 17, the values that every record has.
bool read_values(Reading& in, std::size_t i, Parameters& r) {
  RowSource& rows = in.rows;
  rows.skip_separator();
  if (!positive_row(in, r.tmin[i]) || !positive_row(in, r.tmax[i])) return false;
  in.require(r.tmax[i] >= r.tmin[i], "highest temperature below the lowest");
  rows.skip_separator();
  if (!real_row(in, r.molmas[i])) return false;
  in.require(r.molmas[i] >= least_molar_mass, "molar mass below 1 g/mol");
  if (!real_row(in, r.omega[i]) || !positive_row(in, r.mseg[i]) || !positive_row(in, r.sigma[i]) ||
      !positive_row(in, r.epsil[i]))
    return false;
  rows.skip_separator();
  if (!scaled_row(in, 1.0, r.cp0_a[i]) || !scaled_row(in, 1e3, r.cp0_b[i]) || !scaled_row(in, 1e6, r.cp0_c[i]) ||
      !scaled_row(in, 1e9, r.cp0_d[i]) || !real_row(in, r.delhf0[i]))
    return false;
  rows.skip_separator();
  return true;
}

/// Number of site types, sites of each type, energies of the pairs of different types, association volume. Sites of
/// one type do not bond with each other.
bool read_association(Reading& in, std::size_t i, Parameters& r) {
  std::int32_t types = 0;
  if (!integer_row(in.rows, 0, max_sites, types)) return false;
  const auto count = static_cast<std::size_t>(types);
  for (std::size_t a = 0; a < count; ++a)
    if (!integer_row(in.rows, 0, max_sites_of_type, r.nhb_no[i][a])) return false;
  auto& energy = r.eps_hb[i][i];
  for (std::size_t a = 0; a < count; ++a) {
    energy[a][a] = 0.0;
    for (std::size_t b = a + 1; b < count; ++b) {
      if (!bond_row(in, energy[a][b])) return false;
      energy[b][a] = energy[a][b];
    }
  }
  if (!bond_row(in, r.kap_hb[i][i])) return false;
  r.nhb_typ[i] = types;
  return true;
}

bool read_block(Reading& in, std::size_t i, std::string_view keyword, Parameters& r) {
  if (keyword == "associating") return read_association(in, i, r);
  if (keyword == "dipolar") return real_row(in, r.dipole[i]);
  if (keyword == "quadrupolar") return real_row(in, r.quapole[i]);
  if (keyword == "polarizable") return real_row(in, r.polariz[i]);
  return false;
}

bool read_blocks(Reading& in, std::size_t i, Parameters& r) {
  RowSource& rows = in.rows;
  std::string_view row;
  while (rows.next(row)) {
    const FixedText<32> keyword = tolower_tessarel(text_of(row).view());
    if (keyword.trimmed() == "eof") return true;
    if (!is_blank(row) && !read_block(in, i, keyword.trimmed(), r)) return false;
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
  Reading in{rows};
  std::string name(trimmed(default_name));
  if (rows.next(row)) {
    r.compname[i] = text_of(row);
    name = r.compname[i].trimmed();
    if (read_values(in, i, r) && read_blocks(in, i, r)) {
      if (in.fault.empty()) return no_errors;
      text.assign("Unexpected data in fluid data file \"" + std::string(trimmed(default_name)) + ".saf\", row " +
                  std::to_string(in.faulty_row) + ": " + std::string(in.fault) + "...");
      return Message::of(text.trimmed());
    }
  }
  text.assign("Unexpected data in fluid data file \"" + name + ".saf\"...");
  return Message::of(text.trimmed());
}

}  // namespace tessarel::fluid
