// Listing of the files of a directory that match a pattern.
#pragma once

#include <cstdint>
#include <string_view>

#include "support/text.hpp"

namespace tessarel::platform {

using SearchHandle = std::intptr_t;
inline constexpr SearchHandle no_search = -1;

/// What a search tells of a file: its name, without the directory.
struct FindData {
  FixedText<256> name;
};

/// Starts a search: the part behind the last separator is a pattern with *, ? and [...]. Returns a handle, or -1 when
/// nothing matches. The names come in ascending order; "." and ".." are not among them.
SearchHandle find_first_file(std::string_view path_with_pattern, FindData& data);
/// True and the next name, false when there are no more or the handle is not that of a search.
bool find_next_file(SearchHandle handle, FindData& data);
/// Ends the search; an unknown handle is ignored.
void find_close(SearchHandle handle);

}  // namespace tessarel::platform
