// Where the library's data lie, relative to the file that the library was loaded from: for /a/b/lib/file the fluids
// stand in /a/b/fluids/ and the table of binary parameters in /a/b/lib/.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "support/text.hpp"

namespace tessarel::fluid {

/// A path in the library's text form.
using PathText = FixedText<256>;

/// The model key, by which the platform knows this library.
inline constexpr std::string_view model_key = "TESSAREL";

/// Directory for a library whose own directory cannot be told.
inline constexpr std::string_view fallback_directory = "/opt/Ostrakine/fluids/";

inline constexpr int max_list = 500;
using FileList = std::array<PathText, max_list>;

/// Directory of the loaded library `name`, ending in its separator.
PathText modulepath(std::string_view name);
/// Fluid directory of the loaded library `name`, ending in a separator.
PathText fluidpath(std::string_view name);

/// Where a session reads its data.
struct DataPlace {
  std::string fluids, tables;  ///< directories of the fluid records and of the table of pairs, with their separator
};
/// The data in `directory`, which holds `fluids/` and, beside it or in `lib/`, the table of pairs. Without a directory
/// that of the environment variable TESSAREL_DATA; without that beside the library, or where nothing is, in
/// `share/tessarel/` beside the library's directory, also of the file that a link to the library leads to.
DataPlace data_place(std::string_view directory);

/// Whether both are there in `directory`.
bool has_data(std::string_view directory);

/// Name of the table of pairs.
inline constexpr std::string_view bips_file = "BIPs.mix";

/// The same for a library file of given path. Back slash and forward slash both separate.
PathText module_directory(std::string_view library_file);
PathText fluid_directory(std::string_view library_file);

/// Names of the files in `directory`, which ends in a separator, that match `pattern`: the first 500 in ascending
/// order, the other entries of `list` blank. A service for hosts.
void searchdirectory(std::string_view directory, std::string_view pattern, FileList& list);

}  // namespace tessarel::fluid
