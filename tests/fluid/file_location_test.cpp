#include "fluid/file_location.hpp"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "platform/temporary_directory.hpp"

namespace tessarel::fluid {
namespace {

constexpr const char* fallback = "/opt/Ostrakine/fluids/";

TEST(FileLocation, DirectoriesBesideTheLibrary) {
  const std::array<const char*, 3> cases[] = {{"/a/b/lib/file", "/a/b/lib/", "/a/b/fluids/"},
                                              {"/x/file", "/x/", fallback},
                                              {"/xy/file", "/xy/", fallback},
                                              {"a/b/file", "a/b/", fallback},
                                              {"ab/c/file", "ab/c/", "ab/fluids/"},
                                              {"ab/file", "ab/", "ab/fluids/"},
                                              {"C:\\host\\bin\\model.dll", "C:\\host\\bin\\", "C:\\host\\fluids/"},
                                              {"C:\\host/bin\\model.dll", "C:\\host/bin\\", "C:\\host/fluids/"},
                                              {"/a/b/lib/", "/a/b/lib/", "/a/b/fluids/"},
                                              {"/a b/c d/lib", "/a b/c d/", "/a b/fluids/"}};
  for (const auto& [file, module, fluids] : cases) {
    EXPECT_EQ(module_directory(PathText(file).view()).trimmed(), module) << file;
    EXPECT_EQ(fluid_directory(PathText(file).view()).trimmed(), fluids) << file;
  }
  for (const char* file : {"a/file", "/file", "//file", "file", ""}) {
    EXPECT_EQ(module_directory(PathText(file).view()).trimmed(), fallback) << file;
    EXPECT_EQ(fluid_directory(PathText(file).view()).trimmed(), fallback) << file;
  }
  for (auto directory : {modulepath, fluidpath}) EXPECT_EQ(directory("OTHER").trimmed(), fallback);
}

TEST(FileLocation, SearchListsAtMost500) {
  const auto list = std::make_unique<FileList>();
  const test::TemporaryDirectory directory;
  list->fill(PathText("stale"));
  searchdirectory(directory.path(), "*.saf", *list);
  for (const PathText& name : *list) ASSERT_EQ(name.trimmed(), "");

  for (int i = 0; i < 510; ++i) directory.write(std::to_string(1000 + i) + ".saf", "");
  searchdirectory(PathText(directory.path()).view(), "*.saf   ", *list);
  EXPECT_EQ(list->front().trimmed(), "1000.saf");
  EXPECT_EQ(list->back().trimmed(), "1499.saf");
}

}  // namespace
}  // namespace tessarel::fluid
