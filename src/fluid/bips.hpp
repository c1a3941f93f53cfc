// The table of binary interaction parameters BIPs.mix, module fluid_module.
//
// One row a pair in fixed columns (2A32,F10.5): the two component names as they stand in the fluid records, and the
// entry, a number or the code of a temperature correlation (kij.hpp). Columns from 75 on are not read.
#pragma once

#include <array>
#include <string_view>

#include "platform/byte_source.hpp"
#include "support/text.hpp"

namespace tessarel::fluid_module {

inline constexpr int max_bips = 1000;  ///< capacity of the table in rows

/// The table in memory.
struct BipTable {
  std::array<double, max_bips> bip{};
  std::array<std::array<FixedText<32>, 2>, max_bips> cn{};
};

/// Fills `k_ij` of the selected mixture from BIPs.mix in the library's directory; 0 for a pair that is not there.
/// The first row of a pair counts, in either order of the names. Messages: "Error opening mixture parameter file
/// BIPs.mix...", "Unexpected data in mixture parameter file BIPs.mix...", with `k_ij` left at 0.
Message readbips();

/// The same with the path of the table given.
Message readbips_from(std::string_view filename);

/// Reads up to `nrows` rows (at most 1000) of the file `filename` into `table`; further rows of it are not cleared.
/// A row that ends early counts as blank-padded. Messages as readbips.
Message readbipsfile(std::string_view filename, int nrows, BipTable& table);

/// The same from rows in sequence.
Message readbips_rows(platform::ByteSource& bytes, int nrows, BipTable& table);

/// Reads the record `filename` of the database in the directory `fluiddb`, up to its first blank row.
Message readbipsdb(std::string_view fluiddb, std::string_view filename, BipTable& table);

}  // namespace tessarel::fluid_module
