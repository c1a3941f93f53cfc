// The table of binary interaction parameters BIPs.mix.
//
// One row a pair in fixed columns (2A32,F10.5): the two component names as they stand in the fluid records, and the
// entry, a number or the code of a temperature correlation (kij.hpp). Columns from 75 on are not read.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "fluid/parameters.hpp"
#include "platform/byte_source.hpp"
#include "platform/fluid_database.hpp"
#include "support/text.hpp"

namespace tessarel::fluid {

inline constexpr int max_bips = 1000;  ///< capacity of the table in rows

/// The table in memory.
struct BipTable {
  std::array<double, max_bips> bip{};
  std::array<std::array<FixedText<32>, 2>, max_bips> cn{};
  std::array<std::uint64_t, max_bips> key{};  ///< of the two names in either order; 0 for a row never written
  /// Row numbers from 1 by key, in open addressing: rows of one key follow each other in their order; 0 is the end.
  std::array<std::uint16_t, 2048> index{};
  // The file that the rows are of, so that it is read again only when it has changed.
  std::string path{};
  platform::FileStamp stamp{};
};

/// Fills `k_ij` of the mixture from BIPs.mix of the data in `directory` (file_location.hpp); 0 for a pair that is not
/// there. `table` keeps the rows that were read; rows of an earlier, longer table stay in it and take part in the
/// search. The file is read when it has changed since the table read it. The first row of a pair counts, in either
/// order. Messages: "Error opening mixture parameter file BIPs.mix...", "Unexpected data in mixture parameter file
/// BIPs.mix...", with `k_ij` left at 0.
Message readbips(Parameters& p, BipTable& table, std::string_view directory);

/// The same with the path of the table given.
Message readbips_from(std::string_view filename, Parameters& p, BipTable& table);

/// Reads up to `nrows` rows (at most 1000) of the file `filename` into `table`; further rows of it are not cleared.
/// A row that ends early counts as blank-padded. Messages as readbips.
Message readbipsfile(std::string_view filename, int nrows, BipTable& table);

/// The same from rows in sequence.
Message readbips_rows(platform::ByteSource& bytes, int nrows, BipTable& table);

/// Reads the record `filename` of the database in the directory `fluiddb`, up to its first blank row.
Message readbipsdb(std::string_view fluiddb, std::string_view filename, platform::FluidDatabase& database,
                   BipTable& table);

}  // namespace tessarel::fluid
