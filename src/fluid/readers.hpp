// Readers of fluid records, module fluid_module: they fill the global record.
#pragma once

#include <cstddef>
#include <string_view>

#include "fluid/fluid_record.hpp"
#include "support/text.hpp"

namespace tessarel::fluid_module {

/// A host's array of names: fields of one length, blank-padded, one behind the other.
struct NameList {
  const char* data = nullptr;
  std::size_t length = 0;

  /// Name number `i` from 0 without its trailing blanks; empty for an unusable array.
  [[nodiscard]] std::string_view operator[](int i) const noexcept {
    if (!usable_field(data, length) || i < 0) return {};
    return trimmed({data + static_cast<std::size_t>(i) * length, length});
  }
};

/// Sets `n` (negative counts as 0) and the mole fractions and reads components and binary parameters. For hosts that
/// do not need the flags and the critical point derived. More than 20 components or fractions that are not finite are
/// refused with the record untouched: "Number of components must not exceed 20...", "Mole fractions must be finite
/// numbers...". Other messages: those of readfluids and readbips.
Message setfluid(int n, NameList fluids, const double* z);

/// Reads the `n` components named in `fluids` into the places from 0, each from the database, or else from its file
/// `<name>.saf` in the fluid directory. Stops at the first that fails, with the message of readfluidsfile.
Message readfluids(NameList fluids);

/// The same with the fluid directory given, which ends in a separator.
Message readfluids_from(std::string_view directory, NameList fluids);

/// Reads one file into place `i`, counted from 0. `filename` is the full path with extension. Messages:
/// "Error opening fluid data file of <filename>", "Unexpected data in fluid data file "<name>.saf"...",
/// "Place of a component must be 1 to 20...".
Message readfluidsfile(std::string_view filename, int i);

/// Reads the record with the key `filename`, `<name>.saf`, of the database in the directory `fluiddb` into place `i`,
/// counted from 0. Messages as readfluidsfile.
Message readfluidsdb(std::string_view fluiddb, std::string_view filename, int i);

}  // namespace tessarel::fluid_module
