#include "platform/file_search.hpp"

#include <dirent.h>
#include <fnmatch.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace tessarel::platform {
namespace {

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
  if (path.find('\0') != std::string::npos) return nullptr;
  std::replace(path.begin(), path.end(), '\\', '/');
  const auto slash = path.rfind('/');
  const std::string directory = slash == std::string::npos ? "./" : path.substr(0, slash + 1);
  auto names = matching_names(directory, slash == std::string::npos ? path : path.substr(slash + 1));
  if (names.empty()) return nullptr;
  auto handle = std::make_unique<Search>(Search{std::move(names), 0});
  find_next_file(handle, data);
  return handle;
}

bool find_next_file(const SearchHandle& handle, FindData& data) {
  if (handle == nullptr || handle->next == handle->names.size()) return false;
  data.name.assign(handle->names[handle->next++]);
  return true;
}

}  // namespace tessarel::platform
