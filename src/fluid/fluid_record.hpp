// The parser of a fluid record, one for the file and the database.
//
// Rows (numbered from 1): 1 name; 3, 4 tmin, tmax; 6-10 molar mass, acentric factor, segment number, segment
// diameter, dispersion energy; 12-15 heat capacity a, b, c, d in units of 1, 1e-3, 1e-6, 1e-9; 16 formation enthalpy;
// from 18 blocks opened by a keyword: associating, dipolar, quadrupolar, polarizable, and eof at the end. Rows 2, 5,
// 11, 17 and one row behind each block are blank.
#pragma once

#include <string_view>

#include "fluid/parameters.hpp"
#include "fluid/rows.hpp"
#include "support/text.hpp"

namespace tessarel::fluid {

/// Sites of one type on a component that a record may state; more is a damaged record.
inline constexpr int max_sites_of_type = 1000;

/// The first 32 characters in lower case (A to Z only), blank-padded.
FixedText<32> tolower_tessarel(std::string_view text) noexcept;

/// Where a reader composes the text of a failure; its message refers to it.
using FailureText = FixedText<320>;

/// Reads a record into component `i` (0 to 19). Returns "No errors" or "Unexpected data in fluid data file
/// "<name>.saf"..." with the name inside the record, or `default_name` where the record ends before the name; where a
/// number means no fluid (least_molar_mass and what is said there, or a decimal comma), "... file "<default_name>.saf",
/// row <row>: <reason>...". The parameters of the component are then partly overwritten.
Message read_fluid_record(RowSource& rows, int i, std::string_view default_name, Parameters& p, FailureText& text);

}  // namespace tessarel::fluid
