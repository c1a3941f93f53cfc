#include "platform/file_search.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/temporary_directory.hpp"

namespace tessarel::platform {
namespace {

std::vector<std::string> search(const std::string& pattern) {
  std::vector<std::string> names;
  FindData data;
  const SearchHandle handle = find_first_file(pattern, data);
  if (handle == nullptr) return names;
  do names.emplace_back(data.name.trimmed());
  while (find_next_file(handle, data));
  EXPECT_FALSE(find_next_file(handle, data));
  return names;
}

TEST(FileSearch, FindsWhatMatches) {
  const test::TemporaryDirectory directory;
  for (const char* name : {"b.saf", "a.saf", "c.txt", "ab.saf"}) directory.write(name, "");
  const std::string& path = directory.path();
  std::string back_slashes = path;
  std::replace(back_slashes.begin(), back_slashes.end(), '/', '\\');
  const std::map<std::string, std::vector<std::string>> cases{{path + "*.saf", {"a.saf", "ab.saf", "b.saf"}},
                                                              {path + "?.saf", {"a.saf", "b.saf"}},
                                                              {path + "c.txt", {"c.txt"}},
                                                              {path + "*", {"a.saf", "ab.saf", "b.saf", "c.txt"}},
                                                              {back_slashes + "*.txt   ", {"c.txt"}}};
  for (const auto& [pattern, names] : cases) EXPECT_EQ(search(pattern), names) << pattern;
  for (const std::string& pattern : {path + "*.db", path, path + "none/*", path + std::string("*\0", 2), std::string()})
    EXPECT_TRUE(search(pattern).empty()) << pattern;
}

TEST(FileSearch, KeepsTwoSearchesApart) {
  const test::TemporaryDirectory directory;
  for (const char* name : {"1", "2"}) directory.write(name, "");
  FindData first, second;
  const SearchHandle a = find_first_file(directory.path() + "*", first);
  const SearchHandle b = find_first_file(directory.path() + "*", second);
  EXPECT_TRUE(find_next_file(a, first));
  EXPECT_EQ(first.name.trimmed(), "2");
  EXPECT_EQ(second.name.trimmed(), "1");
  EXPECT_TRUE(find_next_file(b, second));
  EXPECT_FALSE(find_next_file(nullptr, first));
}

}  // namespace
}  // namespace tessarel::platform
