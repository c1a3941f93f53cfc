// Readers of fluid records: from the fluid database or from files, into the parameters of a mixture.
#pragma once

#include <cstddef>
#include <string_view>

#include "fluid/bips.hpp"
#include "fluid/file_location.hpp"
#include "fluid/fluid_record.hpp"
#include "fluid/record_memory.hpp"
#include "platform/fluid_database.hpp"
#include "support/text.hpp"

namespace tessarel::fluid {

/// A host's array of names: fields of one length, blank-padded, one behind the other.
struct NameList {
  const char* data = nullptr;
  std::size_t length = 0;

  /// Name number `i` from 0 without its trailing blanks; empty for an array that is none of names.
  [[nodiscard]] std::string_view operator[](int i) const noexcept {
    if (!usable_field(data, length) || length > longest_text || i < 0) return {};
    return trimmed({data + at(i) * length, length});
  }
};

/// What the readers of one session work with besides the parameters.
struct Sources {
  platform::FluidDatabase& database;
  BipTable bips;     ///< rows of an earlier, longer table stay and take part in the search
  FailureText text;  ///< of the last failure
  RecordMemory records{};
  PathText directory{};  ///< of the data, as file_location.hpp takes it; blank for the usual place
};

/// Reads the `n` components named in `fluids` into the places from 0, each from the database, or else from its file
/// `<name>.saf` in the fluid directory. Stops at the first that fails, with the message of readfluidsfile. A record
/// that `sources` remembers is read again only when the database or its file has changed.
Message readfluids(NameList fluids, Parameters& p, Sources& sources);

/// The same with the fluid directory given, which ends in a separator.
Message readfluids_from(std::string_view directory, NameList fluids, Parameters& p, Sources& sources);

/// Reads one file into place `i`, counted from 0. `filename` is the full path with extension. Messages:
/// "Error opening fluid data file of <filename>", "Unexpected data in fluid data file "<name>.saf"...",
/// "Place of a component must be 1 to 20...".
Message readfluidsfile(std::string_view filename, int i, Parameters& p, FailureText& text);

/// Reads the record with the key `filename`, `<name>.saf`, of the database in the directory `fluiddb` into place `i`,
/// counted from 0. Messages as readfluidsfile.
Message readfluidsdb(std::string_view fluiddb, std::string_view filename, int i, Parameters& p, Sources& sources);

}  // namespace tessarel::fluid
