#include "platform/file_search.hpp"

#include <dirent.h>
#include <fnmatch.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace tessarel::platform {
namespace {

struct Search {
  std::vector<std::string> names;
  std::size_t next = 0;
};

std::map<SearchHandle, Search> searches;  // the open searches by handle
SearchHandle last_handle = 0;

std::vector<std::string> matching_names(const std::string& directory, const std::string& pattern) {
  std::vector<std::string> names;
  DIR* stream = ::opendir(directory.c_str());
  if (stream == nullptr) return names;
  while (const dirent* entry = ::readdir(stream)) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (::fnmatch(pattern.c_str(), name.c_str(), FNM_NOESCAPE) == 0) names.push_back(name);
  }
  ::closedir(stream);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

SearchHandle find_first_file(std::string_view path_with_pattern, FindData& data) {
  std::string path(trimmed(path_with_pattern));
  if (path.find('\0') != std::string::npos) return no_search;
  std::replace(path.begin(), path.end(), '\\', '/');
  const auto slash = path.rfind('/');
  const std::string directory = slash == std::string::npos ? "./" : path.substr(0, slash + 1);
  Search search{matching_names(directory, slash == std::string::npos ? path : path.substr(slash + 1)), 0};
  if (search.names.empty()) return no_search;
  const SearchHandle handle = ++last_handle;
  searches.emplace(handle, std::move(search));
  find_next_file(handle, data);
  return handle;
}

bool find_next_file(SearchHandle handle, FindData& data) {
  const auto found = searches.find(handle);
  if (found == searches.end() || found->second.next == found->second.names.size()) return false;
  data.name.assign(found->second.names[found->second.next++]);
  return true;
}

void find_close(SearchHandle handle) {
  searches.erase(handle);
}

}  // namespace tessarel::platform
