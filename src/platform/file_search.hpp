// Listing of the files of a directory that match a pattern.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/text.hpp"

namespace tessarel::platform {

/// An open search: its names in ascending order and the next to be told. Closed by its destruction.
struct Search {
  std::vector<std::string> names;
  std::size_t next = 0;
};
using SearchHandle = std::unique_ptr<Search>;

/// What a search tells of a file: its name, without the directory.
struct FindData {
  FixedText<256> name;
};

/// Starts a search: the part behind the last separator is a pattern with *, ? and [...]. Returns a handle, null when
/// nothing matches. "." and ".." are not among the names.
SearchHandle find_first_file(std::string_view path_with_pattern, FindData& data);
/// True and the next name, false when there are no more.
bool find_next_file(const SearchHandle& handle, FindData& data);

}  // namespace tessarel::platform
